#include "TerminalPanelFixture.h"

namespace tavrel {
namespace {

/// The press of a letter key with modifiers, by its character.
KeyEvent press(char16_t letter, std::uint64_t modifiers)
{
    KeyEvent event;
    event.modifierFlags = modifiers;
    event.characters = event.charactersIgnoringModifiers = std::u16string(1, letter);
    return event;
}

/// Binds Ctrl+J, which nothing else is bound to, and presses it.
class TerminalKeysTest : public TerminalPanelTest {
protected:
    bool pressBoundTo(const std::string& value)
    {
        home.store.load("{keys: {\"ctrl+j\": " + value + "}}");
        panel().applyPreferences();
        return panel().handleKeyCommand(press(u'j', controlModifier));
    }
    /// A shell that puts every byte it is sent into the file "keys", behind `text` on the screen.
    void showLine(const std::string& text)
    {
        useShell("stty raw -echo; printf '" + text + "'; printf ready >state; exec cat >keys");
        shownPanel();
        ASSERT_TRUE(waitForFile("state", "ready"));
        ASSERT_TRUE(runUntil([&] { return this->text() == shown(text); }));
    }
    static std::string shown(std::string text) { return text.substr(0, text.find('\\')); }
};

TEST_F(TerminalKeysTest, AKeyThatIsNotBoundBelongsToTheShell)
{
    EXPECT_FALSE(panel().handleKeyCommand(press(u'j', controlModifier)));
    EXPECT_FALSE(panel().handleKeyCommand(KeyEvent{}));
    EXPECT_FALSE(panel().isBound("ctrl+j"));
}

TEST_F(TerminalKeysTest, ACommandThatMeansNothingHereBelongsToTheShell)
{
    EXPECT_FALSE(pressBoundTo("{copy}"));
    EXPECT_FALSE(pressBoundTo("[{save} {selectAll}]"));
    EXPECT_FALSE(pressBoundTo("[]"));
    EXPECT_FALSE(pressBoundTo("{noSuchCommand}"));
    EXPECT_FALSE(pressBoundTo("12"));
    EXPECT_TRUE(panel().isBound("ctrl+j"));
}

TEST_F(TerminalKeysTest, ASequenceOfTwoChordsIsNoEntry)
{
    home.store.load("{keys: {\"ctrl+j,ctrl+k\": {newTerminalTab}}}");
    panel().applyPreferences();
    EXPECT_FALSE(panel().handleKeyCommand(press(u'j', controlModifier)));
    EXPECT_EQ(panel().tabCount(), 1U);
}

TEST_F(TerminalKeysTest, TheDefaultKeysOpenTabs)
{
    home.store.load();
    panel().applyPreferences();
    EXPECT_TRUE(panel().handleKeyCommand(press(u't', commandModifier)));
    EXPECT_EQ(panel().tabCount(), 2U);
    EXPECT_TRUE(panel().isBound("cmd+c"));
}

TEST_F(TerminalKeysTest, TheNextTabGoesRound)
{
    EXPECT_TRUE(pressBoundTo("{nextView}"));
    EXPECT_EQ(panel().activeSessionIndex(), 0U);
    panel().restoreTabs({u"", u""}, {});
    EXPECT_TRUE(pressBoundTo("{nextView}"));
    EXPECT_EQ(panel().activeSessionIndex(), 1U);
    EXPECT_TRUE(pressBoundTo("{nextView}"));
    EXPECT_EQ(panel().activeSessionIndex(), 0U);
}

TEST_F(TerminalKeysTest, ThePreviousTabIsHandledWithOneTabToo)
{
    EXPECT_TRUE(pressBoundTo("{previousView}"));
    panel().restoreTabs({u"", u"", u""}, {});
    EXPECT_TRUE(pressBoundTo("{previousView}"));
    EXPECT_EQ(panel().activeSessionIndex(), 2U);
}

TEST_F(TerminalKeysTest, TabsAreOpenedAndClosed)
{
    EXPECT_TRUE(pressBoundTo("{newTerminalTab}"));
    EXPECT_EQ(panel().tabCount(), 2U);
    panel().selectTab(0);
    EXPECT_TRUE(pressBoundTo("{closeFile}"));
    EXPECT_EQ(panel().tabCount(), 1U);
    EXPECT_TRUE(pressBoundTo("{closeFile}"));
    EXPECT_EQ(panel().tabCount(), 1U);
}

TEST_F(TerminalKeysTest, EditorsAreGivenTheKeys)
{
    for (const char* command : {"{editor1}", "{editor2}", "{editor3}", "{editor4}"})
        EXPECT_TRUE(pressBoundTo(command));
    EXPECT_FALSE(pressBoundTo("{editor5}"));
    EXPECT_EQ(delegate.focusedEditors, (std::vector<std::size_t>{0, 1, 2, 3}));
}

TEST_F(TerminalKeysTest, AListIsSkippedUpToTheFirstThatMeansSomethingAndEndsThere)
{
    EXPECT_TRUE(pressBoundTo("[{save} {newTerminalTab} {editor1}]"));
    EXPECT_EQ(panel().tabCount(), 2U);
    EXPECT_TRUE(delegate.focusedEditors.empty());
}

TEST_F(TerminalKeysTest, WithoutADelegateAQuestionIsNoAndTheKeyIsHandled)
{
    panel().setDelegate(nullptr);
    EXPECT_TRUE(pressBoundTo("{editor1}"));
    panel().renameTab(0);
    EXPECT_EQ(panel().tabTitle(0), u"1");
}

// Commands on the shell's line.

TEST_F(TerminalKeysTest, AShellLineCommandBeforeTheStartIsHandledAndDoesNothing)
{
    panel();
    view.following = false;
    EXPECT_TRUE(pressBoundTo("{eraseWord}"));
    EXPECT_FALSE(view.following);
}

TEST_F(TerminalKeysTest, WordsLeftOfTheCursorAreReadOffTheScreenAndTyped)
{
    showLine("dollar one two");
    view.following = false;
    EXPECT_TRUE(pressBoundTo("{camelCase}"));
    EXPECT_TRUE(view.following);
    EXPECT_TRUE(waitForFile("keys", std::string(7, '\x7F') + "oneTwo"));
}

TEST_F(TerminalKeysTest, ArgumentsReachTheCommand)
{
    showLine("a b c");
    EXPECT_TRUE(pressBoundTo("{typeCase words: 3}"));
    EXPECT_TRUE(waitForFile("keys", std::string(5, '\x7F') + "ABC"));
}

TEST_F(TerminalKeysTest, TheTextRightOfTheCursorIsSkippedOver)
{
    showLine("one two three\\033[9D");  // The cursor stands before "two".
    EXPECT_TRUE(pressBoundTo("{skipWord}"));
    EXPECT_TRUE(waitForFile("keys", "\x1B[C\x1B[C\x1B[C"));
    EXPECT_EQ(fileText("keys"), "\x1B[C\x1B[C\x1B[C");
}

TEST_F(TerminalKeysTest, ApplicationCursorKeysAreSentWhereTheyAreOn)
{
    showLine("one two\\033[?1h");
    EXPECT_TRUE(pressBoundTo("{skipWord forward: false}"));
    EXPECT_TRUE(waitForFile("keys", "\x1BOD\x1BOD\x1BOD"));
}

TEST_F(TerminalKeysTest, NothingToTypeLeavesThePlaceAlone)
{
    showLine("one");
    view.following = false;
    EXPECT_TRUE(pressBoundTo("{strip}"));
    EXPECT_FALSE(view.following);
    EXPECT_EQ(fileText("keys"), "");
}

TEST_F(TerminalKeysTest, TheLineBelowAHistoryIsRead)
{
    useShell("seq 1 60; stty raw -echo; printf 'last line'; printf ready >state; exec cat >keys");
    shownPanel();
    ASSERT_TRUE(waitForText("last line"));
    ASSERT_GT(emulator().historyLength(), 0);
    EXPECT_TRUE(pressBoundTo("{eraseFullWord}"));
    EXPECT_TRUE(waitForFile("keys", std::string(4, '\x7F')));
}

}  // namespace
}  // namespace tavrel
