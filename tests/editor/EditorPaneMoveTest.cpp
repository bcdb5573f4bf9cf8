#include "PaneFixture.h"

#include <gtest/gtest.h>

namespace tavrel {
namespace {

struct Move {
    TextRange range;
    std::size_t location;
    std::u16string_view text;
    TextRange selection;
};

TEST(EditorPaneMove, CarriesTextToBothSidesInOneStep)
{
    for (const Move& move :
         {Move{{4, 4}, 12, u"one thretwo e", {8, 4}}, Move{{4, 4}, 13, u"one threetwo ", {9, 4}},
          Move{{4, 4}, 0, u"two one three", {0, 4}}}) {
        OnePane test(u"one two three");
        test.pane.setSelectedRange(move.range);
        test.pane.moveText(move.range, move.location);
        EXPECT_EQ(test.pane.text().text(), move.text);
        EXPECT_EQ(test.pane.selectedRange(), move.selection);
        EXPECT_FALSE(test.pane.hasSecondaryCursors());
        test.pane.undo();
        EXPECT_EQ(test.pane.text().text(), u"one two three");
        EXPECT_EQ(test.pane.selectedRange(), move.range);
        test.pane.redo();
        EXPECT_EQ(test.pane.text().text(), move.text);
        EXPECT_EQ(test.pane.selectedRange(), move.selection);
        EXPECT_FALSE(test.pane.hasSecondaryCursors());
    }
}

TEST(EditorPaneMove, WithinTheTextItselfNothingHappens)
{
    OnePane test(u"one two three");
    test.pane.setSelectedRange({4, 4});
    for (const std::size_t location : {4, 6, 8})
        test.pane.moveText({4, 4}, location);
    test.pane.moveText({4, 0}, 0);
    test.pane.moveText({99, 5}, 0);
    EXPECT_EQ(test.pane.text().text(), u"one two three");
    EXPECT_FALSE(test.pane.document().isModified);
}

}  // namespace
}  // namespace tavrel
