#pragma once

#include "platform/Environment.h"

#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tavrel {

// How a shell is found and started. Pure functions but where it is said.

/// What `resolveShell` looks at.
struct ShellCandidates {
    std::string loginShell;        // The user's, as the system has it; may be empty.
    std::string environmentShell;  // The variable SHELL; may be empty.
    std::filesystem::path homeFolder;
};

/// The first of the login shell, the environment's and "/bin/zsh" that is an absolute path, once a
/// leading "~" stands for the home folder, to a program; otherwise "/bin/zsh", whatever that is.
std::string resolveShell(const ShellCandidates& candidates,
                         const std::function<bool(const std::string& path)>& isProgram);

/// Whether `path` is a file, no folder, that this process may execute. Asks the system.
bool isExecutableFile(const std::string& path);

/// The user's login shell as the system has it, or an empty text. Asks the system.
std::string systemLoginShell();

/// Whether the system has the locale. Asks the system.
bool isLocaleInstalled(const std::string& name);

/// What makes `shell` a login shell that talks to a person.
std::vector<std::string> shellArguments(std::string_view shell);

/// What a shell's environment says beyond the application's own.
struct ShellEnvironment {
    std::string shell;
    std::string workingDirectory;
    /// The folder with the description of the terminal; empty: none is named.
    std::string terminfoFolder;
    /// For where the application has no language.
    std::string language = "en_US.UTF-8";
};

Environment shellEnvironment(Environment own, const ShellEnvironment& additions);

}  // namespace tavrel
