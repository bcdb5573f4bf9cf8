#include "terminal/TerminalEmulator.h"

#include <gtest/gtest.h>

namespace tavrel {
namespace {

std::string lines(int first, int count)
{
    std::string text;
    for (int i = first; i < first + count; ++i)
        text += "line " + std::to_string(i) + "\r\n";
    return text;
}

std::u32string lineText(const TerminalRow& row)
{
    std::u32string text = row.characters();
    text.erase(text.find_last_not_of(U' ') + 1);
    return text;
}

std::u32string lineNumbered(std::int64_t number)
{
    const std::string text = "line " + std::to_string(number);
    return std::u32string(text.begin(), text.end());
}

TEST(TerminalHistory, KeepsTheNumberOfARowWhileTheOldestAreDropped)
{
    TerminalEmulator emulator(20, 5);
    emulator.setScrollbackLimit(100);
    for (int fed = 0; fed < 1'000; fed += 10) {
        emulator.feed(lines(fed, 10));
        const std::int64_t total = emulator.historyLength() + emulator.rows() - 1;
        for (std::int64_t index = 0; index < total; ++index)
            ASSERT_EQ(lineText(emulator.row(index)),
                      lineNumbered(static_cast<std::int64_t>(emulator.droppedRowCount()) + index));
    }
    EXPECT_EQ(emulator.droppedRowCount(), 1'000u - 4 - 100);
}

TEST(TerminalHistory, CountsWhatALimitAnErasureOrAResetDrops)
{
    TerminalEmulator emulator(20, 5);
    emulator.feed(lines(0, 104));
    EXPECT_EQ(emulator.scrollbackLength(), 100u);
    emulator.setScrollbackLimit(60);
    emulator.applyScrollbackLimit();
    EXPECT_EQ(emulator.droppedRowCount(), 40u);
    emulator.feed("\x1B[3J");
    EXPECT_EQ(emulator.droppedRowCount(), 100u);
    emulator.feed(lines(0, 10) + "\x1B" + "c");
    EXPECT_EQ(emulator.scrollbackLength(), 0u);
    EXPECT_EQ(emulator.droppedRowCount(), 110u);
    emulator.setScrollbackLimit(0);
    emulator.feed(lines(0, 10));
    EXPECT_EQ(emulator.scrollbackLength(), 0u);
    EXPECT_EQ(emulator.droppedRowCount(), 116u);
}

TEST(TerminalHistory, IsOutOfReachFromTheAlternateScreen)
{
    TerminalEmulator emulator(20, 5);
    emulator.feed(lines(0, 10) + "\x1B[?1049h" + "full");
    EXPECT_EQ(emulator.historyLength(), 0);
    EXPECT_EQ(emulator.scrollbackLength(), 6u);
    EXPECT_EQ(lineText(emulator.row(0)), U"full");
    emulator.feed("\x1B[?1049l");
    EXPECT_EQ(emulator.historyLength(), 6);
    EXPECT_EQ(lineText(emulator.row(0)), U"line 0");
    EXPECT_EQ(lineText(emulator.row(6)), U"line 6");
}

TEST(TerminalHistory, GivesDefaultRowsOutsideItself)
{
    TerminalEmulator emulator(20, 5);
    emulator.feed("\x1B[41m" + lines(0, 10));
    for (const std::int64_t index : {std::int64_t{-1}, std::int64_t{11}, std::int64_t{1} << 62}) {
        const TerminalRow row = emulator.row(index);
        EXPECT_EQ(row.columns(), 20);
        for (int x = -1; x <= 20; ++x)
            EXPECT_EQ(row.cell(x), TerminalCell());
    }
}

TEST(TerminalHistory, ScrollsFurtherThanAnyoneCountsAtTheCostOfTheHistory)
{
    TerminalEmulator emulator(20, 5);
    emulator.setScrollbackLimit(1'000);
    emulator.feed(lines(0, 10) + "\x1B[44m");
    for (int i = 0; i < 100; ++i)
        emulator.feed("\x1B[9223372036854775807S");
    EXPECT_EQ(emulator.scrollbackLength(), 1'000u);
    const TerminalCell blue{.background = TerminalColor::palette(4)};
    EXPECT_EQ(emulator.row(0).cell(0), blue);
    EXPECT_EQ(emulator.row(999).cell(19), blue);
    EXPECT_LT(emulator.scrollbackBytes(), 200'000u);
    for (const char* finals :
         {"T", "L", "M", "P", "@", "X", "A", "B", "C", "D", "E", "F", "G", "d"})
        emulator.feed("\x1B[9223372036854775807" + std::string(finals));
    EXPECT_EQ(emulator.scrollbackLength(), 1'000u);
}

TEST(TerminalHistory, HoldsBlanksWithoutEndInNextToNoRoom)
{
    constexpr std::size_t limit = 100'000'000;
    TerminalEmulator emulator(20, 5);
    emulator.setScrollbackLimit(limit);
    emulator.feed("first\r\n\x1B[44m\x1B[9223372036854775807S");
    EXPECT_EQ(emulator.scrollbackLength(), limit);
    EXPECT_LT(emulator.scrollbackBytes(), 20'000u);
    // What a window takes back and changes is changed in no other place.
    emulator.resize(20, 700);
    EXPECT_EQ(emulator.scrollbackLength(), limit - 695);
    emulator.feed("\x1B[m\x1B[2J\x1B[700;1Hlast");
    emulator.resize(20, 5);
    EXPECT_EQ(emulator.scrollbackLength(), limit);
    const TerminalCell blue{.background = TerminalColor::palette(4)};
    for (const std::size_t index : {std::size_t{0}, limit / 2, limit - 696})
        EXPECT_EQ(emulator.row(static_cast<std::int64_t>(index)).cell(19), blue) << index;
    for (const std::size_t index : {limit - 695, limit - 1, limit})
        EXPECT_EQ(emulator.row(static_cast<std::int64_t>(index)).cell(0), TerminalCell()) << index;
    // A cut reaches all of them, and widening brings nothing back.
    emulator.resize(10, 5);
    emulator.resize(20, 5);
    EXPECT_EQ(emulator.row(limit / 2).cell(9), blue);
    EXPECT_EQ(emulator.row(limit / 2).cell(10), TerminalCell());
    emulator.setScrollbackLimit(300);
    emulator.applyScrollbackLimit();
    EXPECT_EQ(emulator.scrollbackLength(), 300u);
    EXPECT_EQ(emulator.row(299).cell(0), TerminalCell());
}

TEST(TerminalHistory, PutsBackWhatAGrowingWindowTakes)
{
    // Rows of blanks share their bytes, and rows of nothing have none: taking rows out and putting
    // them back for ever must not use room up.
    TerminalEmulator emulator(20, 5);
    emulator.feed(lines(0, 3) + "\n\n\n\x1B[44m\x1B[10S\x1B[m\n\n" + lines(3, 7) + "\x1B[9S");
    emulator.feed("\x1B[5;1H");
    const std::u32string oldest = lineText(emulator.row(0));
    const std::size_t length = emulator.scrollbackLength();
    for (int i = 0; i < 2; ++i) {
        emulator.resize(20, 30);
        emulator.resize(20, 5);
    }
    const std::size_t bytes = emulator.scrollbackBytes();
    for (int i = 0; i < 2'000; ++i) {
        emulator.resize(20, 30);
        emulator.resize(20, 5);
    }
    EXPECT_EQ(emulator.scrollbackLength(), length);
    EXPECT_EQ(emulator.scrollbackBytes(), bytes);
    EXPECT_EQ(lineText(emulator.row(0)), oldest);
}

TEST(TerminalHistory, TakesAMillionRows)
{
    TerminalEmulator emulator(20, 5);
    emulator.setScrollbackLimit(1'000'000);
    for (int fed = 0; fed < 1'000'004; fed += 10'000)
        emulator.feed(lines(fed, std::min(10'000, 1'000'004 - fed)));
    ASSERT_EQ(emulator.scrollbackLength(), 1'000'000u);
    for (const int index : {0, 255, 256, 123'456, 999'999, 1'000'003})
        EXPECT_EQ(lineText(emulator.row(index)), lineNumbered(index));
    EXPECT_LT(emulator.scrollbackBytes(), 25'000'000u);
    emulator.resize(6, 8);
    EXPECT_EQ(lineText(emulator.row(123'456)), U"line 1");
    emulator.resize(20, 8);
    EXPECT_EQ(lineText(emulator.row(123'456)), U"line 1");
}

TEST(TerminalHistory, StaysSmallWhereEveryCellHasAColorOfItsOwn)
{
    TerminalEmulator emulator(200, 10);
    std::string line;
    for (int x = 0; x < 200; ++x)
        line += "\x1B[38;2;1;2;" + std::to_string(x) + "m\xF0\x9F\x98\x80";
    for (int y = 0; y < 10'009; ++y)
        emulator.feed(line + "\r\n");
    ASSERT_EQ(emulator.scrollbackLength(), 10'000u);
    EXPECT_LT(emulator.scrollbackBytes(), 34'000'000u);
    const TerminalCell cell = emulator.row(5'000).cell(123);
    EXPECT_EQ(cell.character, U'\U0001F600');
    EXPECT_EQ(cell.foreground, TerminalColor::rgb(1, 2, 123));
}

TEST(TerminalHistory, GivesRoomBackWhenItIsEmptied)
{
    TerminalEmulator emulator(200, 10);
    emulator.feed(std::string(4'000'000, 'x'));
    EXPECT_GT(emulator.scrollbackBytes(), 1'000'000u);
    emulator.feed("\x1B[3J");
    EXPECT_LT(emulator.scrollbackBytes(), 200'000u);
}

TEST(TerminalRow, GivesItsCellsInRuns)
{
    for (const bool inHistory : {false, true}) {
        TerminalEmulator emulator(10, 3);
        emulator.feed("ab\x1B[31mcd\x1B[m  \x1B[42me\x1B[K\x1B[m\r\n");
        if (inHistory)
            emulator.feed("\n\n\n");
        const TerminalRow row = inHistory ? emulator.scrollbackRow(0) : emulator.screenRow(0);
        EXPECT_EQ(row.characters(), U"abcd  e   ");
        EXPECT_EQ(row.characters(3, 7), U"d  e");
        EXPECT_EQ(row.characters(-5, 99), row.characters());
        EXPECT_EQ(row.characters(4, 2), U"");
        const auto run = [&](int column) { return row.runAt(column); };
        EXPECT_EQ(run(0).end, 2);
        EXPECT_EQ(run(1).begin, 1);
        EXPECT_EQ(run(2).end, 4);
        EXPECT_EQ(run(2).foreground, TerminalColor::palette(1));
        EXPECT_EQ(run(4).end, 6);
        EXPECT_EQ(run(6).end, 10);
        EXPECT_EQ(run(6).background, TerminalColor::palette(2));
        std::vector<TerminalCell> cells(12, TerminalCell{.character = U'x'});
        row.copyCells(cells);
        for (int x = 0; x < 12; ++x)
            EXPECT_EQ(cells[static_cast<std::size_t>(x)], row.cell(x)) << x;
    }
}

TEST(TerminalRow, EndsItsLastRunAtTheRowsEnd)
{
    for (const bool inHistory : {false, true}) {
        TerminalEmulator emulator(10, 3);
        emulator.feed(inHistory ? "ab\r\n\n\n\n" : "ab");
        const TerminalRow row = inHistory ? emulator.scrollbackRow(0) : emulator.screenRow(0);
        EXPECT_EQ(row.contentEnd(), 2);
        EXPECT_EQ(row.runAt(0).end, 10);
        EXPECT_EQ(row.runAt(7).end, 10);
    }
}

}  // namespace
}  // namespace tavrel
