#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tavrel {

/// A fresh folder that its destructor removes, and git in it with none of the user's settings.
class GitTestFolder {
public:
    GitTestFolder();
    GitTestFolder(const GitTestFolder&) = delete;
    GitTestFolder& operator=(const GitTestFolder&) = delete;
    ~GitTestFolder();

    /// Absolute, in standard form and without links.
    const std::filesystem::path& path() const { return path_; }
    std::string at(std::string_view relativePath) const { return path_ / relativePath; }

    /// Makes the folders that are missing.
    void write(std::string_view relativePath, std::string_view bytes) const;
    void writeProgram(std::string_view relativePath, std::string_view script) const;
    std::string contents(std::string_view relativePath) const;
    bool exists(std::string_view relativePath) const;

    /// Runs git in the folder `relativePath`; throws when it fails.
    std::string git(std::string_view relativePath, std::vector<std::string> arguments) const;

private:
    std::filesystem::path path_;
};

}  // namespace tavrel
