#pragma once

#include "platform/OpenFile.h"

#include <filesystem>
#include <string>

namespace tavrel {

/// Six letters and digits that nobody can guess.
std::string randomSuffix();

/// A new file under a name of its own, removed by its destructor unless it is kept.
class TemporaryFile {
public:
    /// Makes ".<name>.XXXXXX" in `folder`, readable and writable. `mode` as for open(2): the
    /// process's mask is taken off it. Never opens what is there already.
    static tl::expected<TemporaryFile, FileError> create(FileSystem& fileSystem,
                                                         const std::filesystem::path& folder,
                                                         const std::string& name, unsigned mode);

    TemporaryFile(TemporaryFile&& other) noexcept;
    TemporaryFile& operator=(TemporaryFile&&) = delete;
    ~TemporaryFile();

    OpenFile& file() { return file_; }
    const std::filesystem::path& path() const { return path_; }
    /// The name now stands for something that must stay, or for nothing.
    void keep() { path_.clear(); }

private:
    TemporaryFile(OpenFile file, std::filesystem::path path)
        : file_(std::move(file)), path_(std::move(path))
    {
    }

    OpenFile file_;
    std::filesystem::path path_;  // Empty when there is nothing to remove.
};

}  // namespace tavrel
