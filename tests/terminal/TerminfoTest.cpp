#include "terminal/Terminfo.h"
#include "../platform/FileTestSupport.h"
#include "platform/ChildProcess.h"
#include "platform/PosixFileSystem.h"
#include "terminal/TerminalEmulator.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tavrel {
namespace {

/// The description, written to a folder, and what the system's own tools make of it.
class TerminfoTest : public testing::Test {
protected:
    TerminfoTest() : terminfo(*writeTerminfo(fileSystem, folder.path())) {}

    std::string outputOf(const std::string& program, const std::vector<std::string>& arguments)
    {
        Environment environment;
        environment.set("TERM", "xterm-256color");
        environment.set("TERMINFO", terminfo.string());
        const auto result = run({"/usr/bin/" + program, arguments, environment});
        return result ? result->output : "cannot run";
    }
    /// What a program sends for a capability.
    std::string tput(std::vector<std::string> arguments) { return outputOf("tput", arguments); }
    void feed(std::vector<std::string> arguments) { emulator.feed(tput(std::move(arguments))); }

    std::string row(int y) const
    {
        std::string text;
        for (const char32_t c : emulator.screenRow(y).characters())
            text += static_cast<char>(c);
        return text;
    }

    test::TestFolder folder;
    PosixFileSystem fileSystem;
    std::filesystem::path terminfo;
    TerminalEmulator emulator{10, 5};
};

TEST_F(TerminfoTest, NobodyElseMayReadIt)
{
    EXPECT_EQ(terminfo, folder / "terminfo");
    EXPECT_EQ(test::modeOf(terminfo), 0700U);
    EXPECT_EQ(test::modeOf(terminfo / "x"), 0700U);
    EXPECT_EQ(test::modeOf(terminfo / "x/xterm-256color"), 0600U);
}

TEST_F(TerminfoTest, WritingItTwiceFails)
{
    const auto again = writeTerminfo(fileSystem, folder.path());
    ASSERT_FALSE(again);
    EXPECT_EQ(again.error().code, EEXIST);
    EXPECT_FALSE(writeTerminfo(fileSystem, folder / "missing"));
}

TEST_F(TerminfoTest, ToolsFindItAndNotTheSystemsOwn)
{
    EXPECT_NE(outputOf("infocmp", {"-x", "-1"}).find("Tavrel Code terminal"), std::string::npos);
    EXPECT_EQ(tput({"colors"}), "256\n");
}

class NotPromisedTest : public TerminfoTest, public testing::WithParamInterface<const char*> {};
INSTANTIATE_TEST_SUITE_P(Terminfo, NotPromisedTest,
                         testing::Values("rep", "cbt", "kcbt", "tsl", "fsl", "dsl", "blink",
                                         "invis", "flash", "kf1", "kf12", "kich1", "kmous", "initc",
                                         "oc", "Ms", "Ss", "Cs", "smxx", "kUP", "kHOM", "smglr"));

TEST_P(NotPromisedTest, WhatTheEmulatorCannotDoIsNotThere)
{
    const std::string all = outputOf("infocmp", {"-x", "-1"});
    ASSERT_NE(all.find("\tcup="), std::string::npos);
    EXPECT_EQ(all.find(std::string("\t") + GetParam() + "="), std::string::npos);
}

struct Key {
    const char* capability;
    const char* bytes;
};
class KeyTest : public TerminfoTest, public testing::WithParamInterface<Key> {};
INSTANTIATE_TEST_SUITE_P(Terminfo, KeyTest,
                         testing::Values(Key{"khome", "\x1B[H"}, Key{"kend", "\x1B[F"},
                                         Key{"kpp", "\x1B[5~"}, Key{"knp", "\x1B[6~"},
                                         Key{"kdch1", "\x1B[3~"}, Key{"kbs", "\x7F"},
                                         Key{"kcuu1", "\x1BOA"}, Key{"kcud1", "\x1BOB"},
                                         Key{"kcuf1", "\x1BOC"}, Key{"kcub1", "\x1BOD"},
                                         Key{"PS", "\x1B[200~"}, Key{"PE", "\x1B[201~"}));

TEST_P(KeyTest, SendsWhatTheGridSends)
{
    EXPECT_EQ(tput({GetParam().capability}), GetParam().bytes);
}

TEST_F(TerminfoTest, TheCursorGoesWhereItIsSent)
{
    feed({"cup", "3", "4"});
    EXPECT_EQ(emulator.cursorY(), 3);
    EXPECT_EQ(emulator.cursorX(), 4);
    feed({"hpa", "7"});
    feed({"vpa", "1"});
    EXPECT_EQ(emulator.cursorY(), 1);
    EXPECT_EQ(emulator.cursorX(), 7);
    feed({"cub", "2"});
    feed({"cud", "3"});
    EXPECT_EQ(emulator.cursorY(), 4);
    EXPECT_EQ(emulator.cursorX(), 5);
    feed({"sc"});
    feed({"home"});
    feed({"rc"});
    EXPECT_EQ(emulator.cursorX(), 5);
    feed({"cuu", "2"});
    feed({"cuf", "1"});
    feed({"cuu1"});
    feed({"cub1"});
    feed({"cuf1"});
    EXPECT_EQ(emulator.cursorY(), 1);
    EXPECT_EQ(emulator.cursorX(), 6);
}

TEST_F(TerminfoTest, CellsAreErasedInsertedAndDeleted)
{
    emulator.feed("abcdefghij\x1B[1;3H");
    feed({"ech", "2"});
    EXPECT_EQ(row(0), "ab  efghij");
    feed({"ich", "1"});
    EXPECT_EQ(row(0), "ab   efghi");
    feed({"dch", "3"});
    EXPECT_EQ(row(0), "abefghi   ");
    feed({"dch1"});
    EXPECT_EQ(row(0), "abfghi    ");
    feed({"smir"});
    emulator.feed("X");
    feed({"rmir"});
    emulator.feed("Y");
    EXPECT_EQ(row(0), "abXYghi   ");
    feed({"el1"});
    EXPECT_EQ(row(0), "     hi   ");
    feed({"el"});
    EXPECT_EQ(row(0), "          ");
}

TEST_F(TerminfoTest, RowsAreInsertedDeletedAndScrolledWithinTheirRegion)
{
    emulator.feed("1\r\n2\r\n3\r\n4\r\n5");
    feed({"csr", "1", "3"});
    feed({"indn", "1"});
    EXPECT_EQ(row(0)[0], '1');
    EXPECT_EQ(row(1)[0], '3');
    EXPECT_EQ(row(3)[0], ' ');
    EXPECT_EQ(row(4)[0], '5');
    feed({"rin", "1"});
    EXPECT_EQ(row(1)[0], ' ');
    EXPECT_EQ(row(2)[0], '3');
    feed({"cup", "1", "0"});
    feed({"dl", "1"});
    EXPECT_EQ(row(1)[0], '3');
    feed({"il", "2"});
    EXPECT_EQ(row(3)[0], '3');
    feed({"cup", "3", "0"});
    feed({"ind"});
    EXPECT_EQ(row(2)[0], '3');
    feed({"cup", "1", "0"});
    feed({"ri"});
    EXPECT_EQ(row(3)[0], '3');
    feed({"clear"});
    EXPECT_EQ(row(3)[0], ' ');
    EXPECT_EQ(emulator.cursorY(), 0);
}

TEST_F(TerminfoTest, ColoursAndStylesAreSet)
{
    feed({"setaf", "3"});
    EXPECT_EQ(emulator.currentForeground(), TerminalColor::palette(3));
    feed({"setaf", "12"});
    EXPECT_EQ(emulator.currentForeground(), TerminalColor::palette(12));
    feed({"setab", "200"});
    EXPECT_EQ(emulator.currentBackground(), TerminalColor::palette(200));
    feed({"setrgbf", "1", "2", "3"});
    EXPECT_EQ(emulator.currentForeground(), TerminalColor::rgb(1, 2, 3));
    feed({"setrgbb", "4", "5", "6"});
    EXPECT_EQ(emulator.currentBackground(), TerminalColor::rgb(4, 5, 6));
    feed({"op"});
    EXPECT_EQ(emulator.currentForeground(), TerminalColor::defaultForeground());
    EXPECT_EQ(emulator.currentBackground(), TerminalColor::defaultBackground());
    for (const char* style : {"bold", "dim", "sitm", "smul", "rev"})
        feed({style});
    EXPECT_EQ(emulator.currentFlags(),
              TerminalCellFlags::bold | TerminalCellFlags::dim | TerminalCellFlags::italic |
                  TerminalCellFlags::underline | TerminalCellFlags::inverse);
    for (const char* style : {"ritm", "rmul", "rmso"})
        feed({style});
    EXPECT_EQ(emulator.currentFlags(), TerminalCellFlags::bold | TerminalCellFlags::dim);
    feed({"sgr0"});
    EXPECT_TRUE(emulator.currentFlags().isEmpty());
    // Standout, underline, reverse, blink, dim, bold, invisible, protected, line drawing.
    feed({"sgr", "0", "1", "1", "0", "0", "1", "0", "0", "1"});
    EXPECT_EQ(emulator.currentFlags(),
              TerminalCellFlags::bold | TerminalCellFlags::underline | TerminalCellFlags::inverse);
    EXPECT_EQ(emulator.charsetG0(), TerminalEmulator::Charset::decSpecial);
}

TEST_F(TerminfoTest, TheLineDrawingCharactersAreTheEmulatorsOwn)
{
    const std::string pairs = tput({"acsc"});
    std::string named;
    for (std::size_t at = 0; at + 1 < pairs.size(); at += 2) {
        EXPECT_EQ(pairs[at], pairs[at + 1]);
        named += pairs[at];
    }
    std::string drawn;
    for (char c = '!'; c <= '~'; ++c) {
        TerminalEmulator line(10, 5);
        line.feed(tput({"smacs"}).append(1, c) + tput({"rmacs"}) + c);
        if (line.screenRow(0).cell(0).character != static_cast<char32_t>(c))
            drawn += c;
        EXPECT_EQ(line.screenRow(0).cell(1).character, static_cast<char32_t>(c));
    }
    EXPECT_EQ(named, drawn);
    EXPECT_EQ(drawn.size(), 24U);
}

TEST_F(TerminfoTest, ModesAreSwitched)
{
    feed({"smcup"});
    EXPECT_TRUE(emulator.usingAlternateScreen());
    feed({"rmcup"});
    EXPECT_FALSE(emulator.usingAlternateScreen());
    feed({"smkx"});
    EXPECT_TRUE(emulator.applicationCursorKeys());
    feed({"rmkx"});
    EXPECT_FALSE(emulator.applicationCursorKeys());
    feed({"civis"});
    EXPECT_FALSE(emulator.cursorVisible());
    feed({"cnorm"});
    EXPECT_TRUE(emulator.cursorVisible());
    feed({"rmam"});
    EXPECT_FALSE(emulator.autowrap());
    feed({"smam"});
    EXPECT_TRUE(emulator.autowrap());
    feed({"BE"});
    EXPECT_TRUE(emulator.bracketedPaste());
    feed({"BD"});
    EXPECT_FALSE(emulator.bracketedPaste());
}

TEST_F(TerminfoTest, TheHistoryIsEmptied)
{
    emulator.feed("1\n2\n3\n4\n5\n6\n7\n");
    ASSERT_GT(emulator.scrollbackLength(), 0U);
    feed({"E3"});
    EXPECT_EQ(emulator.scrollbackLength(), 0U);
}

TEST_F(TerminfoTest, ErasingTakesTheColourOfThePen)
{
    feed({"setab", "4"});
    feed({"clear"});
    EXPECT_EQ(emulator.screenRow(2).cell(2).background, TerminalColor::palette(4));
}

TEST_F(TerminfoTest, TabStopsAreSetAndCleared)
{
    feed({"tbc"});
    feed({"hpa", "5"});
    feed({"hts"});
    EXPECT_EQ(emulator.tabStops(), std::vector<int>{5});
    feed({"hpa", "0"});
    feed({"ht"});
    EXPECT_EQ(emulator.cursorX(), 5);
}

}  // namespace
}  // namespace tavrel
