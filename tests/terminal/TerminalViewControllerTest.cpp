#include "TerminalPanelFixture.h"

#include <fstream>
#include <sys/resource.h>

namespace tavrel {
namespace {

constexpr std::string_view exitMessage = "[process exited - press Return to restart]";

/// Stays, reading lines, until it is hung up.
constexpr const char* waits = "while :; do read line; done";

using Paths = std::vector<std::filesystem::path>;
using Names = std::vector<std::u16string>;

// Making a session.

TEST_F(TerminalPanelTest, TheFirstViewBringsOneSessionThatIsNotStarted)
{
    controller.emplace(services);
    EXPECT_EQ(controller->tabCount(), 0U);
    EXPECT_EQ(controller->activeEmulator(), nullptr);
    panel();
    controller->setView(&view);
    EXPECT_EQ(controller->tabCount(), 1U);
    EXPECT_EQ(view.shown, controller->activeEmulator());
    queue.run();
    EXPECT_EQ(text(), "");
}

TEST_F(TerminalPanelTest, ASessionWithoutRoomIsEightyByTwentyFour)
{
    EXPECT_EQ(emulator().columns(), 80);
    EXPECT_EQ(emulator().rows(), 24);
}

TEST_F(TerminalPanelTest, ASessionHasTheSizeThatThereIsRoomFor)
{
    view.size = TerminalSize{101, 7};
    EXPECT_EQ(emulator().columns(), 101);
    EXPECT_EQ(emulator().rows(), 7);
}

TEST_F(TerminalPanelTest, TheHistoryIsAsLongAsThePreferencesSay)
{
    EXPECT_EQ(emulator().scrollbackLimit(), 10'000U);
    home.store.load("{terminal: {historyLines: 3}}");
    panel().applyPreferences();
    EXPECT_EQ(emulator().scrollbackLimit(), 3U);
    panel().newTab();
    EXPECT_EQ(emulator().scrollbackLimit(), 3U);
}

TEST_F(TerminalPanelTest, AShorterHistoryCutsTheOldestRowsAtOnce)
{
    for (int row = 0; row < 40; ++row)
        emulator().feed("row\r\n");
    ASSERT_GT(emulator().scrollbackLength(), 3U);
    queue.run();
    const int before = view.rowChanges;
    home.store.load("{terminal: {historyLines: 3}}");
    panel().applyPreferences();
    EXPECT_EQ(emulator().scrollbackLength(), 3U);
    queue.run();
    EXPECT_GT(view.rowChanges, before);
}

TEST_F(TerminalPanelTest, TheBellIsToldOfEveryTab)
{
    panel().newTab();
    panel().selectTab(0);
    emulator().feed("\a");
    EXPECT_EQ(delegate.bells, 1);
}

TEST_F(TerminalPanelTest, BellsInQuickSuccessionAreOne)
{
    emulator().feed("\a");
    EXPECT_EQ(delegate.bells, 1);
    emulator().feed(std::string(1000, '\a'));
    queue.advance(0.09);
    emulator().feed("\a");
    EXPECT_EQ(delegate.bells, 1);
    queue.advance(0.02);
    emulator().feed("\a\a");
    EXPECT_EQ(delegate.bells, 2);
}

TEST_F(TerminalPanelTest, AReplyGoesToTheShell)
{
    useShell("stty raw -echo; printf '\\033[6n'; exec cat >keys");
    shownPanel();
    EXPECT_TRUE(waitForFile("keys", "\x1B[1;1R"));
}

TEST_F(TerminalPanelTest, AReplyWithoutAShellIsLost)
{
    emulator().feed("\x1B[6n");
    EXPECT_EQ(text(), "");
}

TEST_F(TerminalPanelTest, AProgramThatNeverReadsItsRepliesGetsNoMoreOfThem)
{
    // It reads what it was sent only once somebody writes to the pipe.
    useShell("stty raw -echo; mkfifo go; echo ready; read line <go; exec cat >keys");
    shownPanel();
    ASSERT_TRUE(waitForText("ready"));
    constexpr std::size_t questions = 100'000;
    for (std::size_t question = 0; question < questions; ++question)
        emulator().feed("\x1B[6n");
    std::ofstream(home.home / "go") << "go\n";
    ASSERT_TRUE(waitForFile("keys", "\x1B[2;6R"));
    panel().sendInput("end");
    ASSERT_TRUE(waitForFile("keys", "end"));
    EXPECT_LT(fileText("keys").size(), 200'000U);
}

TEST_F(TerminalPanelTest, AReplyBehindALongPasteIsNotLost)
{
    useShell("stty raw -echo; mkfifo go; echo ready; read line <go; exec cat >keys");
    shownPanel();
    ASSERT_TRUE(waitForText("ready"));
    panel().sendInput(std::string(300'000, 'p'));
    emulator().feed("\x1B[6n");
    std::ofstream(home.home / "go") << "go\n";
    EXPECT_TRUE(waitForFile("keys", "p\x1B[2;6R"));
}

// Starting.

TEST_F(TerminalPanelTest, AShellStartsAsALoginShellAtHomeAndKnowsItsTerminal)
{
    services.environment.set("SHELL", "/bin/false");
    services.environment.set("OWN", "kept");
    services.terminfoFolder = "/some/terminfo";
    useShell("echo \"$# $1 $2\" >said; pwd >>said; "
             "echo \"$TERM $PWD $SHELL $COLORTERM $LANG $OWN $TERMINFO\" >>said; stty size >>said; "
             "echo done >>said");
    view.size = TerminalSize{100, 30};
    shownPanel();
    ASSERT_TRUE(waitForFile("said", "done"));
    const std::string folder = home.home.path().string();
    const std::string shell = folder + "/shell";
    const std::string language =
        fileText("said").find(" en_US.UTF-8 ") == std::string::npos ? " C.UTF-8 " : " en_US.UTF-8 ";
    EXPECT_EQ(fileText("said"), "2 -l -i\n" + folder + "\nxterm-256color " + folder + " " + shell +
                                    " truecolor" + language +
                                    "kept /some/terminfo\n30 100\ndone\n");
}

TEST_F(TerminalPanelTest, StartingAStartedSessionDoesNothing)
{
    useShell(std::string("echo start >>starts; ") + waits);
    shownPanel().startActiveSession();
    panel().startActiveSession();
    ASSERT_TRUE(waitForFile("starts", "start"));
    EXPECT_EQ(fileText("starts"), "start\n");
}

TEST_F(TerminalPanelTest, APreferredFolderIsWhereTheShellStarts)
{
    std::filesystem::create_directory(home.home / "project");
    useShell("pwd; read line");
    panel().restoreTabs({u""}, {home.home / "project"});
    panel().startActiveSession();
    EXPECT_TRUE(waitForText(home.home.path().filename().string() + "/project"));
}

TEST_F(TerminalPanelTest, APreferredFolderThatIsGoneLeavesTheHomeFolder)
{
    useShell("pwd >where; echo done >>where");
    panel().restoreTabs({u""}, {home.home / "gone"});
    panel().startActiveSession();
    ASSERT_TRUE(waitForFile("where", "done"));
    EXPECT_EQ(fileText("where"), home.home.path().string() + "\ndone\n");
}

TEST_F(TerminalPanelTest, AShellThatCannotBeStartedIsToldOnTheScreenAndNotTriedAgain)
{
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the sanitizer needs descriptors of its own";
#endif
    services.loginShell = "/bin/sh";
    panel();
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit none{0, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
    // What a program left behind does not garble the message.
    emulator().feed("\x1B(0\x1B[12;");
    panel().startActiveSession();
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_EQ(text(), "Unable to start shell /bin/sh: Too many open files");
    panel().sendInput("\r");
    panel().startActiveSession();
    queue.run();
    EXPECT_EQ(text(), "Unable to start shell /bin/sh: Too many open files");
}

TEST_F(TerminalPanelTest, AShellThatCannotBeExecutedEndsAtOnceAndReturnTriesAgain)
{
    const auto path = home.home.write("shell", "#!/nowhere/to/be/found\n");
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    services.loginShell = path.string();
    shownPanel();
    EXPECT_TRUE(waitForText(exitMessage));
    useShell("echo now it runs; read line");
    panel().sendInput("\r");
    EXPECT_TRUE(waitForText("now it runs"));
}

// The flow of output.

TEST_F(TerminalPanelTest, ManyUpdatesInOneTurnAreOneRedraw)
{
    panel();
    queue.run();
    const int before = view.rowChanges;
    for (int n = 0; n < 10; ++n)
        emulator().feed("x");
    EXPECT_EQ(view.rowChanges, before);
    queue.run();
    EXPECT_EQ(view.rowChanges, before + 1);
    emulator().feed("y");
    queue.run();
    EXPECT_EQ(view.rowChanges, before + 2);
}

TEST_F(TerminalPanelTest, AFloodOfOutputIsFedInPiecesAndLosesNothing)
{
    useShell("stty raw -echo; seq 1 200000; printf 'the end\\r\\n'; read line");
    home.store.load("{terminal: {historyLines: 1000000}}");
    shownPanel();
    ASSERT_TRUE(runUntil([&] {
        return emulator().scrollbackLength() >= 199'900 &&
               textOf(emulator()).find("the end") != std::string::npos;
    }));
    // Raw line feeds do not return, so the numbers stand like stairs; each row has one.
    std::size_t digits = 0;
    for (std::int64_t row = 0; row < emulator().historyLength() + emulator().rows(); ++row)
        for (const char32_t c : emulator().row(row).characters())
            digits += c >= U'0' && c <= U'9' ? 1 : 0;
    EXPECT_EQ(digits, 9U + 90 * 2 + 900 * 3 + 9000 * 4 + 90'000 * 5 + 100'001 * 6);
}

TEST_F(TerminalPanelTest, OutputOfTheActiveTabClearsTheSelection)
{
    panel();
    queue.run();
    const int before = view.clearedSelections;
    emulator().feed("x");
    EXPECT_EQ(view.clearedSelections, before + 1);
}

TEST_F(TerminalPanelTest, OutputOfAHiddenTabIsReadAndDrawsNothing)
{
    TerminalEmulator& first = emulator();
    panel().newTab();
    queue.run();
    const int selections = view.clearedSelections;
    const int rows = view.rowChanges;
    first.feed("hidden");
    queue.run();
    EXPECT_EQ(textOf(first), "hidden");
    EXPECT_EQ(view.clearedSelections, selections);
    EXPECT_EQ(view.rowChanges, rows);
}

TEST_F(TerminalPanelTest, AViewThatHasGoneIsNotDrawn)
{
    panel();
    emulator().feed("x");
    controller->setView(nullptr);
    const int rows = view.rowChanges;
    queue.run();
    EXPECT_EQ(view.rowChanges, rows);
}

// Following.

TEST_F(TerminalPanelTest, TypingBringsTheEndBackIntoSightAndOutputDoesNot)
{
    useShell(waits);
    shownPanel();
    view.following = false;
    emulator().feed("output\r\n");
    queue.run();
    EXPECT_FALSE(view.following);
    panel().sendInput("x");
    EXPECT_TRUE(view.following);
}

TEST_F(TerminalPanelTest, ActivatingATabBringsItsEndIntoSight)
{
    panel().newTab();
    view.following = false;
    panel().selectTab(0);
    EXPECT_TRUE(view.following);
}

// End and restart.

TEST_F(TerminalPanelTest, AfterTheEndReturnStartsAnotherShellOnTheSameScreen)
{
    useShell("echo run >>runs; printf 'shell %s\\n' $(wc -l <runs); read line");
    shownPanel();
    ASSERT_TRUE(waitForText("shell 1"));
    panel().sendInput("\r");
    ASSERT_TRUE(waitForText(exitMessage));
    panel().sendInput("letters");
    panel().sendInput("\n");
    queue.run();
    EXPECT_EQ(fileText("runs"), "run\n");
    panel().sendInput("some\rtext");
    ASSERT_TRUE(waitForText("shell 2"));
    const std::string all = text();
    EXPECT_LT(all.find("shell 1"), all.find(exitMessage));
    EXPECT_LT(all.find(exitMessage), all.find("shell 2"));
    // What asked for the restart is no input of the new shell.
    EXPECT_EQ(all.find("letters"), std::string::npos);
    EXPECT_EQ(all.find("some"), std::string::npos);
}

TEST_F(TerminalPanelTest, TheLastWordsStandAboveTheMessage)
{
    useShell("seq 1 3000; echo last words");
    home.store.load("{terminal: {historyLines: 100000}}");
    shownPanel();
    ASSERT_TRUE(waitForText(exitMessage));
    const std::string all = text();
    EXPECT_NE(all.find("2999\n3000\nlast words\n\n" + std::string(exitMessage)), std::string::npos)
        << all.substr(all.size() > 200 ? all.size() - 200 : 0);
}

TEST_F(TerminalPanelTest, TheMessageStandsOnALineOfItsOwn)
{
    useShell("printf unfinished");
    shownPanel();
    ASSERT_TRUE(waitForText(exitMessage));
    EXPECT_EQ(text(), "unfinished\n" + std::string(exitMessage));
}

struct Unfinished {
    const char* name;
    const char* output;
};
class UnfinishedTest : public TerminalPanelTest, public testing::WithParamInterface<Unfinished> {};
INSTANTIATE_TEST_SUITE_P(TerminalPanel, UnfinishedTest,
                         testing::Values(Unfinished{"DrawingCharset", "\\033(0"},
                                         Unfinished{"ShiftedCharset", "\\033)0\\016"},
                                         Unfinished{"Escape", "\\033"},
                                         Unfinished{"ControlSequence", "\\033[31;"},
                                         Unfinished{"Title", "\\033]0;title"},
                                         Unfinished{"String", "\\033Pstring"},
                                         Unfinished{"Character", "\\303"}),
                         [](const auto& made) { return made.param.name; });

TEST_P(UnfinishedTest, TheMessageShowsWhole)
{
    useShell(std::string("printf '") + GetParam().output + "'");
    shownPanel();
    EXPECT_TRUE(waitForText(exitMessage)) << text();
}

TEST_F(TerminalPanelTest, ModesAndScreenSurviveTheEnd)
{
    useShell("printf '\\033[?1h\\033[?2004h\\033[31mtext'");
    shownPanel();
    ASSERT_TRUE(waitForText(exitMessage));
    EXPECT_TRUE(emulator().applicationCursorKeys());
    EXPECT_TRUE(emulator().bracketedPaste());
}

// Size.

TEST_F(TerminalPanelTest, EveryTabTakesTheSizeAndTheShellsHearOfIt)
{
    useShell("trap 'stty size >>sizes' WINCH; echo ready >>sizes; while :; do read line; done");
    TerminalEmulator& first = emulator();
    panel().startActiveSession();
    ASSERT_TRUE(waitForFile("sizes", "ready"));
    panel().newTab();
    ASSERT_TRUE(waitForFile("sizes", "ready\nready"));
    view.size = TerminalSize{120, 33};
    const int rows = view.rowChanges;
    panel().syncGridSize();
    EXPECT_EQ(first.columns(), 120);
    EXPECT_EQ(first.rows(), 33);
    EXPECT_EQ(emulator().columns(), 120);
    EXPECT_EQ(view.rowChanges, rows + 1);
    panel().sendInput("\r");
    panel().selectTab(0);
    panel().sendInput("\r");
    EXPECT_TRUE(waitForFile("sizes", "33 120\n33 120\n"));
}

TEST_F(TerminalPanelTest, WithoutRoomNothingChangesItsSize)
{
    view.size = TerminalSize{100, 10};
    panel();
    view.size.reset();
    panel().syncGridSize();
    EXPECT_EQ(emulator().columns(), 100);
}

TEST_F(TerminalPanelTest, AnEqualSizeIsNoUpdate)
{
    view.size = TerminalSize{100, 10};
    panel();
    queue.run();
    const int selections = view.clearedSelections;
    panel().syncGridSize();
    EXPECT_EQ(view.clearedSelections, selections);
}

// Tabs.

TEST_F(TerminalPanelTest, ANewTabIsLastActiveStartedFocusedAndTold)
{
    useShell(std::string("echo started; ") + waits);
    panel();
    const int focuses = view.focuses;
    const int tabs = view.tabChanges;
    panel().newTab();
    EXPECT_EQ(panel().tabCount(), 2U);
    EXPECT_EQ(panel().activeSessionIndex(), 1U);
    EXPECT_EQ(view.shown, panel().activeEmulator());
    EXPECT_EQ(view.focuses, focuses + 1);
    EXPECT_EQ(view.tabChanges, tabs + 1);
    EXPECT_EQ(delegate.tabChanges, 1);
    EXPECT_TRUE(waitForText("started"));
}

TEST_F(TerminalPanelTest, SelectingATabShowsAndStartsIt)
{
    useShell(std::string("echo started; ") + waits);
    panel().restoreTabs({u"", u""}, {});
    TerminalEmulator* const first = panel().activeEmulator();
    const int tabs = view.tabChanges;
    panel().selectTab(1);
    EXPECT_NE(view.shown, first);
    EXPECT_EQ(view.shown, panel().activeEmulator());
    EXPECT_EQ(view.tabChanges, tabs + 1);
    EXPECT_EQ(delegate.tabChanges, 0);
    ASSERT_TRUE(waitForText("started"));
    EXPECT_EQ(textOf(*first), "");
}

TEST_F(TerminalPanelTest, SelectingTheActiveTabOrNoneChangesNothing)
{
    panel().newTab();
    const int shows = view.shows;
    const int tabs = view.tabChanges;
    panel().selectTab(1);
    panel().selectTab(2);
    panel().selectTab(static_cast<std::size_t>(-1));
    EXPECT_EQ(view.shows, shows);
    EXPECT_EQ(view.tabChanges, tabs);
    EXPECT_EQ(panel().activeSessionIndex(), 1U);
}

TEST_F(TerminalPanelTest, WithoutAWindowASelectedTabDoesNotStartNorTakeTheFocus)
{
    view.inWindow = false;
    useShell("echo start >>starts; read line");
    panel().restoreTabs({u"", u""}, {});
    panel().selectTab(1);
    EXPECT_EQ(view.focuses, 0);
    view.inWindow = true;
    panel().startActiveSession();
    ASSERT_TRUE(waitForFile("starts", "start"));
    EXPECT_EQ(fileText("starts"), "start\n");
}

TEST_F(TerminalPanelTest, ThePreviousTabGoesRound)
{
    panel().selectPreviousTab();
    EXPECT_EQ(panel().activeSessionIndex(), 0U);
    panel().restoreTabs({u"", u"", u""}, {});
    panel().selectPreviousTab();
    EXPECT_EQ(panel().activeSessionIndex(), 2U);
    panel().selectPreviousTab();
    EXPECT_EQ(panel().activeSessionIndex(), 1U);
}

TEST_F(TerminalPanelTest, TheLastTabCannotBeClosed)
{
    panel().requestCloseTab(0);
    panel().closeTab(0);
    EXPECT_EQ(panel().tabCount(), 1U);
    EXPECT_EQ(delegate.tabChanges, 0);
}

TEST_F(TerminalPanelTest, ATabOutOfRangeCannotBeClosed)
{
    panel().newTab();
    panel().requestCloseTab(2);
    panel().closeTab(2);
    EXPECT_EQ(panel().tabCount(), 2U);
}

struct Closing {
    const char* name;
    std::size_t active;
    std::size_t closed;
    std::size_t afterwards;
    const char16_t* shownName;
};
class ClosingTest : public TerminalPanelTest, public testing::WithParamInterface<Closing> {};
INSTANTIATE_TEST_SUITE_P(TerminalPanel, ClosingTest,
                         testing::Values(Closing{"BeforeTheActiveOne", 1, 0, 0, u"b"},
                                         Closing{"TheActiveOneAtTheEnd", 2, 2, 1, u"b"},
                                         Closing{"TheActiveOneInTheMiddle", 1, 1, 1, u"c"},
                                         Closing{"TheFirstActive", 0, 0, 0, u"b"},
                                         Closing{"BehindTheActiveOne", 0, 2, 0, u"a"}),
                         [](const auto& made) { return made.param.name; });

TEST_P(ClosingTest, ChoosesTheActiveTab)
{
    view.inWindow = false;
    panel().restoreTabs({u"a", u"b", u"c"}, {});
    panel().selectTab(GetParam().active);
    const int tabs = view.tabChanges;
    panel().requestCloseTab(GetParam().closed);
    EXPECT_EQ(panel().tabCount(), 2U);
    EXPECT_EQ(panel().activeSessionIndex(), GetParam().afterwards);
    EXPECT_EQ(panel().tabTitle(GetParam().afterwards), GetParam().shownName);
    EXPECT_EQ(view.shown, panel().activeEmulator());
    EXPECT_EQ(view.tabChanges, tabs + 1);
    EXPECT_EQ(delegate.tabChanges, 1);
    EXPECT_TRUE(delegate.questions.empty());
}

TEST_F(TerminalPanelTest, AClosedTabsShellIsHungUp)
{
    useShell("trap 'echo hung up >>end; exit' HUP; echo ready; while :; do read line; done");
    panel().newTab();
    ASSERT_TRUE(waitForText("ready"));
    panel().closeTab(1);
    EXPECT_TRUE(waitForFile("end", "hung up"));
    EXPECT_EQ(text(), "");
}

TEST_F(TerminalPanelTest, ATabWithARunningCommandIsClosedOnlyAfterAQuestion)
{
    useRealShell();
    panel().newTab();
    ASSERT_TRUE(waitForText("prompt>"));
    // The terminal is the command's own before it can say anything.
    panel().sendInput("sh -c 'echo run''ning; read x'\r");
    ASSERT_TRUE(waitForText("running"));
    panel().requestCloseTab(1);
    ASSERT_EQ(delegate.questions.size(), 1U);
    EXPECT_EQ(delegate.questions.front().message, u"Close Terminal 2?");
    EXPECT_EQ(delegate.questions.front().information,
              u"This terminal is running a command; closing will terminate it.");
    EXPECT_EQ(delegate.questions.front().buttons,
              (std::vector<std::u16string>{u"Close Terminal", u"Cancel"}));
    EXPECT_EQ(panel().tabCount(), 2U);
    delegate.answer = true;
    panel().requestCloseTab(1);
    EXPECT_EQ(panel().tabCount(), 1U);
}

// Names.

TEST_F(TerminalPanelTest, ANameIsTrimmedAndTold)
{
    delegate.textAnswer = u" \t\nserver log\r\n ";
    panel().renameTab(0);
    EXPECT_EQ(delegate.questions.front().message, u"Terminal Tab Name");
    EXPECT_EQ(delegate.questions.front().buttons,
              (std::vector<std::u16string>{u"Set Name", u"Cancel"}));
    EXPECT_EQ(delegate.offeredText, u"");
    EXPECT_EQ(panel().tabNames(), Names{u"server log"});
    EXPECT_EQ(panel().tabTitle(0), u"server log");
    EXPECT_EQ(delegate.tabChanges, 1);
    delegate.textAnswer = u"x";
    panel().renameTab(0);
    EXPECT_EQ(delegate.offeredText, u"server log");
}

TEST_F(TerminalPanelTest, BlanksAreNoNameAndBringBackTheNumber)
{
    panel().restoreTabs({u"name"}, {});
    delegate.textAnswer = u" \u3000\n";
    panel().renameTab(0);
    EXPECT_EQ(panel().tabNames(), Names{u""});
    EXPECT_EQ(panel().tabTitle(0), u"1");
}

TEST_F(TerminalPanelTest, ACancelledNameChangesNothing)
{
    panel().restoreTabs({u"name"}, {});
    panel().renameTab(0);
    panel().renameTab(1);
    EXPECT_EQ(panel().tabNames(), Names{u"name"});
    EXPECT_EQ(delegate.tabChanges, 0);
    EXPECT_EQ(delegate.questions.size(), 1U);
}

TEST_F(TerminalPanelTest, TheBarIsShownForTwoTabsOrAName)
{
    EXPECT_FALSE(panel().showsTabBar());
    panel().restoreTabs({u"name"}, {});
    EXPECT_TRUE(panel().showsTabBar());
    panel().restoreTabs({u"", u""}, {});
    EXPECT_TRUE(panel().showsTabBar());
    panel().restoreTabs({}, {});
    EXPECT_FALSE(panel().showsTabBar());
}

// Working directories.

TEST_F(TerminalPanelTest, ATabThatNeverStartedIsWhereItWouldStart)
{
    panel().restoreTabs({u"", u"", u""}, {"/usr", home.home.path()});
    EXPECT_EQ(panel().tabWorkingDirectories(), (Paths{"/usr", "", ""}));
}

TEST_F(TerminalPanelTest, AStartedTabIsWhereItsShellIs)
{
    useShell("cd /usr/share; echo there; read line; cd; echo home; read line");
    services.environment.set("HOME", home.home.path().string());
    shownPanel();
    ASSERT_TRUE(waitForText("there"));
    EXPECT_EQ(panel().tabWorkingDirectories(), Paths{"/usr/share"});
    panel().sendInput("\r");
    ASSERT_TRUE(waitForText("home"));
    EXPECT_EQ(panel().tabWorkingDirectories(), Paths{""});
    panel().sendInput("\r");
    ASSERT_TRUE(waitForText(exitMessage));
    EXPECT_EQ(panel().tabWorkingDirectories(), Paths{""});
}

TEST_F(TerminalPanelTest, TheHomeFolderIsKnownBehindASymbolicLink)
{
    const auto link = home.home / "link";
    std::filesystem::create_directory(home.home / "place");
    std::filesystem::create_directory_symlink(home.home / "place", link);
    services.homeFolder = link;
    useShell("echo ready; read line");
    shownPanel();
    ASSERT_TRUE(waitForText("ready"));
    EXPECT_EQ(panel().tabWorkingDirectories(), Paths{""});
}

// Restoring.

TEST_F(TerminalPanelTest, ARestoreBeforeTheFirstViewWaitsForIt)
{
    controller.emplace(services);
    controller->restoreTabs({u"old"}, {});
    controller->restoreTabs({u"one", u"two"}, {"", "/usr"});
    EXPECT_EQ(controller->tabCount(), 0U);
    controller->setView(&view);
    EXPECT_EQ(controller->tabNames(), (Names{u"one", u"two"}));
    EXPECT_EQ(controller->tabWorkingDirectories(), (Paths{"", "/usr"}));
    EXPECT_EQ(controller->activeSessionIndex(), 0U);
}

TEST_F(TerminalPanelTest, RestoringTheSameNamesWithoutFoldersChangesNothing)
{
    panel().restoreTabs({u"a", u"b"}, {});
    panel().selectTab(1);
    TerminalEmulator* const shown = panel().activeEmulator();
    const int tabs = view.tabChanges;
    const int shows = view.shows;
    panel().restoreTabs({u"a", u"b"}, {});
    EXPECT_EQ(panel().activeEmulator(), shown);
    EXPECT_EQ(panel().activeSessionIndex(), 1U);
    EXPECT_EQ(view.tabChanges, tabs);
    EXPECT_EQ(view.shows, shows);
}

TEST_F(TerminalPanelTest, NoNamesAreOneTabWithoutOne)
{
    panel().restoreTabs({u"a", u"b"}, {});
    panel().restoreTabs({}, {"/usr"});
    EXPECT_EQ(panel().tabNames(), Names{u""});
    EXPECT_EQ(panel().tabWorkingDirectories(), Paths{"/usr"});
}

TEST_F(TerminalPanelTest, RestoringFewerTabsEndsTheShellsOfTheLastOnes)
{
    useShell("trap 'echo hung up >>end; exit' HUP; echo ready; while :; do read line; done");
    panel().newTab();
    ASSERT_TRUE(waitForText("ready"));
    const int focuses = view.focuses;
    panel().restoreTabs({u"only"}, {});
    EXPECT_EQ(panel().tabNames(), Names{u"only"});
    EXPECT_EQ(panel().activeSessionIndex(), 0U);
    EXPECT_EQ(view.shown, panel().activeEmulator());
    EXPECT_EQ(view.focuses, focuses);
    EXPECT_TRUE(waitForFile("end", "hung up"));
}

TEST_F(TerminalPanelTest, RestoringKeepsTheShellsThatRun)
{
    useShell("echo start >>starts; echo ready; while :; do read line; done");
    shownPanel();
    ASSERT_TRUE(waitForText("ready"));
    panel().restoreTabs({u"a", u"b"}, {});
    queue.run();
    EXPECT_NE(text().find("ready"), std::string::npos);
    EXPECT_EQ(fileText("starts"), "start\n");
}

TEST_F(TerminalPanelTest, MoreFoldersThanTabsAreIgnored)
{
    panel().restoreTabs({u"a"}, {"/usr", "/var", "/opt"});
    EXPECT_EQ(panel().tabWorkingDirectories(), Paths{"/usr"});
}

TEST_F(TerminalPanelTest, AShellAtThePromptInTheHomeFolderMovesToTheSavedOne)
{
    useRealShell();
    services.environment.set("HOME", home.home.path().string());
    panel().restoreTabs({u"name"}, {});
    panel().startActiveSession();
    ASSERT_TRUE(waitForText("prompt>"));
    panel().sendInput("echo mark\r");
    ASSERT_TRUE(waitForText("mark\nprompt>"));
    panel().restoreTabs({u"name"}, {"/usr/share"});
    EXPECT_EQ(panel().tabNames(), Names{u"name"});
    EXPECT_EQ(view.shown, panel().activeEmulator());
    EXPECT_EQ(text().find("mark"), std::string::npos);
    ASSERT_TRUE(waitForText("prompt>"));
    EXPECT_EQ(panel().tabWorkingDirectories(), Paths{"/usr/share"});
}

TEST_F(TerminalPanelTest, AShellInAnotherFolderIsLeftAlone)
{
    useRealShell();
    shownPanel();
    ASSERT_TRUE(waitForText("prompt>"));
    panel().sendInput("cd /var; echo mo''ved\r");
    ASSERT_TRUE(waitForText("moved"));
    panel().restoreTabs({u""}, {"/usr/share"});
    EXPECT_NE(text().find("moved"), std::string::npos);
    EXPECT_EQ(panel().tabWorkingDirectories(), Paths{"/var"});
}

TEST_F(TerminalPanelTest, AShellWithARunningCommandIsLeftAlone)
{
    useRealShell();
    shownPanel();
    ASSERT_TRUE(waitForText("prompt>"));
    panel().sendInput("sh -c 'echo run''ning; read x'\r");
    ASSERT_TRUE(waitForText("running"));
    panel().restoreTabs({u""}, {"/usr/share"});
    EXPECT_NE(text().find("running"), std::string::npos);
}

TEST_F(TerminalPanelTest, AnEmptySavedFolderLeavesAStartedShellAlone)
{
    useRealShell();
    shownPanel();
    ASSERT_TRUE(waitForText("prompt>"));
    panel().sendInput("echo ma''rk\r");
    ASSERT_TRUE(waitForText("mark"));
    panel().restoreTabs({u""}, {""});
    EXPECT_NE(text().find("mark"), std::string::npos);
}

// Preferences.

TEST_F(TerminalPanelTest, PreferencesReachTheViewAndItsSizeTheEmulators)
{
    panel();
    const int preferences = view.preferenceChanges;
    const int tabs = view.tabChanges;
    view.size = TerminalSize{50, 12};  // As with a larger font.
    panel().applyPreferences();
    EXPECT_EQ(view.preferenceChanges, preferences + 1);
    EXPECT_EQ(view.tabChanges, tabs + 1);
    EXPECT_EQ(emulator().columns(), 50);
}

// The end of the panel.

TEST_F(TerminalPanelTest, DestroyingThePanelEndsEveryShell)
{
    useShell("trap 'echo hung up >>end; exit' HUP; echo ready >>starts; "
             "while :; do read line; done");
    shownPanel().newTab();
    ASSERT_TRUE(waitForFile("starts", "ready\nready\n"));
    controller.reset();
    EXPECT_TRUE(waitForFile("end", "hung up\nhung up\n"));
}

TEST_F(TerminalPanelTest, LateOutputOfAPanelThatIsGoneIsDropped)
{
    useShell("seq 1 10000; echo done >said; exec cat");
    shownPanel();
    // All of it waits for a queue that nobody cranks.
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (fileText("said").empty() && std::chrono::steady_clock::now() < deadline)
        std::this_thread::yield();
    ASSERT_EQ(fileText("said"), "done\n");
    controller.reset();
    const int before = view.rowChanges;
    queue.run();
    EXPECT_EQ(view.rowChanges, before);
}

TEST_F(TerminalPanelTest, LateOutputOfAClosedTabIsDropped)
{
    useShell("seq 1 10000; echo done >said; exec cat");
    panel().newTab();
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (fileText("said").empty() && std::chrono::steady_clock::now() < deadline)
        std::this_thread::yield();
    panel().closeTab(1);
    queue.run();
    EXPECT_EQ(text(), "");
}

// Messages of the application.

TEST_F(TerminalPanelTest, WhatIsPrintedStandsOnTheActiveScreen)
{
    panel().print(u"one\ntwo\r\nthr\u00E9e\n\nfour");
    EXPECT_EQ(text(), "one\ntwo\nthr?e\n\nfour");
    EXPECT_EQ(emulator().cursorX(), 4);
}

TEST_F(TerminalPanelTest, PrintingWithoutASessionDoesNothing)
{
    controller.emplace(services);
    controller->print(u"lost");
    EXPECT_EQ(controller->tabCount(), 0U);
}

}  // namespace
}  // namespace tavrel
