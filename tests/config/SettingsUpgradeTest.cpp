#include "config/SettingsUpgrade.h"

#include "config/BuiltInSettings.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>

// Every line that an upgrade adds, one by one. The single steps are told in the data cases.

namespace tavrel {
namespace {

std::string upgradedFully(std::string text)
{
    for (int i = 0; i < 3; ++i)
        text = upgradedSettings(text).value_or(text);
    return text;
}

/// A settings file to which an upgrade finds nothing to add.
const std::string& completeText()
{
    static const std::string text = upgradedFully(builtInSettingsText());
    return text;
}

std::string without(std::string text, const std::string& piece)
{
    const std::size_t found = text.find(piece);
    EXPECT_NE(found, std::string::npos) << piece;
    return text.erase(found, piece.size());
}

/// Takes each expected line of the section out and looks where an upgrade puts it; `text` holds
/// every key once.
void checkLinesOf(SettingsSection section, const std::string& text)
{
    const std::string name = "  " + std::string(sectionName(section)) + ": {\n";
    for (const std::string& line : expectedLines(section)) {
        const std::string whole = "    " + line + "\n";
        const std::string missing = without(text, whole);
        const std::string key = line.substr(0, line.find(':') + 1);
        if (missing.find(key) != std::string::npos)
            continue;  // Another section holds the same key, which is enough.
        std::string expected = missing;
        expected.insert(expected.find("\n  }", expected.find(name)) + 1, whole);
        EXPECT_EQ(upgradedSettings(missing), expected) << line;
    }
}

TEST(SettingsUpgrade, LeavesACompleteTextAlone)
{
    EXPECT_EQ(upgradedSettings(completeText()), std::nullopt);
}

TEST(SettingsUpgrade, AddsEachMissingLineOfTheEditor)
{
    checkLinesOf(SettingsSection::editor, completeText());
}

TEST(SettingsUpgrade, AddsEachMissingLineOfTheTerminal)
{
    checkLinesOf(SettingsSection::terminal, completeText());
}

TEST(SettingsUpgrade, AddsTheMissingLineOfTheSidebar)
{
    std::string text = completeText();
    for (const char* line : {"    fontSize: 13\n", "    fontSize: 12\n", "    fontSize: 13\n"})
        text = without(text, line);
    // The editor is the first of the three to miss the line; the two others then have it.
    std::string expected = text;
    expected.insert(expected.find("\n  }", expected.find("  editor: {")) + 1, "    fontSize: 13\n");
    EXPECT_EQ(upgradedSettings(text), expected);
}

TEST(SettingsUpgrade, AddsEachMissingColor)
{
    EXPECT_EQ(expectedLines(SettingsSection::colors).size(), 34U);
    checkLinesOf(SettingsSection::colors, completeText());
}

TEST(SettingsUpgrade, AddsEachMissingBinding)
{
    EXPECT_EQ(expectedLines(SettingsSection::keys).size(), 63U);
    checkLinesOf(SettingsSection::keys, completeText());
}

TEST(SettingsUpgrade, AddsNoColorThatOlderVersionsLacked)
{
    EXPECT_EQ(sectionBlock(SettingsSection::colors).find("link"), std::string::npos);
    std::istringstream lines(sectionBlock(SettingsSection::colors));
    std::size_t count = 0;
    for (std::string line; std::getline(lines, line);)
        ++count;
    EXPECT_EQ(count, 43U);
}

TEST(SettingsUpgrade, AThirdUpgradeFindsNothing)
{
    for (const char* text : {"{}", "{\n}\n", "{keys: {}}", "{editor: {}}", "{colors: {}}",
                             "{\n  keys: {}\n}", "{\n  terminal: {}\n  colors: {}\n}",
                             "{\n  extensionModes: {}\n}", "{ # editor keys\n}"}) {
        const std::string once = upgradedSettings(text).value_or(text);
        const std::string twice = upgradedSettings(once).value_or(once);
        EXPECT_EQ(upgradedSettings(twice), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace tavrel
