#include "editor/BufferWords.h"

#include "PlainText.h"

#include "editor/TextStorage.h"

#include <gtest/gtest.h>
#include <map>

namespace tavrel {
namespace {

using Counts = std::map<std::string, std::uint64_t>;

Counts countsOf(const WordCounts& words)
{
    Counts counts;
    for (unsigned first = 0; first < 256; ++first) {
        if (first >= 'A' && first <= 'Z')
            continue;  // Listed under their small letters.
        words.forEachBeginningWith(static_cast<unsigned char>(first),
                                   [&](std::string_view word, std::uint64_t count) {
                                       counts[std::string(word)] += count;
                                   });
    }
    return counts;
}

/// By the plainest way: unit by unit over the whole text.
Counts plainCounts(std::u16string_view text)
{
    const auto isLetter = [](char16_t unit) {
        return (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || unit == u'_';
    };
    Counts counts;
    for (std::size_t at = 0; at < text.size();) {
        if (!isLetter(text[at])) {
            ++at;
            continue;
        }
        std::string word;
        while (at < text.size() && (isLetter(text[at]) || (text[at] >= u'0' && text[at] <= u'9')))
            word.push_back(static_cast<char>(text[at++]));
        if (word.size() >= 3)
            ++counts[word];
    }
    return counts;
}

TEST(WordCounts, CountsAndForgets)
{
    WordCounts words;
    EXPECT_EQ(words.count("abc"), 0U);
    words.add("abc", 2);
    words.add("abd", 1);
    words.add("abc", 1);
    EXPECT_EQ(words.count("abc"), 3U);
    EXPECT_EQ(words.size(), 2U);
    words.add("abd", -1);
    EXPECT_EQ(words.count("abd"), 0U);
    EXPECT_EQ(words.size(), 1U);
    EXPECT_EQ(words.vanishedCount(), 1U);
    words.add("abc", -99);
    EXPECT_EQ(words.count("abc"), 0U);
    words.add("abd", 5);
    EXPECT_EQ(countsOf(words), (Counts{{"abd", 5}}));
    words.add("never", -1);
    EXPECT_EQ(words.count("never"), 0U);
    words.clear();
    EXPECT_EQ(words.size(), 0U);
    EXPECT_EQ(words.count("abd"), 0U);
}

TEST(WordCounts, ListsWordsByTheirFirstLetterWhateverItsCase)
{
    WordCounts words;
    for (const char* word : {"abc", "Abc", "_ab", "bcd"})
        words.add(word, 1);
    std::vector<std::string> listed;
    words.forEachBeginningWith(
        'A', [&](std::string_view word, std::uint64_t) { listed.emplace_back(word); });
    std::sort(listed.begin(), listed.end());
    EXPECT_EQ(listed, (std::vector<std::string>{"Abc", "abc"}));
}

TEST(WordCounts, TellsManyWordsApart)
{
    WordCounts words;
    Counts expected;
    for (int number = 0; number < 20'000; ++number) {
        // All begin and end alike for longer than a hash looks at.
        const std::string word = "beginning" + std::to_string(number % 7000) + "theEndOfIt";
        words.add(word, 1);
        ++expected[word];
    }
    EXPECT_EQ(countsOf(words), expected);
}

TEST(BufferWords, CountsWordsAcrossBlocks)
{
    for (const std::size_t blockSize : {1U, 2U, 7U, 64U}) {
        BufferWords words;
        words.update(TextSnapshot(u"alpha 12beta_2 \u0416gamma be alpha", blockSize));
        EXPECT_EQ(countsOf(words.words()), (Counts{{"alpha", 2}, {"beta_2", 1}, {"gamma", 1}}));
    }
}

TEST(BufferWords, FollowsAWordThatIsTypedIntoPieces)
{
    TextStorage storage(TextSnapshot(u"alphabet", 2));
    BufferWords words;
    words.update(storage.snapshot());
    storage.replace({5, 0}, u" ");
    words.update(storage.snapshot());
    EXPECT_EQ(countsOf(words.words()), (Counts{{"alpha", 1}, {"bet", 1}}));
    storage.replace({5, 1}, u"");
    words.update(storage.snapshot());
    EXPECT_EQ(countsOf(words.words()), (Counts{{"alphabet", 1}}));
    storage.replace({0, 0}, u"1");
    words.update(storage.snapshot());
    EXPECT_EQ(countsOf(words.words()), (Counts{{"alphabet", 1}}));
}

TEST(BufferWords, CountsAnotherTextAnew)
{
    BufferWords words;
    words.update(TextSnapshot(u"one two three"));
    words.update(TextSnapshot(u"four"));
    EXPECT_EQ(countsOf(words.words()), (Counts{{"four", 1}}));
    words.update({});
    EXPECT_EQ(countsOf(words.words()), Counts{});
}

TEST(BufferWords, AreThoseOfTheTextAfterAnyEdits)
{
    constexpr std::u16string_view alphabet = u"aab_1 \u0416";
    for (unsigned seed = 0; seed < 2000; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomTexts random(seed);
        const auto someText = [&](std::size_t longest) {
            std::u16string text(random.number(longest), 0);
            for (char16_t& unit : text)
                unit = alphabet[random.number(alphabet.size() - 1)];
            return text;
        };
        const std::size_t blockSize = 1 + random.number(12);
        TextStorage storage(TextSnapshot(someText(300), blockSize), blockSize);
        BufferWords words;
        for (int round = 0; round < 6; ++round) {
            words.update(storage.snapshot());
            const std::u16string text = storage.snapshot().text();
            ASSERT_EQ(countsOf(words.words()), plainCounts(text));
            for (std::size_t edit = random.number(4); edit > 0; --edit)
                storage.replace(random.range(storage.length(), 6), someText(6));
            if (random.number(9) == 0) {  // The same blocks in another order.
                const TextRange moved = random.range(storage.length(), 100);
                const TextSnapshot cut = storage.snapshot().slice(moved);
                storage.replace(moved, u"");
                storage.replace({random.number(storage.length()), 0}, cut);
            }
        }
    }
}

}  // namespace
}  // namespace tavrel
