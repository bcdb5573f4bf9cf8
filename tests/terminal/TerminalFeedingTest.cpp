// One stream of bytes by several roads: at once, byte by byte, in random pieces, and through a
// plain terminal that takes character after character.

#include "PlainTerminal.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

namespace tavrel {
namespace {

using Random = std::mt19937;

int below(Random& random, int n)
{
    return static_cast<int>(random() % static_cast<unsigned>(n));
}

std::string parameter(Random& random)
{
    constexpr std::array<std::string_view, 10> odd{"",
                                                   "0",
                                                   "999999",
                                                   "9223372036854775807",
                                                   "9223372036854775808",
                                                   "1:2",
                                                   "00000000000003",
                                                   "18446744073709551617",
                                                   "1049",
                                                   "2147483648"};
    return below(random, 3) == 0 ? std::string(odd[random() % odd.size()])
                                 : std::to_string(below(random, 30));
}

std::string controlSequence(Random& random)
{
    constexpr std::string_view finals = "ABCDEFGHJKLMPSTX@`abcdefghlmnrsuxyz~p\n\x1B";
    std::string sequence = "\x1B[";
    if (below(random, 4) == 0)
        sequence += "?><="[below(random, 4)];
    for (int count = below(random, 4); count >= 0; --count)
        sequence += parameter(random) + (count > 0 ? ";" : "");
    if (below(random, 12) == 0)
        sequence += " !$"[below(random, 3)];
    return sequence + finals[random() % finals.size()];
}

std::string privateModes(Random& random, int count)
{
    constexpr std::array<std::string_view, 10> modes{"1",    "6",    "7",    "25",   "47",
                                                     "1047", "1048", "1049", "2004", "4"};
    std::string sequence = "\x1B[?";
    for (int i = 0; i < count; ++i)
        (sequence += modes[random() % modes.size()]) += i + 1 < count ? ";" : "";
    return sequence + (below(random, 2) == 0 ? "h" : "l");
}

std::string rendition(Random& random, int count)
{
    constexpr std::array<std::string_view, 16> codes{
        "0", "1", "2", "3", "4", "7", "22", "24", "31", "97", "103", "38", "48", "5", "39", "300"};
    std::string sequence = "\x1B[";
    for (int i = 0; i < count; ++i)
        (sequence += codes[random() % codes.size()]) += i + 1 < count ? ";" : "";
    return sequence + "m";
}

std::string words(Random& random)
{
    std::string text;
    for (int length = below(random, 40); length > 0; --length)
        text.push_back(static_cast<char>(' ' + below(random, 95)));
    return text;
}

std::string fragment(Random& random)
{
    constexpr std::array<std::string_view, 24> fixed{"\r\n",
                                                     "\n",
                                                     "\b",
                                                     "\t",
                                                     "\x1B"
                                                     "7",
                                                     "\x1B"
                                                     "8",
                                                     "\x1B"
                                                     "D",
                                                     "\x1B"
                                                     "E",
                                                     "\x1B"
                                                     "H",
                                                     "\x1BM",
                                                     "\x1B(0",
                                                     "\x1B(B",
                                                     "\x1B)0",
                                                     "\x0E",
                                                     "\x0F",
                                                     "\x1B]0;a\x07",
                                                     "\x1BPab\x07\x1B\\",
                                                     "\xE2\x82",
                                                     "\xC0\x9B",
                                                     "\xED\xA0\x80",
                                                     "\xF8",
                                                     "\xF0\x9F\x98\x80",
                                                     "\xE6\x97\xA5\xE6\x9C\xAC",
                                                     "\x7F"};
    switch (below(random, 8)) {
    case 0:
    case 1:
        return controlSequence(random);
    case 2:
    case 3:
        return words(random);
    case 4:
        return rendition(random, 1 + below(random, 5));
    case 5:
        return below(random, 3) == 0 ? privateModes(random, 1 + below(random, 3)) : "\n";
    default:
        return std::string(fixed[random() % fixed.size()]);
    }
}

void expectSame(const TerminalEmulator& emulator, const PlainTerminal& plain)
{
    const auto differs = difference(emulator, plain);
    ASSERT_FALSE(differs) << *differs;
}

// A program of `length` fragments, with a resize now and then.
void runProgram(unsigned seed, int length, std::size_t limit, std::size_t longest)
{
    SCOPED_TRACE("seed " + std::to_string(seed));
    Random random(seed);
    const int columns = 2 + below(random, 40);
    const int rows = 2 + below(random, 12);
    TerminalEmulator atOnce(columns, rows);
    TerminalEmulator byBytes(columns, rows);
    TerminalEmulator byPieces(columns, rows);
    PlainTerminal plain(columns, rows);
    for (TerminalEmulator* emulator : {&atOnce, &byBytes, &byPieces})
        emulator->setScrollbackLimit(limit);
    plain.scrollbackLimit = limit;
    for (int done = 0; done < length;) {
        std::string bytes;
        for (int count = below(random, 60); count >= 0; --count, ++done)
            bytes += fragment(random);
        atOnce.feed(bytes);
        for (const char& byte : bytes)
            byBytes.feed({&byte, 1});
        for (std::string_view rest = bytes; !rest.empty();) {
            const std::string_view piece = rest.substr(0, 1 + random() % longest);
            byPieces.feed(piece);
            rest.remove_prefix(piece.size());
        }
        plain.feed(bytes);
        if (below(random, 3) == 0) {
            const int newColumns = below(random, 3) == 0 ? plain.columns : below(random, 60);
            const int newRows = below(random, 20);
            for (TerminalEmulator* emulator : {&atOnce, &byBytes, &byPieces})
                emulator->resize(newColumns, newRows);
            plain.resize(newColumns, newRows);
        }
        for (const TerminalEmulator* emulator : {&atOnce, &byBytes, &byPieces})
            ASSERT_NO_FATAL_FAILURE(expectSame(*emulator, plain));
    }
    EXPECT_EQ(atOnce.droppedRowCount(), byBytes.droppedRowCount());
    EXPECT_EQ(atOnce.droppedRowCount(), byPieces.droppedRowCount());
}

TEST(TerminalFeeding, LeadsToOneScreenHoweverItIsSplit)
{
    for (unsigned seed = 1; seed <= 60; ++seed)
        ASSERT_NO_FATAL_FAILURE(runProgram(seed, 600, 15, 20));
}

TEST(TerminalFeeding, KeepsTheSameHistoryOverSeveralPages)
{
    for (unsigned seed = 1; seed <= 4; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Random random(seed);
        TerminalEmulator emulator(30, 10);
        PlainTerminal plain(30, 10);
        emulator.setScrollbackLimit(700);
        plain.scrollbackLimit = 700;
        for (int step = 0; step < 60; ++step) {
            std::string bytes;
            for (int line = below(random, 150); line > 0; --line) {
                bytes += below(random, 4) == 0 ? rendition(random, 2) : "";
                bytes += below(random, 9) == 0 ? "\xE6\x97\xA5" : "";
                bytes += words(random) + (below(random, 6) == 0 ? "\x1B[45m\r\n\x1B[m" : "\r\n");
            }
            bytes += below(random, 8) == 0 ? "\x1B[44m\x1B[500S\x1B[m" : "";
            emulator.feed(bytes);
            plain.feed(bytes);
            const int columns = below(random, 2) == 0 ? plain.columns : 10 + below(random, 40);
            const int rows = below(random, 5) == 0 ? 600 : 2 + below(random, 40);
            emulator.resize(columns, rows);
            plain.resize(columns, rows);
            ASSERT_NO_FATAL_FAILURE(expectSame(emulator, plain));
        }
    }
}

TEST(TerminalFeeding, AppliesListsOfAnyLength)
{
    for (unsigned seed = 1; seed <= 200; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Random random(seed);
        TerminalEmulator emulator(20, 6);
        PlainTerminal plain(20, 6);
        for (int step = 0; step < 12; ++step) {
            const int count = 1 + below(random, 120);
            std::string bytes = "\x1B[2;5r\x1B[3;7Hx";
            bytes += below(random, 2) == 0 ? privateModes(random, count) : rendition(random, count);
            emulator.feed(bytes);
            plain.feed(bytes);
            ASSERT_NO_FATAL_FAILURE(expectSame(emulator, plain));
        }
    }
}

TEST(TerminalFeeding, KeepsTheFirstTwoParametersOfALongList)
{
    TerminalEmulator emulator(20, 6);
    std::string list = "3;7";
    for (int i = 0; i < 100'000; ++i)
        list += ";1";
    emulator.feed("\x1B[" + list + "H");
    EXPECT_EQ(emulator.cursorX(), 6);
    EXPECT_EQ(emulator.cursorY(), 2);
    emulator.feed("\x1B[" + list + "r");
    EXPECT_EQ(emulator.scrollTop(), 0);
    EXPECT_EQ(emulator.scrollBottom(), 5);
    emulator.feed("\x1B[2;4" + list.substr(3) + "r");
    EXPECT_EQ(emulator.scrollTop(), 1);
    EXPECT_EQ(emulator.scrollBottom(), 3);
}

TEST(TerminalFeeding, ReadsAParameterOfAnyLength)
{
    TerminalEmulator emulator(20, 6);
    emulator.feed("\x1B[" + std::string(1'000'000, '0') + "5G");
    EXPECT_EQ(emulator.cursorX(), 4);
    // One that does not fit counts as left out.
    emulator.feed("\x1B[" + std::string(1'000'000, '9') + "G");
    EXPECT_EQ(emulator.cursorX(), 0);
}

TEST(TerminalFeeding, ThrowsAnEndlessStringAway)
{
    TerminalEmulator emulator(20, 6);
    emulator.feed("\x1BP");
    for (int i = 0; i < 100; ++i)
        emulator.feed(std::string(65'536, 'x'));
    EXPECT_EQ(emulator.parserState(), TerminalEmulator::ParserState::consumeUntilST);
    emulator.feed("\x1B\\a");
    EXPECT_EQ(emulator.screenRow(0).characters(0, 2), U"a ");
}

}  // namespace
}  // namespace tavrel
