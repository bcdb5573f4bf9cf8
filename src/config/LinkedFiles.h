#pragma once

#include "platform/FileStatus.h"

#include <cstdint>
#include <filesystem>
#include <vector>

namespace tavrel {

class ConfigurationFolder;

/// A file outside the configuration folder to which one of its symbolic links leads, as it was when
/// it was asked for. Equal ones have not changed in between, as far as the file system tells.
struct LinkedFile {
    std::filesystem::path target;
    FileIdentity identity;
    FileDate date{};
    std::uint64_t size = 0;

    bool operator==(const LinkedFile&) const = default;
};

/// Where the settings file and the mode files really are, of those that are symbolic links: people
/// keep such files in a repository. Links that lead nowhere are left out. Costs a system call for
/// each file.
std::vector<LinkedFile> linkedConfigFiles(const ConfigurationFolder& folder);

}  // namespace tavrel
