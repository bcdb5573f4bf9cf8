#include "git/GitIgnoreCache.h"

#include "git/StandardPath.h"
#include "platform/FileReader.h"
#include "platform/FileSystem.h"
#include "platform/Utf8.h"

#include <algorithm>

namespace tavrel {

std::shared_ptr<const GitIgnoreFile> GitIgnoreCache::file(const std::string& folder)
{
    const std::string path = pathInFolder(folder, ".gitignore");
    const auto status = fileSystem_.linkStatus(path);
    if (!status || status->kind != FileKind::regular || status->size > maximumBytes)
        return nullptr;
    {
        const std::lock_guard guard(lock_);
        const auto found = parsedByPath_.find(path);
        if (found != parsedByPath_.end() && found->second.date == status->date &&
            found->second.size == status->size && found->second.identity == status->identity)
            return found->second.file;
    }
    auto parsed = parse(folder, path);
    const std::lock_guard guard(lock_);
    parsedByPath_[path] = {status->date, status->size, status->identity, parsed};
    return parsed;
}

std::shared_ptr<const GitIgnoreFile> GitIgnoreCache::parse(const std::string& folder,
                                                           const std::string& path)
{
    const auto bytes = readFile(fileSystem_, path, maximumBytes);
    if (!bytes || !isValidUtf8(*bytes))
        return nullptr;
    const std::u16string text = utf16FromUtf8(*bytes);
    std::u16string_view lines = text;
    if (lines.starts_with(u'\uFEFF'))
        lines.remove_prefix(1);
    return std::make_shared<const GitIgnoreFile>(folder, lines);
}

bool GitIgnoreCache::isRepositoryRoot(const std::string& folder)
{
    const auto status = fileSystem_.status(pathInFolder(folder, ".git"));
    return status && (status->kind == FileKind::folder || status->kind == FileKind::regular);
}

GitIgnoreChain GitIgnoreCache::files(const std::string& folder)
{
    GitIgnoreChain chain;
    std::string current = folder;
    for (std::size_t depth = 0; depth < maximumDepth; ++depth) {
        if (auto parsed = file(current))
            chain.push_back(std::move(parsed));
        if (isRepositoryRoot(current))
            break;
        std::string parent = parentPath(current);
        if (parent.size() >= current.size())
            break;
        current = std::move(parent);
    }
    std::reverse(chain.begin(), chain.end());
    return chain;
}

GitIgnoreChain GitIgnoreCache::filesAbove(const std::string& folder)
{
    const std::string parent = parentPath(folder);
    if (parent.size() >= folder.size() || isRepositoryRoot(folder))
        return {};
    return files(parent);
}

}  // namespace tavrel
