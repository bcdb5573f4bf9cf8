#include "platform/Graphemes.h"

#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <string>
#include <unicode/ubrk.h>
#include <vector>

namespace tavrel {
namespace {

using Offsets = std::vector<std::size_t>;

Offsets boundariesGoingForward(std::u16string_view text)
{
    Graphemes graphemes(text);
    Offsets offsets{0};
    while (offsets.back() < text.size())
        offsets.push_back(graphemes.next(offsets.back()));
    return offsets;
}

/// What the library says when it sees the whole text at once.
Offsets boundariesOfTheLibrary(std::u16string_view text)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UBreakIterator, decltype(&ubrk_close)> iterator(
        ubrk_open(UBRK_CHARACTER, "", text.data(), static_cast<std::int32_t>(text.size()), &status),
        ubrk_close);
    Offsets offsets;
    for (std::int32_t offset = ubrk_first(iterator.get()); offset != UBRK_DONE;
         offset = ubrk_next(iterator.get()))
        offsets.push_back(static_cast<std::size_t>(offset));
    return offsets;
}

TEST(Graphemes, ClustersAreWhatAPersonSees)
{
    EXPECT_EQ(boundariesGoingForward(u"ab"), (Offsets{0, 1, 2}));
    EXPECT_EQ(boundariesGoingForward(u"e\u0301x"), (Offsets{0, 2, 3}));
    EXPECT_EQ(boundariesGoingForward(u"a\r\nb"), (Offsets{0, 1, 3, 4}));
    EXPECT_EQ(boundariesGoingForward(u"\n\r"), (Offsets{0, 1, 2}));
    EXPECT_EQ(boundariesGoingForward(u"😀!"), (Offsets{0, 2, 3}));
    EXPECT_EQ(boundariesGoingForward(u"👨‍👩‍👧x"), (Offsets{0, 8, 9}));
    EXPECT_EQ(boundariesGoingForward(u"🇩🇪🇫🇷"), (Offsets{0, 4, 8}));
    EXPECT_EQ(boundariesGoingForward(u"각\u1112\u1161"), (Offsets{0, 1, 3}));
    EXPECT_EQ(boundariesGoingForward(u"©\uFE0F"), (Offsets{0, 2}));
}

TEST(Graphemes, OffsetsInsideAClusterFindItsEdges)
{
    const std::u16string_view text = u"a👨‍👩‍👧b";
    Graphemes graphemes(text);
    EXPECT_TRUE(graphemes.isBoundary(1));
    for (std::size_t offset = 2; offset < 9; ++offset) {
        EXPECT_FALSE(graphemes.isBoundary(offset));
        EXPECT_EQ(graphemes.next(offset), 9U);
        EXPECT_EQ(graphemes.previous(offset), 1U);
        EXPECT_EQ(graphemes.nearest(offset), offset <= 5 ? 1U : 9U);
    }
    EXPECT_EQ(graphemes.previous(9), 1U);
    EXPECT_EQ(graphemes.nearest(9), 9U);
    EXPECT_EQ(graphemes.count(), 3U);
}

TEST(Graphemes, TheEndsAreBoundariesAndOffsetsPastThemCountAsTheEnd)
{
    Graphemes graphemes(u"ab");
    EXPECT_TRUE(graphemes.isBoundary(0));
    EXPECT_TRUE(graphemes.isBoundary(2));
    EXPECT_TRUE(graphemes.isBoundary(99));
    EXPECT_EQ(graphemes.previous(0), 0U);
    EXPECT_EQ(graphemes.next(2), 2U);
    EXPECT_EQ(graphemes.next(99), 2U);
    EXPECT_EQ(graphemes.previous(99), 1U);
    EXPECT_EQ(graphemes.nearest(99), 2U);
    Graphemes empty(u"");
    EXPECT_TRUE(empty.isBoundary(0));
    EXPECT_EQ(empty.next(0), 0U);
    EXPECT_EQ(empty.count(), 0U);
}

TEST(Graphemes, LoneSurrogatesStandAlone)
{
    const std::u16string text{u'a', 0xDE00, 0xD83D, u'b', 0xD83D};
    EXPECT_EQ(boundariesGoingForward(text), (Offsets{0, 1, 2, 3, 4, 5}));
}

TEST(Graphemes, RandomTextsBreakWhereTheLibraryBreaksThem)
{
    const std::vector<std::u16string> pieces{
        u"a",  u"\r", u"\n", u"\u0301", u"\u200D", u"👩",      u"🏽", u"🇩",
        u"ᄀ", u"ᅡ", u"ᆨ", u"각",     u"中",     u"\u0600", u"©",    u"\uFE0F",
        u"ก",  u"ำ",  u"क",  u"्",       u"\u00AD", u"\u200B", u"я"};
    for (unsigned seed = 0; seed < 300; ++seed) {
        std::mt19937 random(seed);
        std::u16string text;
        for (unsigned count = random() % 60; count > 0; --count)
            text += pieces[random() % pieces.size()];
        if (text.empty())
            continue;
        const Offsets expected = boundariesOfTheLibrary(text);
        ASSERT_EQ(boundariesGoingForward(text), expected) << "seed " << seed;
        Graphemes graphemes(text);
        ASSERT_EQ(graphemes.count(), expected.size() - 1) << "seed " << seed;
        std::size_t index = 0;
        for (std::size_t offset = 0; offset <= text.size(); ++offset) {
            while (index + 1 < expected.size() && expected[index + 1] <= offset)
                ++index;
            ASSERT_EQ(graphemes.isBoundary(offset), expected[index] == offset) << "seed " << seed;
            const bool onBoundary = expected[index] == offset;
            const std::size_t before =
                onBoundary && index > 0 ? expected[index - 1] : expected[index];
            ASSERT_EQ(graphemes.previous(offset), before) << "seed " << seed;
        }
    }
}

TEST(Graphemes, EndlessClustersAreCutButMotionGoesOn)
{
    const std::u16string text = u"a" + std::u16string(100'000, u'\u0301');
    Graphemes graphemes(text);
    std::size_t steps = 0;
    for (std::size_t offset = 0; offset < text.size(); ++steps) {
        const std::size_t next = graphemes.next(offset);
        ASSERT_GT(next, offset);
        ASSERT_LE(next, offset + Graphemes::maximumReach + 1);
        offset = next;
    }
    EXPECT_GE(steps, text.size() / (Graphemes::maximumReach + 1));
    for (std::size_t offset = text.size(); offset > 0;) {
        const std::size_t previous = graphemes.previous(offset);
        ASSERT_LT(previous, offset);
        offset = previous;
    }
}

}  // namespace
}  // namespace tavrel
