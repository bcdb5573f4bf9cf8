#include "probe/SettingsJson.h"

#include "config/EditorThemeFields.h"
#include "probe/CsonJson.h"

#include <string>

namespace tavrel::probe {
namespace {

template<class Texts>
Json jsonFromTexts(const Texts& texts)
{
    Json list = Json::array();
    for (const std::string& text : texts)
        list.push_back(jsonFromUtf8(text));
    return list;
}

Json jsonFromKeyMap(const std::vector<KeyMapEntry>& keymap)
{
    Json map = Json::object();
    for (const KeyMapEntry& entry : keymap)
        map[jsonFromUtf8(entry.sequence).get_ref<const std::string&>()] =
            jsonFromValue(entry.value);
    return map;
}

}  // namespace

Json jsonFromTheme(const EditorTheme& theme)
{
    Json result = Json::object();
    for (const EditorThemeField& field : editorThemeFields)
        result[std::string(field.name)] = hexText(theme.*field.color);
    Json& ansiColors = result["ansiColors"] = Json::array();
    for (const Color color : theme.ansiColors)
        ansiColors.push_back(hexText(color));
    return result;
}

Json jsonFromMode(const LanguageMode& mode)
{
    Json blockComments = Json::array();
    for (const auto& [open, close] : mode.blockComments)
        blockComments.push_back(Json::array({jsonFromUtf8(open), jsonFromUtf8(close)}));
    return {{"id", jsonFromUtf8(mode.id)},
            {"name", jsonFromUtf8(mode.name)},
            {"extensions", jsonFromTexts(mode.extensions)},
            {"keywords", jsonFromTexts(mode.keywords)},
            {"types", jsonFromTexts(mode.types)},
            {"lineComments", jsonFromTexts(mode.lineComments)},
            {"blockComments", blockComments},
            {"stringDelimiters", jsonFromTexts(mode.stringDelimiters)},
            {"punctuation", jsonFromUtf8(mode.punctuation)}};
}

Json jsonFromPreferences(const Preferences& preferences)
{
    Json modes = Json::array();
    for (const auto& mode : preferences.languageModes)
        modes.push_back(jsonFromUtf8(mode->id));
    return {{"keymap", jsonFromKeyMap(preferences.keymap)},
            {"theme", jsonFromTheme(preferences.theme)},
            {"languageModes", modes},
            {"editorFontName", jsonFromUtf8(preferences.editorFontName)},
            {"editorFontSize", preferences.editorFontSize},
            {"tabWidth", preferences.tabWidth},
            {"columnWidth", preferences.columnWidth},
            {"maxEditors", preferences.maxEditors},
            {"autoSaveOnFocusLoss", preferences.autoSaveOnFocusLoss},
            {"showPathInTitleBar", preferences.showPathInTitleBar},
            {"terminalFontName", jsonFromUtf8(preferences.terminalFontName)},
            {"terminalFontSize", preferences.terminalFontSize},
            {"terminalWordCharacters", jsonFromUtf8(preferences.terminalWordCharacters)},
            {"terminalHistoryLines", preferences.terminalHistoryLines},
            {"sidebarFontSize", preferences.sidebarFontSize},
            {"toolbarItems", jsonFromTexts(preferences.toolbarItems)}};
}

Json jsonFromCommandKey(CommandKey key)
{
    return key == CommandKey::ctrl ? "ctrl" : "super";
}

}  // namespace tavrel::probe
