#pragma once

#include "platform/FolderWatch.h"
#include "platform/MainQueue.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

namespace tavrel {

/// Tells when something may have happened to files that are open, once the news have settled.
///
/// It watches the folders they lie in and those that symbolic links lead to, not the files: a
/// watched file that is replaced by another one is never heard of again. Main thread only.
class OpenFileWatch final : private FolderWatchDelegate {
public:
    using MakeFolderWatch = std::function<std::unique_ptr<FolderWatch>(FolderWatchDelegate&)>;

    /// The queue must outlive the watch.
    OpenFileWatch(MainQueue& mainQueue, const MakeFolderWatch& makeFolderWatch);
    ~OpenFileWatch() override { pending_.cancel(); }
    OpenFileWatch(const OpenFileWatch&) = delete;
    OpenFileWatch& operator=(const OpenFileWatch&) = delete;

    /// News of a file that come in several pieces are told as one.
    static constexpr double settleSeconds = 0.1;

    /// The files to follow from now on, in place of those before. Nothing happens where they are
    /// the same.
    void setFiles(const std::vector<std::filesystem::path>& files);

    /// Calls `didSettle` as if there were news.
    void lookLater();

    /// Any of the files may be another one now. May be empty.
    std::function<void()> didSettle;
    /// The system watches some of the folders not at all. Told once. May be empty.
    std::function<void()> didRunOut;

private:
    void folderDidChange(const std::filesystem::path& folder) override;
    void folderWatchDidRunOut() override;

    void watchFolders();

    MainQueue& mainQueue_;
    std::unique_ptr<FolderWatch> folderWatch_;
    std::vector<std::filesystem::path> files_;
    std::vector<std::filesystem::path> folders_;
    ScheduledWork pending_;
};

}  // namespace tavrel
