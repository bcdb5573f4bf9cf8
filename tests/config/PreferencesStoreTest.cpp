#include "config/PreferencesStore.h"

#include "ConfigTestSupport.h"
#include "editor/dispatch/CommandDispatcher.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace tavrel {
namespace {

using Outcome = PreferencesStore::Outcome;
using testing::ElementsAre;

/// A store over resources of the test's own.
struct PreferencesStoreTest : testing::Test {
    test::TestFolder home;
    PosixFileSystem fileSystem;
    test::FakeResources resources;
    PreferencesStore store{fileSystem, resources, home.path()};

    std::vector<std::string> sequences() const
    {
        std::vector<std::string> names;
        for (const KeyMapEntry& entry : store.values().keymap)
            names.push_back(entry.sequence);
        return names;
    }
};

TEST_F(PreferencesStoreTest, BeginsWithTheBuiltInValues)
{
    EXPECT_EQ(store.values().editorFontName, "Menlo");
    EXPECT_EQ(store.values().theme, EditorTheme::builtIn());
    EXPECT_TRUE(store.values().keymap.empty());
    EXPECT_TRUE(store.values().languageModes.empty());
    EXPECT_EQ(store.values().toolbarItems.size(), 11U);
}

TEST_F(PreferencesStoreTest, WithoutAnyResourcesTheBuiltInValuesStand)
{
    EXPECT_EQ(store.load(), Outcome::applied);
    EXPECT_EQ(store.values().columnWidth, 80);
    EXPECT_TRUE(store.values().languageModes.empty());
    EXPECT_EQ(store.keyChord("copy"), std::nullopt);
    EXPECT_EQ(store.languageMode("a.cpp")->id, "text");
}

TEST_F(PreferencesStoreTest, TheDefaultSettingsAreReadSectionBySection)
{
    resources.texts["Defaults/settings.cson"] =
        "{editor: {tabWidth: 3} keys: {a: copy} terminal: {fontSize: 9} sidebar: {fontSize: 10}"
        " toolbar: {items: [x]} colors: {background: \"#010203\"}}";
    EXPECT_EQ(store.load("{}"), Outcome::applied);
    EXPECT_EQ(store.values().tabWidth, 3);
    EXPECT_EQ(store.values().terminalFontSize, 9.0);
    EXPECT_EQ(store.values().sidebarFontSize, 10.0);
    EXPECT_THAT(store.values().toolbarItems, ElementsAre("x"));
    EXPECT_THAT(sequences(), ElementsAre("a"));
    EXPECT_EQ(store.values().theme, EditorTheme::builtIn()) << "colors are not read here";
}

TEST_F(PreferencesStoreTest, TheDefaultKeysReplaceTheKeyMapOutright)
{
    resources.texts["Defaults/settings.cson"] = "{keys: {a: copy}}";
    store.applyUserSettings("{keys: {b: cut}}");
    store.applyDefaultSettings();
    EXPECT_THAT(sequences(), ElementsAre("a"));
}

TEST_F(PreferencesStoreTest, TheOlderDefaultsAreReadWhereThereAreNoOthers)
{
    resources.texts["preferences.cson"] = "{editor: {tabWidth: 3}}";
    store.applyDefaultSettings();
    EXPECT_EQ(store.values().tabWidth, 3);
}

TEST_F(PreferencesStoreTest, BadDefaultsDoNotMakeTheOlderOnesCount)
{
    resources.texts["Defaults/settings.cson"] = "{";
    resources.texts["Defaults/preferences.cson"] = "{editor: {tabWidth: 3}}";
    store.applyDefaultSettings();
    EXPECT_EQ(store.values().tabWidth, 2);
}

TEST_F(PreferencesStoreTest, TheThemeResourceReplacesTheTheme)
{
    resources.texts["Themes/default.cson"] = "{colors: {background: \"#010203\"}}";
    store.loadDefaultTheme();
    EXPECT_EQ(store.values().theme.background, (Color{1, 2, 3}));
    store.applyUserSettings("{colors: {gutter: \"#040506\"}}");
    EXPECT_EQ(store.values().theme.background, EditorTheme::builtIn().background)
        << "the user's colors take the place of the whole theme";
}

TEST_F(PreferencesStoreTest, ABadThemeResourceLeavesTheTheme)
{
    for (const char* text : {"{", "[]", "{colors: [a]}", "{background: \"#010203\"}", "12"}) {
        resources.texts["Themes/default.cson"] = text;
        store.loadDefaultTheme();
        EXPECT_EQ(store.values().theme, EditorTheme::builtIn()) << text;
    }
}

TEST_F(PreferencesStoreTest, TheBuiltInThemeIsMadeOnce)
{
    EXPECT_EQ(&EditorTheme::builtIn(), &EditorTheme::builtIn());
}

TEST_F(PreferencesStoreTest, AResetPutsEverythingBack)
{
    resources.texts["Languages/cpp.cson"] = "{id: cpp}";
    store.load("{editor: {tabWidth: 5 fontName: X} keys: {a: copy} keyboard: {commandKey: super}"
               " colors: {gutter: \"#010203\"} toolbar: {items: []}}");
    store.resetToBuiltInValues();
    EXPECT_EQ(store.values().tabWidth, 2);
    EXPECT_EQ(store.values().editorFontName, "Menlo");
    EXPECT_EQ(store.values().theme, EditorTheme::builtIn());
    EXPECT_EQ(store.values().commandKey, CommandKey::ctrl);
    EXPECT_TRUE(store.values().keymap.empty());
    EXPECT_TRUE(store.values().languageModes.empty());
    EXPECT_EQ(store.values().toolbarItems.size(), 11U);
}

TEST_F(PreferencesStoreTest, ALoadForgetsTheOneBefore)
{
    store.load("{editor: {tabWidth: 5}}");
    store.load("{editor: {columnWidth: 50}}");
    EXPECT_EQ(store.values().tabWidth, 2);
    EXPECT_EQ(store.values().columnWidth, 50);
}

TEST_F(PreferencesStoreTest, InvalidSettingsLeaveTheDefaults)
{
    resources.texts["Defaults/settings.cson"] = "{editor: {tabWidth: 3}}";
    EXPECT_EQ(store.load("{editor: {tabWidth: 5}"), Outcome::invalid);
    EXPECT_EQ(store.values().tabWidth, 3);
}

TEST_F(PreferencesStoreTest, TheUsersKeysStandBehindTheDefaultsInTheOrderOfTheFile)
{
    resources.texts["Defaults/settings.cson"] = "{keys: {a: 1 b: 2 c: 3}}";
    store.load("{keys: {z: 4 b: 5 y: 6}}");
    EXPECT_THAT(sequences(), ElementsAre("a", "c", "z", "b", "y"));
}

TEST_F(PreferencesStoreTest, OfTwoSpellingsOfOneChordTheLaterOneOfTheUserWins)
{
    struct Target final : CommandTarget {
        void performCommand(const EditorCommand& command) override { ran = command.name; }
        void beep() override {}
        std::string ran;
    };
    const auto ranBy = [&](std::string_view user) {
        resources.texts["Defaults/settings.cson"] = "{keys: {\"cmd+shift+a\": {cut}}}";
        store.load(user);
        CommandDispatcher dispatcher;
        dispatcher.load(store.values().keymap);
        Target target;
        KeyEvent event;
        event.modifierFlags = KeyModifier::commandModifier | KeyModifier::shiftModifier;
        event.charactersIgnoringModifiers = u"a";
        dispatcher.handleKeyEvent(event, target);
        return target.ran;
    };
    EXPECT_EQ(ranBy("{}"), "cut");
    EXPECT_EQ(ranBy("{keys: {\"shift+cmd+a\": {copy}}}"), "copy");
    EXPECT_EQ(ranBy("{keys: {\"shift+cmd+a\": {copy} \"cmd+shift+a\": {paste}}}"), "paste");
    EXPECT_EQ(ranBy("{keys: {\"cmd+shift+a\": {paste} \"SHIFT+cmd+a\": {copy}}}"), "copy");
}

TEST_F(PreferencesStoreTest, AFileThatCannotBeReadCountsAsApplied)
{
    EXPECT_EQ(store.applyUserSettings(), Outcome::applied);
    std::filesystem::create_directories(store.folder().settingsFile());
    EXPECT_EQ(store.applyUserSettings(), Outcome::applied);
}

TEST_F(PreferencesStoreTest, TheActiveSettingsAreTheOlderFileOnlyWithoutTheOther)
{
    EXPECT_EQ(store.activeSettingsURL(), home / ".tavrel-code/preferences.cson");
    std::filesystem::create_directory(home / ".tavrel-code");
    home.write(".tavrel-code/settings.cson", "");
    EXPECT_EQ(store.activeSettingsURL(), home / ".tavrel-code/settings.cson");
}

TEST_F(PreferencesStoreTest, AModeOutlivesTheReloadThatReplacesIt)
{
    resources.texts["Languages/cpp.cson"] = "{id: cpp name: One extensions: [x]}";
    store.load("{}");
    const auto before = store.languageMode("a.x");
    resources.texts["Languages/cpp.cson"] = "{id: cpp name: Two extensions: [x]}";
    store.load("{}");
    EXPECT_EQ(before->name, "One");
    EXPECT_EQ(store.languageMode("a.x")->name, "Two");
}

TEST_F(PreferencesStoreTest, TheResourcesAreLookedUpAtTheTopToo)
{
    resources.texts["cpp.cson"] = "{id: cpp extensions: [x]}";
    resources.texts["default.cson"] = "{colors: {gutter: \"#010203\"}}";
    resources.texts["settings.cson"] = "{editor: {tabWidth: 3}}";
    store.load("{}");
    EXPECT_EQ(store.languageMode("a.x")->id, "cpp");
    EXPECT_EQ(store.values().theme.gutter, (Color{1, 2, 3}));
    EXPECT_EQ(store.values().tabWidth, 3);
}

TEST_F(PreferencesStoreTest, HugeAndDeepSettingsAreRead)
{
    EXPECT_EQ(store.load("{keys: {a: " + std::string(5000, '[') + std::string(5000, ']') + "}}"),
              Outcome::applied);
    EXPECT_EQ(store.keyChord("copy"), std::nullopt);
    EXPECT_EQ(store.load(std::string(200000, '[')), Outcome::invalid);
}

}  // namespace
}  // namespace tavrel
