#pragma once

#include "probe/ProbeJson.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tavrel {

/// The fresh folder of one data case, removed with this object.
///
/// A case has one when it has a member "setup", "setupHex" or "git". Its path stands for "{DIR}" in
/// every string of the case.
class CaseFolder {
public:
    /// Makes the folder and fills it: "setup" maps relative paths to texts and "setupHex" to bytes,
    /// where a path that ends in "/" is an empty folder; "git": true makes it a repository with the
    /// files of "commit" in its one commit. Throws `RequestError`, also when something fails.
    explicit CaseFolder(const probe::Json& testCase);
    ~CaseFolder();
    CaseFolder(const CaseFolder&) = delete;
    CaseFolder& operator=(const CaseFolder&) = delete;

    static bool isWantedBy(const probe::Json& testCase);

    const std::filesystem::path& path() const { return path_; }
    /// `value` with the path of the folder in place of every "{DIR}".
    probe::Json withPath(const probe::Json& value) const;
    /// The bytes of a file; nothing where there is none.
    std::optional<std::string> contents(const std::string& relativePath) const;

private:
    void write(const std::string& relativePath, const std::string& bytes) const;
    void makeRepository(const probe::Json& testCase) const;
    void git(std::vector<std::string> arguments) const;
    std::filesystem::path resolved(const std::string& relativePath) const;

    std::filesystem::path path_;
};

}  // namespace tavrel
