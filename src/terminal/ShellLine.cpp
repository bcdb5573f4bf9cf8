#include "terminal/ShellLine.h"

#include "editor/StripCommands.h"
#include "editor/WordJoinCommands.h"
#include "editor/WordRanges.h"
#include "platform/Graphemes.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>

namespace tavrel {
namespace {

std::size_t characterCount(std::u16string_view text)
{
    return Graphemes(text).count();
}

std::string replacement(std::u16string_view erased, std::u16string_view typed)
{
    constexpr char backspace = 0x7F;
    return std::string(characterCount(erased), backspace) + utf8FromUtf16(typed);
}

std::string presses(std::size_t count, char final, const ShellLine& line)
{
    const std::array<char, 3> press{'\x1B', line.applicationCursorKeys ? 'O' : '[', final};
    std::string result;
    for (std::size_t made = 0; made < count; ++made)
        result.append(press.data(), press.size());
    return result;
}

std::u16string_view textIn(const ShellLine& line, TextRange range)
{
    return std::u16string_view(line.left).substr(range.location, range.length);
}

std::string eraseWord(const ShellLine& line, const EditorCommand&)
{
    return replacement(textIn(line, wordPartBefore(TextSnapshot(line.left), line.left.size())), {});
}

std::string eraseFullWord(const ShellLine& line, const EditorCommand&)
{
    return replacement(textIn(line, wordsBefore(TextSnapshot(line.left), line.left.size(), 1)), {});
}

std::string joinWords(const ShellLine& line, const EditorCommand& command, FirstWord first)
{
    const int wordCount = static_cast<int>(
        std::clamp<std::int64_t>(command.integer("words", 2), 1, std::numeric_limits<int>::max()));
    const auto words =
        textIn(line, wordsBefore(TextSnapshot(line.left), line.left.size(), wordCount));
    return words.empty() ? std::string() : replacement(words, joinedWords(words, first));
}

std::string camelCase(const ShellLine& line, const EditorCommand& command)
{
    return joinWords(line, command, FirstWord::lower);
}

std::string typeCase(const ShellLine& line, const EditorCommand& command)
{
    return joinWords(line, command, FirstWord::capitalised);
}

std::string strip(const ShellLine& line, const EditorCommand&)
{
    const MultiCursorEdit edit = stripEdit(TextSnapshot(line.left), line.left.size(), 0);
    if (edit.range.isEmpty())
        return {};
    const std::u16string_view left = line.left;
    return replacement(left.substr(edit.range.location),
                       edit.replacement.text() + std::u16string(left.substr(edit.range.end())));
}

std::string skipWord(const ShellLine& line, const EditorCommand& command)
{
    const std::u16string_view left = line.left;
    if (!command.truth("forward", true)) {
        const std::size_t start = wordBoundaryBefore(TextSnapshot(left), left.size());
        return presses(characterCount(left.substr(start)), 'D', line);
    }
    // A row has blanks where nothing was typed.
    const std::u16string_view right =
        std::u16string_view(line.right).substr(0, line.right.find_last_not_of(u' ') + 1);
    const TextSnapshot whole(std::u16string(left) + std::u16string(right));
    const std::size_t end = wordBoundaryAfter(whole, left.size());
    return presses(characterCount(right.substr(0, end - left.size())), 'C', line);
}

struct ShellLineCommand {
    std::string_view name;
    std::string (*input)(const ShellLine& line, const EditorCommand& command);
};

constexpr std::array shellLineCommands{
    ShellLineCommand{"eraseWord", eraseWord}, ShellLineCommand{"eraseFullWord", eraseFullWord},
    ShellLineCommand{"camelCase", camelCase}, ShellLineCommand{"typeCase", typeCase},
    ShellLineCommand{"titleCase", typeCase},  ShellLineCommand{"strip", strip},
    ShellLineCommand{"skipWord", skipWord},
};

const ShellLineCommand* commandNamed(std::string_view name)
{
    const auto* found = std::ranges::find(shellLineCommands, name, &ShellLineCommand::name);
    return found == shellLineCommands.end() ? nullptr : found;
}

}  // namespace

bool isShellLineCommand(std::string_view name)
{
    return commandNamed(name) != nullptr;
}

std::string shellLineInput(const ShellLine& line, const EditorCommand& command)
{
    const ShellLineCommand* known = commandNamed(command.name);
    return known ? known->input(line, command) : std::string();
}

}  // namespace tavrel
