#include "git/StandardPath.h"

#include <algorithm>

namespace tavrel {

std::string standardPath(std::string_view path)
{
    if (!path.starts_with('/'))
        return {};
    std::string result;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find('/'), path.size());
        const std::string_view component = path.substr(0, end);
        path.remove_prefix(std::min(end + 1, path.size()));
        if (component.empty() || component == ".")
            continue;
        if (component == "..") {
            result.resize(result.empty() ? 0 : result.rfind('/'));
            continue;
        }
        result += '/';
        result += component;
    }
    return result.empty() ? "/" : result;
}

std::string parentPath(std::string_view path)
{
    const std::size_t slash = path.rfind('/');
    if (slash == std::string_view::npos)
        return {};
    return std::string(path.substr(0, slash == 0 ? 1 : slash));
}

std::string pathInFolder(std::string_view folder, std::string_view name)
{
    std::string path;
    path.reserve(folder.size() + 1 + name.size());
    path = folder;
    if (!path.ends_with('/'))
        path += '/';
    path += name;
    return path;
}

bool isWithin(std::string_view path, std::string_view folder)
{
    if (!path.starts_with(folder))
        return false;
    return path.size() == folder.size() || folder.ends_with('/') || path[folder.size()] == '/';
}

}  // namespace tavrel
