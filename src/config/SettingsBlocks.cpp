#include "config/SettingsBlocks.h"

#include "platform/Unicode.h"

#include <unicode/utf8.h>

namespace tavrel {
namespace {

/// A character of a text and where it stops, or starts, seen from the location that was asked.
struct TextCharacter {
    char32_t character;
    std::size_t location;
};

/// The character that begins at `location`, which must lie in the text.
TextCharacter characterBehind(std::string_view text, std::size_t location)
{
    std::size_t index = location;
    UChar32 character = 0;
    U8_NEXT_OR_FFFD(text.data(), index, text.size(), character);
    return {static_cast<char32_t>(character), index};
}

/// The character that ends at `location`, which must not be the start of the text.
TextCharacter characterBefore(std::string_view text, std::size_t location)
{
    constexpr std::size_t longest = 4;
    constexpr auto isTrailing = [](char byte) { return (byte & 0xC0) == 0x80; };
    std::size_t start = location - 1;
    while (start > 0 && location - start < longest && isTrailing(text[start]))
        --start;
    const TextCharacter character = characterBehind(text.substr(0, location), start);
    return {character.character, start};
}

bool isNewlineBefore(std::string_view text, std::size_t location)
{
    return location > 0 && isNewline(characterBefore(text, location).character);
}

bool isNewlineBehind(std::string_view text, std::size_t location)
{
    return location < text.size() && isNewline(characterBehind(text, location).character);
}

/// `location`, moved back over blanks and tabs.
std::size_t beforeBlanks(std::string_view text, std::size_t location)
{
    while (location > 0 && (text[location - 1] == ' ' || text[location - 1] == '\t'))
        --location;
    return location;
}

/// `location`, moved back over white space and line ends.
std::size_t beforeWhitespace(std::string_view text, std::size_t location)
{
    while (location > 0) {
        const TextCharacter previous = characterBefore(text, location);
        if (!isWhitespaceOrNewline(previous.character))
            break;
        location = previous.location;
    }
    return location;
}

/// `location`, moved on over white space and line ends, but not over an empty line.
std::size_t behindWhitespace(std::string_view text, std::size_t location)
{
    while (location < text.size()) {
        const TextCharacter next = characterBehind(text, location);
        if (!isWhitespaceOrNewline(next.character))
            break;
        location = next.location;
        if (isNewline(next.character) && isNewlineBehind(text, location))
            break;
    }
    return location;
}

std::size_t lineStart(std::string_view text, std::size_t location)
{
    while (location > 0 && !isNewlineBefore(text, location))
        --location;
    return location;
}

/// Where the name of a section that begins a line stands.
std::optional<std::size_t> sectionNameLocation(std::string_view text, std::string_view name)
{
    // A line behind the opening brace of the text is found by the same search.
    const std::string beginning = "\n  ";
    const std::size_t found = text.find(beginning + std::string(name) + ":");
    if (found == std::string_view::npos)
        return std::nullopt;
    return found + beginning.size();
}

std::string indented(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += "    " + line + "\n";
    return text;
}

}  // namespace

std::optional<BlockBraces> bracesBehind(std::string_view text, std::size_t start)
{
    const std::size_t open = text.find('{', start);
    if (open == std::string_view::npos)
        return std::nullopt;
    std::size_t depth = 0;
    bool isInString = false;
    for (std::size_t location = open; location < text.size(); ++location) {
        const char unit = text[location];
        if (unit == '"')
            isInString = !isInString;
        else if (isInString && unit == '\\')
            ++location;
        else if (!isInString && unit == '{')
            ++depth;
        else if (!isInString && unit == '}' && --depth == 0)
            return BlockBraces{open, location};
    }
    return std::nullopt;
}

std::string withLinesInBlock(const std::string& text, std::string_view name,
                             const std::vector<std::string>& lines)
{
    const std::size_t found = text.find(name);
    const auto braces =
        found == std::string::npos ? std::nullopt : bracesBehind(text, found + name.size());
    if (!braces || lines.empty())
        return text;
    const std::size_t location = beforeBlanks(text, braces->close);
    std::string result = text.substr(0, location);
    if (!isNewlineBefore(text, location))
        result += '\n';
    return result + indented(lines) + text.substr(location);
}

std::string withoutBlock(const std::string& text, std::string_view name)
{
    const auto found = sectionNameLocation(text, name);
    const auto braces = found ? bracesBehind(text, *found + name.size() + 1) : std::nullopt;
    if (!braces)
        return text;
    std::size_t start = lineStart(text, *found);
    const std::size_t end = behindWhitespace(text, braces->close + 1);
    if (isNewlineBefore(text, start) && isNewlineBehind(text, end))
        start = characterBefore(text, start).location;
    return text.substr(0, start) + text.substr(end);
}

std::string withBlocks(const std::string& text, std::string_view blocks)
{
    std::string insertion = "\n\n" + std::string(blocks);
    const std::size_t keys = text.find("\n  keys:");
    if (keys != std::string::npos)
        return text.substr(0, keys) + insertion + text.substr(keys);
    insertion += '\n';
    const std::size_t end = beforeWhitespace(text, text.size());
    if (end > 0 && text[end - 1] == '}')
        return text.substr(0, end - 1) + insertion + text.substr(end - 1);
    return text + insertion;
}

}  // namespace tavrel
