#include "editor/LocationMap.h"

#include <gtest/gtest.h>

namespace tavrel {
namespace {

TEST(LocationMap, MovesWhatLiesBehindAChange)
{
    const std::vector<TextChange> changes{{{2, 0}, 3}, {{5, 2}, 0}, {{9, 1}, 4}};
    const LocationMap map(changes);
    EXPECT_EQ(map.mapped(std::size_t{1}), 1U);
    EXPECT_EQ(map.mapped(std::size_t{3}), 6U);
    EXPECT_EQ(map.mapped(std::size_t{7}), 8U);
    EXPECT_EQ(map.mapped(std::size_t{12}), 16U);
}

TEST(LocationMap, StaysBeforeAnInsertionOrGoesBehindIt)
{
    const std::vector<TextChange> changes{{{2, 0}, 3}};
    const LocationMap map(changes);
    EXPECT_EQ(map.mapped(std::size_t{2}), 2U);
    EXPECT_EQ(map.mapped(2, InsertionSide::behind), 5U);
}

TEST(LocationMap, KeepsTheDistanceInsideAReplacedStretch)
{
    const std::vector<TextChange> changes{{{2, 4}, 2}};
    const LocationMap map(changes);
    EXPECT_EQ(map.mapped(std::size_t{2}), 2U);
    EXPECT_EQ(map.mapped(std::size_t{3}), 3U);
    EXPECT_EQ(map.mapped(std::size_t{5}), 4U);
    EXPECT_EQ(map.mapped(std::size_t{6}), 4U);
    EXPECT_EQ(map.mapped(std::size_t{7}), 5U);
}

TEST(LocationMap, ARangeDoesNotTakeInWhatIsInsertedAtItsBorders)
{
    const std::vector<TextChange> changes{{{2, 0}, 3}, {{4, 0}, 5}};
    const LocationMap map(changes);
    EXPECT_EQ(map.mapped(TextRange{2, 2}), (TextRange{5, 2}));
    EXPECT_EQ(map.mapped(TextRange{2, 3}), (TextRange{5, 8}));
    EXPECT_EQ(map.mapped(TextRange{1, 3}), (TextRange{1, 6}));
}

TEST(LocationMap, ARemovedRangeIsEmptyWhereItStood)
{
    const std::vector<TextChange> changes{{{2, 6}, 0}};
    EXPECT_EQ(LocationMap(changes).mapped(TextRange{3, 2}), (TextRange{2, 0}));
    EXPECT_EQ(LocationMap(changes).mapped(TextRange{0, 9}), (TextRange{0, 3}));
}

TEST(LocationMap, NoChangeMovesNothing)
{
    EXPECT_EQ(LocationMap({}).mapped(TextRange{3, 2}), (TextRange{3, 2}));
    EXPECT_EQ(LocationMap({}).mapped(std::size_t{7}), 7U);
}

}  // namespace
}  // namespace tavrel
