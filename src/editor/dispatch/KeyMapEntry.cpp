#include "editor/dispatch/KeyMapEntry.h"

#include "config/cson/TavrelCSONBackend.h"

#include <algorithm>
#include <unordered_set>

namespace tavrel {
namespace {

/// A member of an object in JSON text without white space.
struct MemberText {
    std::string name;
    std::string_view value;
};

/// Where the string that begins at `start` ends, behind its closing quote.
std::size_t endOfString(std::string_view json, std::size_t start)
{
    std::size_t index = start + 1;
    while (index < json.size() && json[index] != '"')
        index += json[index] == '\\' ? 2 : 1;
    return std::min(index + 1, json.size());
}

/// Where the value that begins at `start` ends. A loop, since values may nest deep.
std::size_t endOfValue(std::string_view json, std::size_t start)
{
    std::size_t depth = 0;
    std::size_t index = start;
    while (index < json.size()) {
        const char unit = json[index];
        if (depth == 0 && (unit == ',' || unit == '}' || unit == ']'))
            return index;
        if (unit == '{' || unit == '[')
            ++depth;
        else if (unit == '}' || unit == ']')
            --depth;
        index = unit == '"' ? endOfString(json, index) : index + 1;
    }
    return index;
}

/// The text that a JSON string stands for; our JSON has only escapes that CSON reads alike.
std::string unquoted(std::string_view string)
{
    const auto value = TavrelCSONBackend::parseCSON(string);
    return value ? std::string(value->string().value_or(std::string_view{})) : std::string();
}

/// The members of the object that `json` is, in order; none when it is no object.
std::vector<MemberText> membersInOrder(std::string_view json)
{
    std::vector<MemberText> members;
    std::size_t index = 1;
    while (json.starts_with('{') && index < json.size() && json[index] == '"') {
        const std::size_t nameEnd = endOfString(json, index);
        const std::size_t valueEnd = endOfValue(json, nameEnd + 1);
        members.push_back({unquoted(json.substr(index, nameEnd - index)),
                           json.substr(nameEnd + 1, valueEnd - nameEnd - 1)});
        index = valueEnd + 1;
    }
    return members;
}

std::vector<KeyMapEntry> entriesInOrder(std::string_view json, const CSONValue& map)
{
    std::vector<KeyMapEntry> entries;
    std::unordered_set<std::string> seen;
    std::vector<MemberText> members = membersInOrder(json);
    std::ranges::reverse(members);
    for (const MemberText& member : members) {
        const CSONValue* value = map.find(member.name);
        if (value && seen.insert(member.name).second)
            entries.push_back({member.name, *value});
    }
    std::ranges::reverse(entries);
    return entries;
}

}  // namespace

tl::expected<std::vector<KeyMapEntry>, CSONError> keyMapFromCSON(std::string_view text)
{
    const auto value = TavrelCSONBackend::parseCSON(text);
    const auto json = TavrelCSONBackend::normalizedJSONFromCSON(text);
    if (!value || !json)
        return tl::unexpected(value ? json.error() : value.error());
    return entriesInOrder(*json, *value);
}

tl::expected<std::vector<KeyMapEntry>, CSONError> keyMapFromCSON(std::string_view text,
                                                                 std::string_view section)
{
    return TavrelCSONBackend::parseCSON(text).map(
        [&](const CSONValue& value) { return keyMapFromCSON(text, value, section); });
}

std::vector<KeyMapEntry> keyMapFromCSON(std::string_view text, const CSONValue& value,
                                        std::string_view section)
{
    const CSONValue* map = value.find(section);
    const auto json = TavrelCSONBackend::normalizedJSONFromCSON(text);
    if (!map || !json)
        return {};
    // Of two sections with one name the last one counts, as in the value.
    const std::vector<MemberText> members = membersInOrder(*json);
    const auto last = std::find_if(members.rbegin(), members.rend(), [&](const MemberText& member) {
        return member.name == section;
    });
    return entriesInOrder(last != members.rend() ? last->value : std::string_view{}, *map);
}

}  // namespace tavrel
