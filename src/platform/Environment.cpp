#include "platform/Environment.h"

#include <algorithm>
#include <unistd.h>

namespace tavrel {
namespace {

std::string_view nameOf(std::string_view entry)
{
    return entry.substr(0, entry.find('='));
}

}  // namespace

Environment Environment::ofThisProcess()
{
    Environment environment;
    for (char** entry = environ; entry && *entry; ++entry) {
        const std::string_view text = *entry;
        const std::string_view name = nameOf(text);
        if (!name.empty() && name.size() < text.size() &&
            environment.find(name) == environment.entries_.end())
            environment.entries_.emplace_back(text);
    }
    return environment;
}

std::vector<std::string>::const_iterator Environment::find(std::string_view name) const
{
    return std::find_if(entries_.begin(), entries_.end(),
                        [&](const std::string& entry) { return nameOf(entry) == name; });
}

std::optional<std::string> Environment::value(std::string_view name) const
{
    const auto entry = find(name);
    if (entry == entries_.end())
        return std::nullopt;
    return entry->substr(name.size() + 1);
}

void Environment::set(std::string_view name, std::string_view value)
{
    constexpr std::string_view forbidden("=\0", 2);
    if (name.empty() || name.find_first_of(forbidden) != std::string_view::npos ||
        value.find('\0') != std::string_view::npos)
        return;
    remove(name);
    entries_.push_back(std::string(name) + "=" + std::string(value));
}

void Environment::remove(std::string_view name)
{
    const auto entry = find(name);
    if (entry != entries_.end())
        entries_.erase(entry);
}

}  // namespace tavrel
