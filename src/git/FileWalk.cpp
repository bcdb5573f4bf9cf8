#include "git/FileWalk.h"

#include "git/FolderTree.h"
#include "git/GitIgnoreCache.h"
#include "git/StandardPath.h"
#include "platform/Collator.h"

#include <algorithm>
#include <sys/stat.h>
#include <unordered_set>

namespace tavrel {
namespace {

/// The list of a walk as it grows.
class FileList {
public:
    FileList(std::size_t limit, bool mayMeetTwice) : limit_(limit), mayMeetTwice_(mayMeetTwice) {}

    bool isFull() const { return files_.size() >= limit_; }
    std::size_t room() const { return limit_ - files_.size(); }

    void add(std::string path)
    {
        if (!mayMeetTwice_ || seen_.insert(path).second)
            files_.push_back(std::move(path));
    }

    /// The list in the order of `collator`. Each root's part mostly has that order already.
    std::vector<std::string> sorted(const Collator& collator) &&
    {
        const auto isBefore = [&](const std::string& left, const std::string& right) {
            return collator.compareUtf8(left, right) < 0;
        };
        auto middle = files_.begin();
        while (middle != files_.end()) {
            const auto end = std::is_sorted_until(middle, files_.end(), isBefore);
            if (middle == files_.begin() || end - middle > minimumRun) {
                std::inplace_merge(files_.begin(), middle, end, isBefore);
                middle = end;
            } else {
                std::sort(files_.begin(), files_.end(), isBefore);
                break;
            }
        }
        return std::move(files_);
    }

private:
    static constexpr std::ptrdiff_t minimumRun = 1000;

    std::size_t limit_;
    bool mayMeetTwice_;
    std::vector<std::string> files_;
    std::unordered_set<std::string> seen_;  // Filled only where roots overlap.
};

/// Adds the files of `root` in order, reading the folders that are not read yet.
void addFiles(WalkedFolder& root, const FolderTree& tree, FileList& list)
{
    struct Place {
        WalkedFolder* folder;
        std::size_t next = 0;
    };
    std::vector<Place> open{{&root}};
    while (!open.empty() && !list.isFull() && !tree.isCancelled()) {
        Place& place = open.back();
        if (!place.folder->isRead)
            tree.read(*place.folder);
        if (place.next == place.folder->entries.size()) {
            open.pop_back();
            continue;
        }
        WalkedFolder::Entry& entry = place.folder->entries[place.next++];
        if (entry.folder)
            open.push_back({entry.folder.get()});
        else
            list.add(pathInFolder(place.folder->path, entry.name));
    }
}

bool doOverlap(const std::vector<std::string>& roots)
{
    for (auto root = roots.begin(); root != roots.end(); ++root) {
        for (auto other = roots.begin(); other != root; ++other) {
            if (isWithin(*root, *other) || isWithin(*other, *root))
                return true;
        }
    }
    return false;
}

}  // namespace

std::vector<std::string> collectFiles(const std::vector<std::string>& roots, std::size_t limit,
                                      GitIgnoreCache& cache, const Collator& collator,
                                      const std::atomic<bool>* cancelled)
{
    std::vector<std::string> paths;
    for (const std::string& root : roots) {
        std::string path = standardPath(root);
        if (!path.empty() && path.find('\0') == std::string::npos)
            paths.push_back(std::move(path));
    }
    const FolderTree tree(cache, collator, cancelled);
    FileList list(limit, doOverlap(paths));
    for (const std::string& path : paths) {
        struct stat status {};
        if (list.isFull() || tree.isCancelled())
            break;
        if (::stat(path.c_str(), &status) != 0)
            continue;
        if (S_ISREG(status.st_mode))
            list.add(path);
        if (!S_ISDIR(status.st_mode))
            continue;
        WalkedFolder folder;
        folder.path = path;
        folder.inherited = cache.filesAbove(path);
        tree.readAll(folder, list.room());
        addFiles(folder, tree, list);
    }
    return std::move(list).sorted(collator);
}

}  // namespace tavrel
