#pragma once

#include "editor/DocumentFile.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace tavrel {

class FileSystem;

/// Reads files on a thread of its own while the program is still starting, one after another.
///
/// Made and asked on the main thread. The destructor waits for the file that is being read.
class FileLoader {
public:
    struct Loaded {
        std::filesystem::path path;
        LoadResult result;
    };

    /// `fileSystem` must outlive the loader.
    FileLoader(FileSystem& fileSystem, std::vector<std::filesystem::path> paths);
    ~FileLoader();
    FileLoader(const FileLoader&) = delete;
    FileLoader& operator=(const FileLoader&) = delete;

    /// The next file that has been read, in the order of the paths; nothing while it is on its way
    /// and when all have been taken.
    std::optional<Loaded> takeNext();
    /// Whether all have been taken.
    bool isFinished() const { return takenCount_ == paths_.size(); }

    /// `notify` is called on the loader's thread, once for each file that is read from now on, and
    /// at once where one lies ready.
    void setNotify(std::function<void()> notify);

private:
    void run();

    FileSystem& fileSystem_;
    const std::vector<std::filesystem::path> paths_;
    std::size_t takenCount_ = 0;  // Main thread only.
    std::mutex mutex_;
    std::vector<std::optional<LoadResult>> results_;  // Guarded.
    std::size_t readCount_ = 0;                       // Guarded.
    bool isCancelled_ = false;                        // Guarded.
    std::function<void()> notify_;                    // Guarded.
    std::thread thread_;
};

}  // namespace tavrel
