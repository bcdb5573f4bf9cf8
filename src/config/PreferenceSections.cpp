#include "config/PreferenceSections.h"

#include "config/ConfigText.h"
#include "config/Preferences.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <string_view>

namespace tavrel {
namespace {

/// Where the settings file gives a value.
struct KeyPath {
    std::string_view section;
    std::string_view key;
};

struct TextSetting {
    KeyPath path;
    std::string Preferences::*value;
};
constexpr std::array textSettings{
    TextSetting{{"editor", "fontName"}, &Preferences::editorFontName},
    TextSetting{{"terminal", "fontName"}, &Preferences::terminalFontName},
    TextSetting{{"terminal", "wordCharacters"}, &Preferences::terminalWordCharacters},
};

struct IntegerSetting {
    KeyPath path;
    std::int64_t Preferences::*value;
    std::int64_t least;
    std::int64_t most = std::numeric_limits<std::int64_t>::max();
};
constexpr std::array integerSettings{
    IntegerSetting{{"editor", "tabWidth"}, &Preferences::tabWidth, 1},
    IntegerSetting{{"editor", "columnWidth"}, &Preferences::columnWidth, 1},
    IntegerSetting{{"editor", "maxEditors"}, &Preferences::maxEditors, 1, 4},
    IntegerSetting{{"terminal", "historyLines"}, &Preferences::terminalHistoryLines, 0},
};

struct NumberSetting {
    KeyPath path;
    double Preferences::*value;
    double least = -std::numeric_limits<double>::infinity();
};
constexpr std::array numberSettings{
    NumberSetting{{"editor", "fontSize"}, &Preferences::editorFontSize},
    NumberSetting{{"terminal", "fontSize"}, &Preferences::terminalFontSize},
    NumberSetting{{"sidebar", "fontSize"}, &Preferences::sidebarFontSize, 8.0},
};

struct FlagSetting {
    KeyPath path;
    bool Preferences::*value;
};
constexpr std::array flagSettings{
    FlagSetting{{"editor", "autoSaveOnFocusLoss"}, &Preferences::autoSaveOnFocusLoss},
    FlagSetting{{"editor", "showPathInTitleBar"}, &Preferences::showPathInTitleBar},
};

constexpr KeyPath toolbarPath{"toolbar", "items"};
constexpr KeyPath commandKeyPath{"keyboard", "commandKey"};

/// The value at `path`, or null. Only maps have members, so other shapes of a section hold none.
const CSONValue* valueAt(const CSONValue& settings, KeyPath path)
{
    const CSONValue* section = settings.find(path.section);
    return section ? section->find(path.key) : nullptr;
}

std::optional<bool> flagOf(const CSONValue& value)
{
    constexpr std::array<std::string_view, 3> yes{"true", "yes", "1"};
    constexpr std::array<std::string_view, 3> no{"false", "no", "0"};
    const auto text = value.string();
    if (!text)
        return value.boolean();
    const std::string word = lowercasedUtf8(trimmedUtf8(*text, Trim::newlines));
    if (std::ranges::find(yes, word) != yes.end())
        return true;
    if (std::ranges::find(no, word) != no.end())
        return false;
    return std::nullopt;
}

std::optional<CommandKey> commandKeyOf(const CSONValue& value)
{
    const auto text = value.string();
    if (text == "ctrl")
        return CommandKey::ctrl;
    if (text == "super")
        return CommandKey::super;
    return std::nullopt;
}

void applyToolbar(const CSONValue& items, Preferences& preferences)
{
    if (!items.isArray())
        return;
    preferences.toolbarItems.clear();
    for (const CSONValue& item : items.elements()) {
        if (const auto text = item.string())
            preferences.toolbarItems.emplace_back(*text);
    }
}

}  // namespace

void applySections(const CSONValue& settings, Preferences& preferences)
{
    for (const TextSetting& setting : textSettings) {
        const CSONValue* value = valueAt(settings, setting.path);
        if (const auto text = value ? value->string() : std::nullopt)
            preferences.*setting.value = *text;
    }
    for (const IntegerSetting& setting : integerSettings) {
        const CSONValue* value = valueAt(settings, setting.path);
        if (const auto number = value ? value->integer() : std::nullopt)
            preferences.*setting.value = std::clamp(*number, setting.least, setting.most);
    }
    for (const NumberSetting& setting : numberSettings) {
        const CSONValue* value = valueAt(settings, setting.path);
        if (const auto number = value ? value->number() : std::nullopt)
            preferences.*setting.value = std::max(*number, setting.least);
    }
    for (const FlagSetting& setting : flagSettings) {
        const CSONValue* value = valueAt(settings, setting.path);
        if (const auto flag = value ? flagOf(*value) : std::nullopt)
            preferences.*setting.value = *flag;
    }
    if (const CSONValue* items = valueAt(settings, toolbarPath))
        applyToolbar(*items, preferences);
    if (const CSONValue* value = valueAt(settings, commandKeyPath))
        preferences.commandKey = commandKeyOf(*value).value_or(preferences.commandKey);
}

}  // namespace tavrel
