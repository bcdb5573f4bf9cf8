#include "config/BuiltInSettings.h"

#include "config/EditorThemeFields.h"
#include "editor/dispatch/DefaultKeyMap.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>
#include <span>

namespace tavrel {
namespace {

constexpr std::array<std::string_view, 7> editorLines{
    "fontName: \"Menlo\"",      "fontSize: 13",  "tabWidth: 2",
    "columnWidth: 80",          "maxEditors: 4", "autoSaveOnFocusLoss: true",
    "showPathInTitleBar: true",
};
constexpr std::array<std::string_view, 4> terminalLines{
    "fontName: \"\"",
    "fontSize: 12",
    "wordCharacters: \"-./_\"",
    "historyLines: 10000",
};
constexpr std::array<std::string_view, 1> sidebarLines{"fontSize: 13"};

constexpr std::string_view toolbarBlock = R"(  toolbar: {
    items: [
      openFolder openFile save quickOpen find terminal newView goto emoji
      toggleTree refreshTree
    ]
  })";

/// Which of the texts that the program writes have a line for a colour.
enum class ColorLineUse {
    everywhere,
    notInUpgrade,  // A file that has the section need not have it.
    notInBlock,    // A file that lacks the section gets it only by the upgrade after the next.
};
struct ColorLine {
    std::string_view key;
    ColorLineUse use = ColorLineUse::everywhere;
};

/// The order of the lines; the sixteen of the terminal's palette follow.
constexpr std::array colorLines{
    ColorLine{"background"},
    ColorLine{"foreground"},
    ColorLine{"gutter"},
    ColorLine{"selection"},
    ColorLine{"sidebarBackground"},
    ColorLine{"panelBackground"},
    ColorLine{"accent"},
    ColorLine{"keyword", ColorLineUse::notInUpgrade},
    ColorLine{"string", ColorLineUse::notInUpgrade},
    ColorLine{"comment", ColorLineUse::notInUpgrade},
    ColorLine{"number", ColorLineUse::notInUpgrade},
    ColorLine{"identifier", ColorLineUse::notInUpgrade},
    ColorLine{"type", ColorLineUse::notInUpgrade},
    ColorLine{"className", ColorLineUse::notInUpgrade},
    ColorLine{"functionName", ColorLineUse::notInUpgrade},
    ColorLine{"methodName", ColorLineUse::notInUpgrade},
    ColorLine{"propertyName"},
    ColorLine{"macro", ColorLineUse::notInUpgrade},
    ColorLine{"preprocessor", ColorLineUse::notInUpgrade},
    ColorLine{"constant"},
    ColorLine{"decorator"},
    ColorLine{"operator", ColorLineUse::notInUpgrade},
    ColorLine{"punctuation", ColorLineUse::notInUpgrade},
    ColorLine{"terminalForeground"},
    ColorLine{"terminalBackground"},
    ColorLine{"toolbarForeground", ColorLineUse::notInBlock},
    ColorLine{"cursor", ColorLineUse::notInBlock},
    ColorLine{"gitAdded", ColorLineUse::notInBlock},
    ColorLine{"gitModified", ColorLineUse::notInBlock},
    ColorLine{"gitRemoved", ColorLineUse::notInBlock},
    ColorLine{"link", ColorLineUse::notInBlock},
};

std::string colorText(std::string_view key, std::string_view value)
{
    return std::string(key) + ": \"" + std::string(value) + "\"";
}

/// The lines of all colours, in order, or of all but those of `without`.
std::vector<std::string> colorTexts(std::optional<ColorLineUse> without = {})
{
    std::vector<std::string> lines;
    for (const ColorLine& line : colorLines) {
        const auto field = std::ranges::find(editorThemeFields, line.key, &EditorThemeField::key);
        if (line.use != without && field != editorThemeFields.end())
            lines.push_back(colorText(line.key, field->builtIn));
    }
    for (const AnsiColorField& field : ansiColorFields)
        lines.push_back(colorText(field.key, field.builtIn));
    return lines;
}

/// A key of letters and digits stands bare, any other in quotes.
std::string keyText(std::string_view chord)
{
    const bool isBare = std::ranges::all_of(
        chord, [](char byte) { return std::isalnum(static_cast<unsigned char>(byte)); });
    return isBare ? std::string(chord) : "\"" + std::string(chord) + "\"";
}

std::vector<std::string> keyTexts()
{
    std::vector<std::string> lines;
    lines.reserve(defaultKeyMap.size());
    for (const DefaultBinding& binding : defaultKeyMap)
        lines.push_back(keyText(binding.chord) + ": " + std::string(binding.value));
    return lines;
}

std::vector<std::string> texts(std::span<const std::string_view> lines)
{
    return {lines.begin(), lines.end()};
}

std::string blockOf(SettingsSection section, const std::vector<std::string>& lines)
{
    std::string block = "  " + std::string(sectionName(section)) + ": {\n";
    for (const std::string& line : lines)
        block += "    " + line + "\n";
    return block + "  }";
}

}  // namespace

std::string_view sectionName(SettingsSection section)
{
    constexpr std::array<std::string_view, 6> names{"editor",  "terminal", "sidebar",
                                                    "toolbar", "colors",   "keys"};
    return names[static_cast<std::size_t>(section)];
}

std::string builtInSettingsText()
{
    std::string text = "{\n";
    for (const SettingsSection section :
         {SettingsSection::editor, SettingsSection::terminal, SettingsSection::sidebar})
        text += sectionBlock(section) + "\n\n";
    text += blockOf(SettingsSection::colors, colorTexts()) + "\n\n";
    return text + sectionBlock(SettingsSection::keys) + "\n}";
}

std::vector<std::string> expectedLines(SettingsSection section)
{
    switch (section) {
    case SettingsSection::editor:
        return texts(editorLines);
    case SettingsSection::terminal:
        return texts(terminalLines);
    case SettingsSection::sidebar:
        return texts(sidebarLines);
    case SettingsSection::colors:
        return colorTexts(ColorLineUse::notInUpgrade);
    case SettingsSection::keys:
        return keyTexts();
    case SettingsSection::toolbar:
        break;
    }
    return {};
}

std::string sectionBlock(SettingsSection section)
{
    if (section == SettingsSection::toolbar)
        return std::string(toolbarBlock);
    if (section == SettingsSection::colors)
        return blockOf(section, colorTexts(ColorLineUse::notInBlock));
    return blockOf(section, expectedLines(section));
}

}  // namespace tavrel
