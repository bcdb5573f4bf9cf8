#include "editor/dispatch/KeyTranslator.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace tavrel {
namespace {

/// A text of the characters that the grammar knows and of a few that it does not.
std::string randomText(std::mt19937& random)
{
    static const std::vector<std::string> parts{"ctrl", "opt", "Cmd",    "shift", "+",
                                                "+",    ",",   ",",      "a",     "F7",
                                                "left", " ",   "\u0416", "\u0130"};
    std::string text;
    for (std::size_t count = random() % 12; count > 0; --count)
        text += parts[random() % parts.size()];
    return text;
}

TEST(KeyTranslator, CanonicalChordStaysCanonical)
{
    constexpr unsigned seed = 20;
    std::mt19937 random(seed);
    for (int round = 0; round < 20'000; ++round) {
        const std::string text = randomText(random);
        const std::string once = KeyTranslator::canonicalChord(text);
        EXPECT_EQ(KeyTranslator::canonicalChord(once), once) << text;
    }
}

TEST(KeyTranslator, JoinedSequenceSplitsIntoItsChords)
{
    constexpr unsigned seed = 21;
    std::mt19937 random(seed);
    for (int round = 0; round < 20'000; ++round) {
        const std::string text = randomText(random);
        std::vector<std::string> chords = KeyTranslator::sequenceSplit(text);
        EXPECT_EQ(KeyTranslator::sequenceSplit(KeyTranslator::joinedSequence(chords)), chords)
            << text;
    }
}

TEST(KeyTranslator, EveryBeginningOfASequenceEndsWithAWholeChord)
{
    constexpr unsigned seed = 22;
    std::mt19937 random(seed);
    for (int round = 0; round < 20'000; ++round) {
        const std::string text = randomText(random);
        std::vector<std::string> chords = KeyTranslator::sequenceSplit(text);
        while (chords.size() > 1) {
            chords.pop_back();
            EXPECT_TRUE(KeyTranslator::endsWithWholeChord(KeyTranslator::joinedSequence(chords)))
                << text;
        }
    }
}

TEST(KeyTranslator, KnowsWhereACommaEndsAChord)
{
    EXPECT_TRUE(KeyTranslator::endsWithWholeChord("a"));
    EXPECT_TRUE(KeyTranslator::endsWithWholeChord("cmd+,"));
    EXPECT_TRUE(KeyTranslator::endsWithWholeChord(","));
    EXPECT_TRUE(KeyTranslator::endsWithWholeChord("a,,"));
    EXPECT_FALSE(KeyTranslator::endsWithWholeChord(""));
    EXPECT_FALSE(KeyTranslator::endsWithWholeChord("cmd+"));
    EXPECT_FALSE(KeyTranslator::endsWithWholeChord("a,"));
    EXPECT_FALSE(KeyTranslator::endsWithWholeChord("cmd+,,"));
}

TEST(KeyTranslator, HalfASurrogatePairIsTheReplacementCharacter)
{
    KeyEvent event;
    event.charactersIgnoringModifiers = u"\xD83D";
    EXPECT_EQ(KeyTranslator::chordForEvent(event), "\uFFFD");
}

TEST(KeyTranslator, BytesThatAreNoTextAreReplaced)
{
    EXPECT_EQ(KeyTranslator::canonicalChord("CMD+\xFF"), "cmd+\uFFFD");
    EXPECT_EQ(KeyTranslator::canonicalChord(std::string_view("A\0B", 3)),
              std::string_view("a\0b", 3));
}

TEST(KeyTranslator, LongTextsAreTranslatedInOnePass)
{
    std::string text;
    for (int round = 0; round < 200'000; ++round)
        text += "Shift+Ctrl+A,";
    const std::vector<std::string> chords = KeyTranslator::sequenceSplit(text);
    EXPECT_EQ(chords.size(), 200'000U);
    EXPECT_EQ(chords.back(), "ctrl+shift+a");
    std::string words;
    for (int round = 0; round < 200'000; ++round)
        words += "shift+";
    EXPECT_EQ(KeyTranslator::canonicalChord(words + "a"), "shift+a");
    EXPECT_FALSE(KeyTranslator::menuShortcut(text));
}

}  // namespace
}  // namespace tavrel
