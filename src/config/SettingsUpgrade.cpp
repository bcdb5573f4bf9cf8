#include "config/SettingsUpgrade.h"

#include "config/BuiltInSettings.h"
#include "config/ConfigText.h"
#include "config/SettingsBlocks.h"
#include "config/cson/TavrelCSONBackend.h"

#include <array>
#include <string_view>
#include <vector>

namespace tavrel {
namespace {

/// A section, and the word that tells whether a text has it. The word may stand anywhere, in a
/// comment or in another section too: the section then counts as present.
struct KnownSection {
    SettingsSection section;
    std::string_view word;
};

constexpr std::array completedSections{
    KnownSection{SettingsSection::editor, "editor"},
    KnownSection{SettingsSection::terminal, "terminal:"},
    KnownSection{SettingsSection::sidebar, "sidebar:"},
    KnownSection{SettingsSection::colors, "colors"},
    KnownSection{SettingsSection::keys, "keys"},
};
constexpr std::array addedSections{
    KnownSection{SettingsSection::editor, "editor"},
    KnownSection{SettingsSection::sidebar, "sidebar:"},
    KnownSection{SettingsSection::terminal, "terminal:"},
    KnownSection{SettingsSection::toolbar, "toolbar:"},
    KnownSection{SettingsSection::colors, "colors"},
    KnownSection{SettingsSection::keys, "keys"},
};
constexpr std::array<std::string_view, 2> removedSections{"extensionModes", "languageExtensions"};

bool contains(const std::string& text, std::string_view word)
{
    return text.find(word) != std::string::npos;
}

/// Whether the key of `line`, with its colon, stands nowhere in the text. The search is not limited
/// to the section: one `fontSize:` is enough for all sections that have such a line.
bool isMissing(const std::string& text, const std::string& line)
{
    return !contains(text, std::string_view(line).substr(0, line.find(':') + 1));
}

std::string withCompleteSection(const std::string& text, const KnownSection& known)
{
    if (!contains(text, known.word))
        return text;
    std::vector<std::string> lines = expectedLines(known.section);
    std::erase_if(lines, [&](const std::string& line) { return !isMissing(text, line); });
    return withLinesInBlock(text, sectionName(known.section), lines);
}

std::string withMissingSections(const std::string& text)
{
    std::string blocks;
    for (const KnownSection& known : addedSections) {
        if (contains(text, known.word))
            continue;
        if (!blocks.empty())
            blocks += "\n\n";
        blocks += sectionBlock(known.section);
    }
    return blocks.empty() ? text : withBlocks(text, blocks);
}

std::string afterAllSteps(const std::string& text)
{
    std::string result = text;
    for (const std::string_view name : removedSections)
        result = withoutBlock(result, name);
    for (const KnownSection& known : completedSections)
        result = withCompleteSection(result, known);
    return withMissingSections(result);
}

bool parses(std::string_view text)
{
    return TavrelCSONBackend::parseCSON(withoutByteOrderMark(text)).has_value();
}

}  // namespace

std::optional<std::string> upgradedSettings(const std::string& text)
{
    std::string result = afterAllSteps(text);
    if (result == text || !parses(text) || !parses(result))
        return std::nullopt;
    return result;
}

}  // namespace tavrel
