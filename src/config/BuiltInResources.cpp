#include "config/BuiltInResources.h"

#include <algorithm>

namespace tavrel {

std::optional<std::string_view> BuiltInResources::textAt(std::string_view path) const
{
    const auto file = std::ranges::lower_bound(files(), path, {}, &EmbeddedFile::path);
    if (file == files().end() || file->path != path)
        return std::nullopt;
    return file->text;
}

}  // namespace tavrel
