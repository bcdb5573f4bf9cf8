#include "terminal/ShellLaunch.h"

#include <locale.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tavrel {
namespace {

constexpr std::string_view lastResort = "/bin/zsh";

/// "~" and "~/…" stand for the home folder; the homes of other users are not looked up.
std::string withHome(const std::string& path, const std::filesystem::path& homeFolder)
{
    if (path == "~" || path.starts_with("~/"))
        return homeFolder.string() + path.substr(1);
    return path;
}

std::string asciiLowercased(std::string_view text)
{
    std::string result(text);
    for (char& c : result)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return result;
}

}  // namespace

std::string resolveShell(const ShellCandidates& candidates,
                         const std::function<bool(const std::string& path)>& isProgram)
{
    for (const std::string& candidate :
         {candidates.loginShell, candidates.environmentShell, std::string(lastResort)}) {
        const std::string path = withHome(candidate, candidates.homeFolder);
        if (path.starts_with('/') && isProgram(path))
            return path;
    }
    return std::string(lastResort);
}

bool isExecutableFile(const std::string& path)
{
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && !S_ISDIR(status.st_mode) &&
           ::access(path.c_str(), X_OK) == 0;
}

std::string systemLoginShell()
{
    passwd entry{};
    passwd* found = nullptr;
    constexpr std::size_t longestEntry = 65'536;
    std::vector<char> texts(longestEntry);
    if (::getpwuid_r(::getuid(), &entry, texts.data(), texts.size(), &found) != 0 || !found ||
        !found->pw_shell)
        return {};
    return found->pw_shell;
}

bool isLocaleInstalled(const std::string& name)
{
    const locale_t locale = ::newlocale(LC_ALL_MASK, name.c_str(), nullptr);
    if (!locale)
        return false;
    ::freelocale(locale);
    return true;
}

std::vector<std::string> shellArguments(std::string_view shell)
{
    const std::string name = asciiLowercased(shell.substr(shell.find_last_of('/') + 1));
    if (name == "fish")
        return {"--login", "--interactive"};
    return {"-l", "-i"};
}

Environment shellEnvironment(Environment own, const ShellEnvironment& additions)
{
    own.set("TERM", "xterm-256color");
    own.set("PWD", additions.workingDirectory);
    own.set("SHELL", additions.shell);
    own.set("COLORTERM", "truecolor");
    if (own.value("LANG").value_or("").empty())
        own.set("LANG", additions.language);
    if (!additions.terminfoFolder.empty())
        own.set("TERMINFO", additions.terminfoFolder);
    return own;
}

}  // namespace tavrel
