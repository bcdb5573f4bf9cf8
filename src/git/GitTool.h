#pragma once

#include "platform/ChildProcess.h"
#include "platform/Environment.h"

#include <optional>
#include <string>
#include <vector>

namespace tavrel {

/// The program git, run so that no repository can make it start a program of its choice.
///
/// A value; may be used on any thread.
class GitTool {
public:
    /// "/usr/bin/git", else the first executable "git" in a folder that "PATH" names in full.
    static std::optional<std::string> findProgram(const Environment& environment);

    /// `program` is an absolute path. Of `environment` the children get a copy without what names
    /// a repository or an external diff, and with what forbids locks, questions, transports, file
    /// system monitors and hooks.
    GitTool(std::string program, const Environment& environment);

    /// Runs git in the folder "/" with these arguments, within the limits of `ChildProcess`.
    tl::expected<ChildProcessResult, ChildProcessError>
    run(std::vector<std::string> arguments) const;

    const Environment& environment() const { return environment_; }

private:
    std::string program_;
    Environment environment_;
};

}  // namespace tavrel
