#include "editor/views/TextSelection.h"

#include <gtest/gtest.h>

namespace tavrel {
namespace {

TEST(TextSelection, ADoubleClickSelectsAWordOrARunOfLikeSigns)
{
    const TextSnapshot text(u"int foo_1 ==  b;\n\nend");
    EXPECT_EQ(wordSelectionAt(text, 0), (TextRange{0, 3}));
    EXPECT_EQ(wordSelectionAt(text, 6), (TextRange{4, 5}));
    EXPECT_EQ(wordSelectionAt(text, 10), (TextRange{10, 2}));
    EXPECT_EQ(wordSelectionAt(text, 13), (TextRange{12, 2}));
    EXPECT_EQ(wordSelectionAt(text, 15), (TextRange{15, 1}));
    EXPECT_EQ(wordSelectionAt(text, 17), (TextRange{17, 0}));
    EXPECT_EQ(wordSelectionAt(text, 21), (TextRange{18, 3}));
    EXPECT_EQ(wordSelectionAt(text, 99), (TextRange{18, 3}));
    EXPECT_EQ(wordSelectionAt(TextSnapshot(), 0), (TextRange{0, 0}));
}

TEST(TextSelection, ATripleClickSelectsALineWithItsTerminator)
{
    const TextSnapshot text(u"one\r\ntwo");
    EXPECT_EQ(selectionUnitAt(text, 1, SelectionUnit::line), (TextRange{0, 5}));
    EXPECT_EQ(selectionUnitAt(text, 6, SelectionUnit::line), (TextRange{5, 3}));
}

TEST(TextSelection, ADragKeepsItsFirstUnit)
{
    const TextSnapshot text(u"one two three");
    SelectionDrag words(text, 5, SelectionUnit::word);
    EXPECT_EQ(words.range(), (TextRange{4, 3}));
    EXPECT_EQ(words.movedTo(text, 9), (TextRange{4, 9}));
    EXPECT_EQ(words.head(), 13u);
    EXPECT_EQ(words.movedTo(text, 1), (TextRange{0, 7}));
    EXPECT_EQ(words.head(), 0u);
    EXPECT_EQ(words.anchor(), 7u);

    SelectionDrag units(text, 5, SelectionUnit::character);
    EXPECT_EQ(units.movedTo(text, 9), (TextRange{5, 4}));
    EXPECT_EQ(units.movedTo(text, 2), (TextRange{2, 3}));
    EXPECT_EQ(units.movedTo(text, 5), (TextRange{5, 0}));
}

TEST(TextSelection, ExtendingMovesTheNearerEnd)
{
    const TextSnapshot text(u"0123456789");
    EXPECT_EQ(SelectionDrag::extending({2, 4}, 8).movedTo(text, 8), (TextRange{2, 6}));
    EXPECT_EQ(SelectionDrag::extending({2, 4}, 0).movedTo(text, 0), (TextRange{0, 6}));
    EXPECT_EQ(SelectionDrag::extending({2, 4}, 5).movedTo(text, 5), (TextRange{2, 3}));
    EXPECT_EQ(SelectionDrag::extending({4, 0}, 1).movedTo(text, 1), (TextRange{1, 3}));
}

}  // namespace
}  // namespace tavrel
