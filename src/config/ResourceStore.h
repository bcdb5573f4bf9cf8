#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tavrel {

/// The texts that the application brings along. A store never changes; any thread may ask it.
class ResourceStore {
public:
    virtual ~ResourceStore() = default;

    /// The resource at a relative path such as "Themes/default.cson"; nothing where there is none.
    /// Valid as long as the store.
    virtual std::optional<std::string_view> textAt(std::string_view path) const = 0;

    /// The resource `name` in `folder`, else the one of that name at the top.
    std::optional<std::string_view> find(std::string_view folder, std::string_view name) const
    {
        const auto inFolder = textAt(std::string(folder) + "/" + std::string(name));
        return inFolder ? inFolder : textAt(name);
    }
};

}  // namespace tavrel
