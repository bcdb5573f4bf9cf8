#pragma once

#include <tl/expected.hpp>

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tavrel {

/// A size in logical pixels.
struct WindowSize {
    int width = 1280;
    int height = 820;
    bool operator==(const WindowSize&) const = default;
};

/// What the command line asks for.
struct ProgramOptions {
    bool showsHelp = false;
    bool showsVersion = false;
    std::optional<std::filesystem::path> screenshot;
    WindowSize size;
    std::vector<std::filesystem::path> files;  // Absolute, in their order.
    /// A file of search results, shown before the others: a click on a line opens what it names.
    std::optional<std::filesystem::path> results;
};

/// Reads the arguments behind the program's name. Relative paths count from `folder`. An argument
/// that begins with "-" is an option, up to a "--". Fails with one line for the user.
tl::expected<ProgramOptions, std::string> programOptions(std::span<const std::string> arguments,
                                                         const std::filesystem::path& folder);

/// What --help prints.
std::string helpText();

}  // namespace tavrel
