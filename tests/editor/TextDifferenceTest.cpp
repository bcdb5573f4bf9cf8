#include "editor/TextDifference.h"

#include "editor/TextDecoder.h"
#include "editor/TextSnapshot.h"
#include "editor/TextStorage.h"

#include <gtest/gtest.h>
#include <random>

namespace tavrel {
namespace {

std::optional<TextEdit> difference(std::u16string_view before, std::u16string_view after)
{
    return differingStretch(TextSnapshot(before), TextSnapshot(after));
}

TEST(TextDifference, EqualTextsHaveNone)
{
    const TextSnapshot text(std::u16string(200'000, u'é'));
    EXPECT_FALSE(differingStretch(text, text));
    EXPECT_FALSE(differingStretch(text, TextSnapshot(text.text(), 100)));
    EXPECT_FALSE(difference(u"", u""));
}

TEST(TextDifference, LeavesOutWhatIsAlikeAtBothEnds)
{
    const auto edit = difference(u"one two three", u"one 2 three");
    ASSERT_TRUE(edit);
    EXPECT_EQ(edit->range, (TextRange{4, 3}));
    EXPECT_EQ(edit->replacement, u"2");
    EXPECT_EQ(difference(u"", u"ab")->replacement, u"ab");
    EXPECT_EQ(difference(u"ab", u"")->range, (TextRange{0, 2}));
    EXPECT_EQ(difference(u"aa", u"aaa")->range, (TextRange{2, 0}));
    EXPECT_EQ(difference(u"aaa", u"aa")->range, (TextRange{2, 1}));
}

TEST(TextDifference, CharactersThatMayStandForBytesCountAsDifferent)
{
    const auto edit = difference(u"a\xFFFD b\xFFFD c", u"a\xFFFD b\xFFFD c");
    ASSERT_TRUE(edit);
    EXPECT_EQ(edit->range, (TextRange{1, 4}));
    TextDecoder decoder;
    decoder.feed("one \xFE three");
    const TextSnapshot after = decoder.finish();
    const auto bytes = differingStretch(TextSnapshot(u"one \xFFFD three"), after);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(bytes->range, (TextRange{4, 1}));
    EXPECT_EQ(bytes->replacement.rawBytesAt(0), "\xFE");
}

TEST(TextDifference, LeadsFromAnyTextToAnyOther)
{
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        std::u16string before(random() % 300'000, u'x');
        for (std::size_t at = 0; at < before.size(); at += 1 + random() % 5000)
            before[at] = static_cast<char16_t>(u'a' + random() % 500);
        std::u16string after = before;
        for (unsigned count = random() % 4; count > 0 && !after.empty(); --count) {
            const std::size_t place = random() % after.size();
            after.replace(place, random() % 3, random() % 3, u'é');
        }
        TextStorage storage(TextSnapshot(before), 50);
        if (const auto edit = differingStretch(storage.snapshot(), TextSnapshot(after)))
            storage.replace(edit->range, edit->replacement);
        ASSERT_TRUE(storage.snapshot() == after);
    }
}

}  // namespace
}  // namespace tavrel
