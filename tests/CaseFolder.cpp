#include "CaseFolder.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace tavrel {

using probe::Json;
using probe::RequestError;

CaseFolder::CaseFolder(const Json& testCase)
{
    std::string pattern = (std::filesystem::temp_directory_path() / "tavrel-case-XXXXXX").string();
    if (!::mkdtemp(pattern.data()))
        throw RequestError("cannot make a folder like " + pattern);
    // Without symbolic links, as engines that resolve paths report them.
    path_ = std::filesystem::canonical(pattern);
    if (const Json* files = probe::member(testCase, "setup")) {
        for (const auto& [name, text] : files->items())
            write(name, probe::utf8FromJson(withPath(text)));
    }
    if (const Json* files = probe::member(testCase, "setupHex")) {
        for (const auto& [name, hex] : files->items())
            write(name, probe::bytesFromHex(hex));
    }
    if (probe::booleanMember(testCase, "git", false))
        makeRepository(testCase);
}

CaseFolder::~CaseFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

bool CaseFolder::isWantedBy(const Json& testCase)
{
    return testCase.contains("setup") || testCase.contains("setupHex") || testCase.contains("git");
}

Json CaseFolder::withPath(const Json& value) const
{
    constexpr std::string_view mark = "{DIR}";
    if (value.is_string()) {
        std::string text = value.get<std::string>();
        const std::string folder = path_.string();
        for (std::size_t at = text.find(mark); at != std::string::npos;
             at = text.find(mark, at + folder.size()))
            text.replace(at, mark.size(), folder);
        return text;
    }
    if (value.is_array()) {
        Json array = Json::array();
        for (const Json& element : value)
            array.push_back(withPath(element));
        return array;
    }
    if (value.is_object()) {
        Json object = Json::object();
        for (const auto& [name, child] : value.items())
            object[withPath(name).get<std::string>()] = withPath(child);
        return object;
    }
    return value;
}

std::optional<std::string> CaseFolder::contents(const std::string& relativePath) const
{
    std::ifstream file(resolved(relativePath), std::ios::binary);
    if (!file)
        return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(file), {});
}

void CaseFolder::write(const std::string& relativePath, const std::string& bytes) const
{
    const std::filesystem::path file = resolved(relativePath);
    if (!file.has_filename()) {
        std::filesystem::create_directories(file);
        return;
    }
    std::filesystem::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary);
    stream << bytes;
    stream.close();
    if (!stream)
        throw RequestError("cannot write " + file.string());
}

void CaseFolder::makeRepository(const Json& testCase) const
{
    git({"init", "--quiet"});
    std::vector<std::string> add{"add", "--force", "--"};
    if (const Json* paths = probe::member(testCase, "commit")) {
        for (const Json& path : *paths)
            add.push_back(probe::utf8FromJson(path));
    }
    if (add.size() > 3)
        git(std::move(add));
    git({"commit", "--quiet", "--allow-empty", "--message", "first"});
}

// Runs git in the folder, with none of the user's own settings.
void CaseFolder::git(std::vector<std::string> arguments) const
{
    std::vector<std::string> words{
        "git", "-C", path_.string(), "-c", "user.name=Case", "-c", "user.email=case@localhost"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<std::string> settings{"GIT_CONFIG_GLOBAL=/dev/null", "GIT_CONFIG_NOSYSTEM=1",
                                      "HOME=" + path_.string()};
    if (const char* searchPath = std::getenv("PATH"))
        settings.push_back(std::string("PATH=") + searchPath);
    const auto pointers = [](std::vector<std::string>& strings) {
        std::vector<char*> list;
        for (std::string& string : strings)
            list.push_back(string.data());
        list.push_back(nullptr);
        return list;
    };
    pid_t child = 0;
    int status = 0;
    const int error = ::posix_spawnp(&child, "git", nullptr, nullptr, pointers(words).data(),
                                     pointers(settings).data());
    if (error != 0 || ::waitpid(child, &status, 0) != child || !WIFEXITED(status) ||
        WEXITSTATUS(status) != 0)
        throw RequestError("git " + arguments.front() + " failed");
}

std::filesystem::path CaseFolder::resolved(const std::string& relativePath) const
{
    const std::filesystem::path relative(relativePath);
    for (const auto& part : relative) {
        if (relative.is_absolute() || part == "..")
            throw RequestError("'" + relativePath + "' leaves the folder of the case");
    }
    return path_ / relative;
}

}  // namespace tavrel
