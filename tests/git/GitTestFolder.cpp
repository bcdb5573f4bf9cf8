#include "GitTestFolder.h"

#include "git/GitTool.h"
#include "platform/ChildProcess.h"

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <unistd.h>

namespace tavrel {

namespace fs = std::filesystem;

GitTestFolder::GitTestFolder()
{
    std::string pattern = (fs::temp_directory_path() / "tavrel-git-XXXXXX").string();
    if (!::mkdtemp(pattern.data()))
        throw std::runtime_error("cannot make a folder like " + pattern);
    path_ = fs::canonical(pattern);
}

GitTestFolder::~GitTestFolder()
{
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

void GitTestFolder::write(std::string_view relativePath, std::string_view bytes) const
{
    const fs::path file = path_ / relativePath;
    fs::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary);
    stream << bytes;
    stream.close();
    if (!stream)
        throw std::runtime_error("cannot write " + file.string());
}

void GitTestFolder::writeProgram(std::string_view relativePath, std::string_view script) const
{
    write(relativePath, script);
    fs::permissions(path_ / relativePath, fs::perms::owner_all);
}

std::string GitTestFolder::contents(std::string_view relativePath) const
{
    std::ifstream file(path_ / relativePath, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

bool GitTestFolder::exists(std::string_view relativePath) const
{
    return fs::exists(fs::symlink_status(path_ / relativePath));
}

std::string GitTestFolder::git(std::string_view relativePath,
                               std::vector<std::string> arguments) const
{
    const Environment inherited = Environment::ofThisProcess();
    ChildProcess child;
    child.program = GitTool::findProgram(inherited).value();
    child.arguments = {"-c", "user.name=Test", "-c", "user.email=test@localhost"};
    child.arguments.insert(child.arguments.end(), arguments.begin(), arguments.end());
    child.workingFolder = path_ / relativePath;
    child.environment.set("PATH", inherited.value("PATH").value_or(""));
    child.environment.set("HOME", path_.string());
    child.environment.set("GIT_CONFIG_GLOBAL", "/dev/null");
    child.environment.set("GIT_CONFIG_NOSYSTEM", "1");
    const auto result = run(child);
    if (!result || result->exitStatus != 0)
        throw std::runtime_error("git " + arguments.front() + " failed");
    return result->output;
}

}  // namespace tavrel
