#include "git/GitTool.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace tavrel {
namespace {

constexpr std::array removedVariables{
    // What names a repository, or parts of one.
    "GIT_DIR", "GIT_WORK_TREE", "GIT_INDEX_FILE", "GIT_COMMON_DIR", "GIT_OBJECT_DIRECTORY",
    "GIT_ALTERNATE_OBJECT_DIRECTORIES", "GIT_NAMESPACE", "GIT_PREFIX", "GIT_SHALLOW_FILE",
    "GIT_GRAFT_FILE", "GIT_REPLACE_REF_BASE", "GIT_NO_REPLACE_OBJECTS",
    // What changes the form of a diff.
    "GIT_EXTERNAL_DIFF", "GIT_DIFF_OPTS",
    // What starts a program or a connection.
    "GIT_SSH", "GIT_SSH_COMMAND", "GIT_PROXY_COMMAND", "GIT_ASKPASS", "GIT_PAGER"};

struct Setting {
    const char* name;
    const char* value;
};

constexpr std::array setVariables{
    Setting{"GIT_OPTIONAL_LOCKS", "0"},
    Setting{"GIT_TERMINAL_PROMPT", "0"},
    Setting{"GIT_NO_LAZY_FETCH", "1"},
    Setting{"GIT_ALLOW_PROTOCOL", "none"},
};

constexpr std::array configuration{
    Setting{"core.fsmonitor", "false"}, Setting{"core.hooksPath", "/dev/null"},
    Setting{"diff.interHunkContext", "0"},  // Or hunks that lie close would be joined.
};

/// Adds our entries behind those that the user's environment has already.
void addConfiguration(Environment& environment)
{
    constexpr int mostEntries = 1000;
    const std::string countText = environment.value("GIT_CONFIG_COUNT").value_or("0");
    int count = 0;
    const auto [end, error] =
        std::from_chars(countText.data(), countText.data() + countText.size(), count);
    if (error != std::errc() || end != countText.data() + countText.size() || count < 0 ||
        count > mostEntries)
        count = 0;
    for (const Setting& setting : configuration) {
        const std::string number = std::to_string(count++);
        environment.set("GIT_CONFIG_KEY_" + number, setting.name);
        environment.set("GIT_CONFIG_VALUE_" + number, setting.value);
    }
    environment.set("GIT_CONFIG_COUNT", std::to_string(count));
}

bool isExecutable(const std::string& path)
{
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
           ::access(path.c_str(), X_OK) == 0;
}

}  // namespace

std::optional<std::string> GitTool::findProgram(const Environment& environment)
{
    const std::string usual = "/usr/bin/git";
    if (isExecutable(usual))
        return usual;
    const std::string folders = environment.value("PATH").value_or("");
    std::string_view rest = folders;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(':'), rest.size());
        const std::string program = std::string(rest.substr(0, end)) + "/git";
        // A folder that depends on where the program runs could be one of a repository.
        if (rest.starts_with('/') && isExecutable(program))
            return program;
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return std::nullopt;
}

GitTool::GitTool(std::string program, const Environment& environment)
    : program_(std::move(program)), environment_(environment)
{
    for (const char* name : removedVariables)
        environment_.remove(name);
    for (const Setting& setting : setVariables)
        environment_.set(setting.name, setting.value);
    addConfiguration(environment_);
}

tl::expected<ChildProcessResult, ChildProcessError>
GitTool::run(std::vector<std::string> arguments) const
{
    ChildProcess child;
    child.program = program_;
    child.arguments = std::move(arguments);
    child.environment = environment_;
    return tavrel::run(child);
}

}  // namespace tavrel
