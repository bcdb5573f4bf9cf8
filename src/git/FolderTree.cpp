#include "git/FolderTree.h"

#include "git/GitIgnoreCache.h"
#include "git/StandardPath.h"
#include "platform/Collator.h"
#include "platform/FolderReader.h"

#include <algorithm>
#include <array>
#include <condition_variable>
#include <mutex>
#include <string_view>
#include <system_error>
#include <thread>

namespace tavrel {
namespace {

/// Never entered, whatever the ignore files say. Three of them are hidden besides.
constexpr std::array<std::string_view, 6> skippedFolders{".build",      ".git",  ".svn",
                                                         "DerivedData", "build", "node_modules"};

bool isSkipped(std::string_view name)
{
    return std::find(skippedFolders.begin(), skippedFolders.end(), name) != skippedFolders.end();
}

/// The folders that are still to be read, shared between the threads that read them.
class ReadingList {
public:
    ReadingList(WalkedFolder& first, std::size_t enoughFiles)
        : waiting_{&first}, enoughFiles_(enoughFiles)
    {
    }

    /// The next folder to read, or null when there will be none. `done` is the last one.
    WalkedFolder* next(WalkedFolder* done)
    {
        std::unique_lock guard(mutex_);
        if (done)
            finish(*done);
        changed_.wait(guard, [&] { return !waiting_.empty() || reading_ == 0 || isStopped_; });
        if (waiting_.empty() || isStopped_)
            return nullptr;
        WalkedFolder* folder = waiting_.back();
        waiting_.pop_back();
        ++reading_;
        return folder;
    }

    void stop()
    {
        const std::lock_guard guard(mutex_);
        isStopped_ = true;
        changed_.notify_all();
    }

private:
    void finish(WalkedFolder& folder)
    {
        --reading_;
        // Backwards, so that the first folder is on top and the list stays short.
        for (auto entry = folder.entries.rbegin(); entry != folder.entries.rend(); ++entry) {
            if (entry->folder)
                waiting_.push_back(entry->folder.get());
            else
                ++fileCount_;
        }
        isStopped_ = isStopped_ || fileCount_ > enoughFiles_;
        if (waiting_.size() > 1 || reading_ == 0 || isStopped_)
            changed_.notify_all();
    }

    std::mutex mutex_;  // Guards all the rest.
    std::condition_variable changed_;
    std::vector<WalkedFolder*> waiting_;
    std::size_t reading_ = 0;
    std::size_t fileCount_ = 0;
    std::size_t enoughFiles_;
    bool isStopped_ = false;
};

}  // namespace

void FolderTree::read(WalkedFolder& folder) const
{
    folder.isRead = true;
    auto listed = readFolder(folder.path);
    if (!listed)
        return;
    GitIgnoreChain chain = folder.inherited;
    const bool hasIgnoreFile =
        std::any_of(listed->begin(), listed->end(),
                    [](const FolderEntry& entry) { return entry.name == ".gitignore"; });
    if (hasIgnoreFile) {
        if (auto own = cache_.file(folder.path))
            chain.push_back(std::move(own));
    }
    for (FolderEntry& entry : *listed) {
        const bool isFolder = entry.kind == FileKind::folder;
        if (entry.name.starts_with('.') || (!isFolder && entry.kind != FileKind::regular) ||
            (isFolder && isSkipped(entry.name)))
            continue;
        std::string path = pathInFolder(folder.path, entry.name);
        if (isIgnored(path, isFolder, chain))
            continue;
        if (!isFolder) {
            folder.entries.push_back({std::move(entry.name), nullptr});
            continue;
        }
        auto below = std::make_unique<WalkedFolder>();
        below->path = std::move(path);
        below->inherited = chain;
        folder.entries.push_back({entry.name + "/", std::move(below)});
    }
    std::sort(folder.entries.begin(), folder.entries.end(),
              [&](const WalkedFolder::Entry& left, const WalkedFolder::Entry& right) {
                  return collator_.compareUtf8(left.name, right.name) < 0;
              });
}

void FolderTree::readAll(WalkedFolder& folder, std::size_t enoughFiles) const
{
    ReadingList list(folder, enoughFiles);
    const auto work = [&] {
        WalkedFolder* current = nullptr;
        while ((current = list.next(current)) != nullptr) {
            if (isCancelled())
                list.stop();
            else
                read(*current);
        }
    };
    std::thread helper;
    try {
        helper = std::thread(work);
    } catch (const std::system_error&) {
        // No thread to be had: this one reads alone.
    }
    work();
    if (helper.joinable())
        helper.join();
}

}  // namespace tavrel
