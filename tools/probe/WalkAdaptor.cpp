#include "git/FileWalk.h"
#include "git/FolderListing.h"
#include "git/GitIgnoreCache.h"
#include "git/StandardPath.h"
#include "platform/Collator.h"
#include "platform/Environment.h"
#include "platform/PosixFileSystem.h"
#include "probe/Adaptors.h"

namespace tavrel::probe {
namespace {

/// What the engines that read folders borrow. The first run fills the cache, so that of several
/// measured ones the later are warm.
struct Surroundings {
    PosixFileSystem fileSystem;
    GitIgnoreCache cache{fileSystem};
    Collator collator{collationLocale(Environment::ofThisProcess())};
};

}  // namespace

Json walkAdaptor(ProbeRequest& request)
{
    constexpr std::int64_t usualLimit = 50'000;
    const std::int64_t limit = integerMember(request.body(), "limit", usualLimit);
    const Json& list = requiredMember(request.body(), "roots");
    if (!list.is_array() || limit < 0)
        throw RequestError("'roots' must be a list of paths and 'limit' no negative number");
    std::vector<std::string> roots;
    for (const Json& root : list)
        roots.push_back(utf8FromJson(root));
    Surroundings surroundings;
    const auto files =
        request.measured([&] { return roots; },
                         [&](const std::vector<std::string>& folders) {
                             return collectFiles(folders, static_cast<std::size_t>(limit),
                                                 surroundings.cache, surroundings.collator);
                         });
    Json result = Json::array();
    for (const std::string& file : files)
        result.push_back(jsonFromUtf8(file));
    return {{"files", std::move(result)}};
}

Json treeAdaptor(ProbeRequest& request)
{
    const std::string folder = standardPath(utf8Member(request.body(), "folder"));
    Surroundings surroundings;
    const auto children =
        request.measured([&] { return folder; },
                         [&](const std::string& path) {
                             return listFolder(path, surroundings.cache, surroundings.collator);
                         });
    Json result = Json::array();
    for (const ListedChild& child : children)
        result.push_back({{"name", jsonFromUtf8(child.name)}, {"isDirectory", child.isDirectory}});
    return {{"children", std::move(result)}};
}

}  // namespace tavrel::probe
