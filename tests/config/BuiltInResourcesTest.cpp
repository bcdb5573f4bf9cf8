#include "config/BuiltInResources.h"

#include "ConfigTestSupport.h"
#include "config/BuiltInSettings.h"
#include "config/LanguageModeTable.h"
#include "config/SettingsUpgrade.h"
#include "editor/dispatch/DefaultKeyMap.h"

#include <algorithm>
#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>

// What the program brings along is complete, and says what the built-in values say.

namespace tavrel {
namespace {

using testing::IsEmpty;
using testing::Not;

/// The value of a resource; fails the test where there is none.
CSONValue valueOf(std::string_view path)
{
    const auto text = BuiltInResources().textAt(path);
    EXPECT_TRUE(text) << path;
    const auto value = text ? PreferencesStore::parseSettings(*text) : std::nullopt;
    EXPECT_TRUE(value) << path;
    return value.value_or(CSONValue());
}

std::string pathOf(const LanguageModeRow& row)
{
    return "Languages/" + std::string(row.id) + ".cson";
}

TEST(BuiltInResources, AreSortedAndFoundByPath)
{
    const auto files = BuiltInResources::files();
    EXPECT_TRUE(std::ranges::is_sorted(files, {}, &EmbeddedFile::path));
    for (const EmbeddedFile& file : files)
        EXPECT_EQ(BuiltInResources().textAt(file.path), file.text);
    EXPECT_EQ(files.size(), languageModeTable.size() + 2);
    EXPECT_EQ(BuiltInResources().textAt("Languages/none.cson"), std::nullopt);
    EXPECT_EQ(BuiltInResources().textAt(""), std::nullopt);
}

TEST(ResourceStore, LooksInTheFolderFirstAndThenAtTheTop)
{
    test::FakeResources resources;
    resources.texts = {{"a", "top"}, {"Folder/a", "inside"}, {"b", "top only"}};
    EXPECT_EQ(resources.find("Folder", "a"), "inside");
    EXPECT_EQ(resources.find("Folder", "b"), "top only");
    EXPECT_EQ(resources.find("Folder", "c"), std::nullopt);
}

TEST(BuiltInResources, HaveAModeForEveryRowOfTheTable)
{
    for (const LanguageModeRow& row : languageModeTable) {
        const auto mode = LanguageMode::fromValue(valueOf(pathOf(row)));
        ASSERT_TRUE(mode) << row.id;
        EXPECT_EQ(mode->id, row.id);
        EXPECT_EQ(mode->name, row.displayName);
        EXPECT_THAT(mode->extensions, Not(IsEmpty())) << row.id;
        EXPECT_FALSE(mode->lineComments.empty() && mode->blockComments.empty()) << row.id;
        EXPECT_FALSE(mode->punctuation.empty()) << row.id;
    }
}

TEST(BuiltInResources, ModesLoseNoElementOfTheirLists)
{
    for (const LanguageModeRow& row : languageModeTable) {
        const CSONValue value = valueOf(pathOf(row));
        for (const CSONMember& member : value.members()) {
            const bool isKnown = std::ranges::count(
                std::array<std::string_view, 9>{"id", "name", "extensions", "keywords", "types",
                                                "lineComments", "blockComments", "strings",
                                                "punctuation"},
                member.name);
            EXPECT_TRUE(isKnown) << row.id << ": " << member.name;
            for (const CSONValue& element : member.value.elements())
                EXPECT_TRUE(element.isString() || element.isBoolean() || element.isArray())
                    << row.id << ": " << member.name;
        }
    }
}

TEST(BuiltInResources, ModesNameNothingTwiceInOneList)
{
    for (const LanguageModeRow& row : languageModeTable) {
        const CSONValue value = valueOf(pathOf(row));
        for (const char* list : {"extensions", "lineComments", "strings"}) {
            std::set<std::string> seen;
            const CSONValue* elements = value.find(list);
            ASSERT_TRUE(elements || std::string_view(list) == "lineComments") << row.id;
            for (const CSONValue& element :
                 elements ? elements->elements() : std::span<const CSONValue>())
                EXPECT_TRUE(seen.insert(std::string(element.string().value_or(""))).second)
                    << row.id << ": " << element.string().value_or("");
        }
    }
}

TEST(BuiltInResources, NoTwoModesClaimOneExtension)
{
    std::map<std::string, std::string_view> owners;
    for (const LanguageModeRow& row : languageModeTable) {
        const auto mode = LanguageMode::fromValue(valueOf(pathOf(row)));
        ASSERT_TRUE(mode) << row.id;
        for (const std::string& extension : mode->extensions) {
            const auto [owner, isNew] = owners.emplace(extension, row.id);
            EXPECT_TRUE(isNew) << extension << " of " << row.id << " and " << owner->second;
        }
    }
}

TEST(BuiltInResources, WordsOfLanguagesWithoutCaseAreInSmallLetters)
{
    for (const char* id : {"sql", "html", "css"}) {
        const auto mode =
            LanguageMode::fromValue(valueOf("Languages/" + std::string(id) + ".cson"));
        ASSERT_TRUE(mode);
        for (const std::string& word : mode->keywords)
            EXPECT_EQ(
                std::ranges::count_if(word, [](char byte) { return byte >= 'A' && byte <= 'Z'; }),
                0)
                << word;
    }
}

TEST(BuiltInResources, TheThemeIsTheBuiltInOne)
{
    const CSONValue value = valueOf("Themes/default.cson");
    const CSONValue* colors = value.find("colors");
    ASSERT_TRUE(colors);
    EXPECT_EQ(colors->members().size(), 47U);
    EXPECT_EQ(EditorTheme(*colors), EditorTheme::builtIn());
}

TEST(BuiltInResources, TheSettingsSayWhatTheBuiltInValuesSay)
{
    test::ConfigTestHome home;
    home.store.applyDefaultSettings();
    Preferences expected;
    expected.keymap = defaultKeyMapEntries();
    const Preferences& values = home.store.values();
    EXPECT_EQ(values.keymap, expected.keymap);
    EXPECT_EQ(values.toolbarItems, expected.toolbarItems);
    EXPECT_EQ(values.editorFontName, expected.editorFontName);
    EXPECT_EQ(values.editorFontSize, expected.editorFontSize);
    EXPECT_EQ(values.tabWidth, expected.tabWidth);
    EXPECT_EQ(values.columnWidth, expected.columnWidth);
    EXPECT_EQ(values.maxEditors, expected.maxEditors);
    EXPECT_EQ(values.autoSaveOnFocusLoss, expected.autoSaveOnFocusLoss);
    EXPECT_EQ(values.showPathInTitleBar, expected.showPathInTitleBar);
    EXPECT_EQ(values.terminalFontName, expected.terminalFontName);
    EXPECT_EQ(values.terminalFontSize, expected.terminalFontSize);
    EXPECT_EQ(values.terminalWordCharacters, expected.terminalWordCharacters);
    EXPECT_EQ(values.terminalHistoryLines, expected.terminalHistoryLines);
    EXPECT_EQ(values.sidebarFontSize, expected.sidebarFontSize);
    EXPECT_EQ(values.commandKey, expected.commandKey);
}

TEST(BuiltInResources, TheSettingsNeedNoUpgrade)
{
    const auto text = BuiltInResources().textAt("Defaults/settings.cson");
    ASSERT_TRUE(text);
    EXPECT_EQ(upgradedSettings(std::string(*text)), std::nullopt);
}

TEST(BuiltInResources, TheSettingsHoldEveryLineOfTheBuiltInText)
{
    const std::string text(BuiltInResources().textAt("Defaults/settings.cson").value_or(""));
    std::istringstream lines(builtInSettingsText());
    for (std::string line; std::getline(lines, line);)
        EXPECT_NE(text.find(line + "\n"), std::string::npos) << line;
}

}  // namespace
}  // namespace tavrel
