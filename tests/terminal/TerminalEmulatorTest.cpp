#include "terminal/TerminalEmulator.h"

#include <gtest/gtest.h>

namespace tavrel {
namespace {

std::u32string firstRow(const TerminalEmulator& emulator, int end)
{
    return emulator.screenRow(0).characters(0, end);
}

TEST(TerminalEmulator, WorksWithoutCallbacks)
{
    TerminalEmulator emulator(20, 5);
    emulator.feed("\x07\x1B[6n\x1B[c");
    emulator.feedText(u"x");
    emulator.resize(10, 5);
    emulator.setScrollbackLimit(0);
    emulator.applyScrollbackLimit();
    EXPECT_EQ(firstRow(emulator, 1), U"x");
}

TEST(TerminalEmulator, TellsOfAnUpdateOnceForEachCallThatChangesSomething)
{
    TerminalEmulator emulator(20, 5);
    int updates = 0;
    emulator.onUpdate = [&] { ++updates; };
    emulator.feed("many\r\nlines\r\n\x1B[2J");
    EXPECT_EQ(updates, 1);
    emulator.feed("");
    EXPECT_EQ(updates, 2);
    emulator.feedText(u"text");
    EXPECT_EQ(updates, 3);
    emulator.resize(20, 5);
    EXPECT_EQ(updates, 3);
    emulator.resize(20, 6);
    EXPECT_EQ(updates, 4);
    emulator.applyScrollbackLimit();
    EXPECT_EQ(updates, 4);
    emulator.feed("\n\n\n\n\n\n\n\n");
    emulator.setScrollbackLimit(1);
    EXPECT_EQ(updates, 5);
    emulator.applyScrollbackLimit();
    EXPECT_EQ(updates, 6);
}

TEST(TerminalEmulator, RepliesWhileItReads)
{
    TerminalEmulator emulator(20, 5);
    std::vector<std::string> told;
    emulator.onResponse = [&](std::string_view reply) { told.emplace_back(reply); };
    emulator.onBell = [&] { told.emplace_back("bell"); };
    emulator.onUpdate = [&] { told.emplace_back("update"); };
    emulator.feed("ab\x1B[6n\x07\x1B[5n");
    EXPECT_EQ(told, (std::vector<std::string>{"\x1B[1;3R", "bell", "\x1B[0n", "update"}));
}

TEST(TerminalEmulator, ShowsAMessageWholeAfterWhateverWasLeftUnfinished)
{
    for (const char* unfinished :
         {"\x1B", "\x1B[3", "\x1B[?1;", "\x1B]0;title", "\x1B]0;title\x1B", "\x1BPdata",
          "\x1BPdata\x1B", "\x1B(", "\x1B(0", "\x1B)0\x0E", "\xE2\x82"}) {
        TerminalEmulator emulator(20, 5);
        emulator.feed(unfinished);
        emulator.prepareForMessage();
        emulator.feedText(u"[quit: q]");
        EXPECT_EQ(firstRow(emulator, 9), U"[quit: q]") << unfinished;
    }
}

TEST(TerminalEmulator, LeavesModesAndColorsToAMessage)
{
    TerminalEmulator emulator(20, 5);
    emulator.feed("\x1B[31m\x1B[?1h\x1B[4h");
    emulator.prepareForMessage();
    EXPECT_EQ(emulator.currentForeground(), TerminalColor::palette(1));
    EXPECT_TRUE(emulator.applicationCursorKeys());
    EXPECT_TRUE(emulator.insertMode());
}

TEST(TerminalEmulator, TakesTextBesideAHalfReadCharacter)
{
    TerminalEmulator emulator(20, 5);
    emulator.feed("\xE2\x82");
    emulator.feedText(u"a\U0001F600\xD83D"
                      u"b\xDE00");
    emulator.feed("\xAC");
    EXPECT_EQ(firstRow(emulator, 6), U"a\U0001F600\uFFFDb\uFFFD\u20AC");
}

TEST(TerminalEmulator, LimitsItsSize)
{
    TerminalEmulator emulator(-1, 1'000'000);
    EXPECT_EQ(emulator.columns(), 2);
    EXPECT_EQ(emulator.rows(), 65'535);
    emulator.resize(1 << 30, 0);
    EXPECT_EQ(emulator.columns(), 65'535);
    EXPECT_EQ(emulator.rows(), 2);
    emulator.feed(std::string(70'000, 'x') + "\x1B[99999C!\x1B[3S\x1B[31m\x1B[J");
    EXPECT_EQ(emulator.scrollbackRow(1).characters().size(), 65'535u);
    EXPECT_EQ(emulator.scrollbackRow(0).cell(65'534).character, U'x');
}

TEST(TerminalEmulator, KeepsSavedCursorsOverAReset)
{
    TerminalEmulator emulator(20, 5);
    emulator.feed("\x1B[3;4H\x1B"
                  "7\x1B[4;6H\x1B[?1048h\x1B"
                  "c");
    EXPECT_EQ(emulator.savedCursor(), (TerminalPosition{3, 2}));
    EXPECT_EQ(emulator.savedMainCursor(), (TerminalPosition{5, 3}));
}

TEST(TerminalEmulator, KeepsCharsetsForTheirSides)
{
    using Charset = TerminalEmulator::Charset;
    TerminalEmulator emulator(20, 5);
    emulator.feed("\x1B)0\x0E\x1B*0\x1B+0");
    EXPECT_EQ(emulator.charsetG0(), Charset::ascii);
    EXPECT_EQ(emulator.charsetG1(), Charset::decSpecial);
    EXPECT_TRUE(emulator.activeCharsetIsG1());
    emulator.feed("\x1B"
                  "c");
    EXPECT_EQ(emulator.charsetG1(), Charset::ascii);
    EXPECT_FALSE(emulator.activeCharsetIsG1());
}

}  // namespace
}  // namespace tavrel
