#pragma once

#include "git/GitIgnoreFile.h"

#include <atomic>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace tavrel {

class Collator;
class GitIgnoreCache;

/// One folder of a walk: the files and folders in it that are not left out.
struct WalkedFolder {
    struct Entry {
        std::string name;                      // A folder's has a slash at its end.
        std::unique_ptr<WalkedFolder> folder;  // Null for a file.
    };

    std::string path;
    GitIgnoreChain inherited;    // Of the folders above.
    bool isRead = false;         // Whether `entries` is filled.
    std::vector<Entry> entries;  // As `collator` orders the names.
};

/// Reads the folders of a walk.
class FolderTree {
public:
    /// Borrows all three; `cancelled` may be null.
    FolderTree(GitIgnoreCache& cache, const Collator& collator, const std::atomic<bool>* cancelled)
        : cache_(cache), collator_(collator), cancelled_(cancelled)
    {
    }

    bool isCancelled() const { return cancelled_ && cancelled_->load(std::memory_order_relaxed); }

    /// Fills the entries of one folder; a folder that cannot be read has none.
    void read(WalkedFolder& folder) const;

    /// Reads `folder` and those below it with two threads, until all are read or more than
    /// `enoughFiles` files have been found. What is left then is not read yet.
    void readAll(WalkedFolder& folder, std::size_t enoughFiles) const;

private:
    GitIgnoreCache& cache_;
    const Collator& collator_;
    const std::atomic<bool>* cancelled_;
};

}  // namespace tavrel
