#include "git/FolderListing.h"

#include "git/GitIgnoreCache.h"
#include "git/StandardPath.h"
#include "platform/Collator.h"
#include "platform/FolderReader.h"

#include <algorithm>
#include <sys/stat.h>

namespace tavrel {
namespace {

bool leadsToFolder(const std::string& path)
{
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace

std::vector<ListedChild> listFolder(const std::string& folder, GitIgnoreCache& cache,
                                    const Collator& collator)
{
    auto entries = readFolder(folder);
    if (!entries)
        return {};
    const GitIgnoreChain chain = cache.files(folder);
    std::vector<ListedChild> children;
    for (FolderEntry& entry : *entries) {
        const bool isFolder = entry.kind == FileKind::folder;
        const std::string path = pathInFolder(folder, entry.name);
        if (entry.name.starts_with('.') || isIgnored(path, isFolder, chain))
            continue;
        const bool isLink = entry.kind == FileKind::symbolicLink;
        children.push_back({std::move(entry.name), isLink ? leadsToFolder(path) : isFolder});
    }
    std::sort(children.begin(), children.end(),
              [&](const ListedChild& left, const ListedChild& right) {
                  if (left.isDirectory != right.isDirectory)
                      return left.isDirectory;
                  return collator.compareUtf8(left.name, right.name) < 0;
              });
    return children;
}

}  // namespace tavrel
