#pragma once

#include "platform/FolderWatch.h"

#include <QSocketNotifier>

#include <filesystem>
#include <map>
#include <memory>
#include <vector>

namespace tavrel {

/// A folder watch over the kernel's own (inotify), whose news come in through the event loop.
///
/// Tells of files that are written in place when whoever writes closes them, and of entries that
/// are made, removed or renamed at once. A folder that is removed or renamed is told and is then no
/// longer watched: the next `setFolders` takes up what stands at its path by then. A folder above
/// it that is renamed goes unnoticed. Nothing is told inside `setFolders` but that watches ran out.
class QtFolderWatch final : public FolderWatch {
public:
    /// The delegate must outlive the watch, and may destroy it when it is called.
    explicit QtFolderWatch(FolderWatchDelegate& delegate);
    ~QtFolderWatch() override;
    QtFolderWatch(const QtFolderWatch&) = delete;
    QtFolderWatch& operator=(const QtFolderWatch&) = delete;

    void setFolders(const std::vector<std::filesystem::path>& folders) override;

private:
    struct News;

    bool add(const std::filesystem::path& folder);
    void remove(const std::filesystem::path& folder);
    void readEvents();
    News takeNews();
    void reportRunOut();

    FolderWatchDelegate& delegate_;
    int descriptor_;  // Of the kernel's queue; -1 where there is none to be had.
    std::unique_ptr<QSocketNotifier> notifier_;
    // The kernel's number of each folder's watch. Two paths of one folder share a number.
    std::map<std::filesystem::path, int> watches_;
    bool didReportRunOut_ = false;
    std::shared_ptr<bool> life_ = std::make_shared<bool>();  // Gone once this object is.
};

}  // namespace tavrel
