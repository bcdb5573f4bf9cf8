#include "editor/views/ViewRows.h"
#include "editor/views/EditorFont.h"
#include "editor/views/ViewScroll.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace tavrel {
namespace {

const EditorFont& font()
{
    static const EditorFont shared(QStringLiteral("Menlo"), 13);
    return shared;
}

ViewRows rowsOf(std::u16string_view text, std::size_t columns = 20)
{
    ViewRows rows(font());
    rows.setWrap({font().advance() * static_cast<double>(columns), 4, true});
    rows.setText(TextSnapshot(text));
    return rows;
}

std::u16string oneLongLine(std::size_t length)
{
    std::u16string line;
    line.reserve(length + 16);
    for (std::size_t i = 0; line.size() < length; ++i)
        line += i % 7 ? u"\"key\": 12, " : u"{\"alongname\":[]}";
    return line;
}

std::vector<TextRange> allRows(const ViewRows& rows)
{
    std::vector<TextRange> ranges;
    std::optional<TextRow> row = rows.row(0);
    while (row) {
        EXPECT_EQ(row->start(), ranges.empty() ? 0 : ranges.back().end());
        if (!ranges.empty()) {
            EXPECT_EQ(rows.rowBefore(*row)->range(), ranges.back());
        }
        ranges.push_back(row->range());
        row = rows.rowAfter(*row);
    }
    EXPECT_EQ(ranges.back().end(), rows.text().length());
    return ranges;
}

TEST(ViewRows, CoverTheTextWithoutGaps)
{
    EXPECT_EQ(allRows(rowsOf(u"")), (std::vector<TextRange>{{0, 0}}));
    EXPECT_EQ(allRows(rowsOf(u"a\n")), (std::vector<TextRange>{{0, 2}, {2, 0}}));
    EXPECT_EQ(allRows(rowsOf(u"a\r\nb")), (std::vector<TextRange>{{0, 3}, {3, 1}}));
    EXPECT_EQ(allRows(rowsOf(u"0123456789 012345678901\nx")),
              (std::vector<TextRange>{{0, 11}, {11, 13}, {24, 1}}));
    allRows(rowsOf(oneLongLine(30000)));
}

TEST(ViewRows, FindTheRowOfAnyLocation)
{
    const ViewRows rows = rowsOf(u"0123456789 012345678901\nx");
    EXPECT_EQ(rows.rowAt(10), (TextRange{0, 11}));
    EXPECT_EQ(rows.rowAt(11), (TextRange{11, 13}));
    EXPECT_EQ(rows.rowAt(23), (TextRange{11, 13}));
    EXPECT_EQ(rows.rowAt(24), (TextRange{24, 1}));
    EXPECT_EQ(rows.rowAt(25), (TextRange{24, 1}));
    EXPECT_EQ(rows.rowAt(99), (TextRange{24, 1}));
    EXPECT_EQ(rowsOf(u"a\n").rowAt(2), (TextRange{2, 0}));
}

TEST(ViewRows, ALocationInAWrappedRowIsAtMostItsLastUnit)
{
    const ViewRows rows = rowsOf(u"0123456789 012345678901\nx");
    EXPECT_EQ(rows.locationAt({0, 11}, 1e9), 10u);
    EXPECT_EQ(rows.locationAt({11, 13}, 1e9), 23u);
    EXPECT_EQ(rows.locationAt({24, 1}, 1e9), 25u);
    EXPECT_EQ(rows.locationAt({0, 11}, -5), 0u);
    EXPECT_EQ(rows.locationAt({0, 11}, font().advance() * 2.6), 3u);
}

TEST(ViewRows, EstimatesGrowAndLeadBack)
{
    const ViewRows rows = rowsOf(oneLongLine(5000) + u"\n\n\nshort\n" + oneLongLine(9000));
    std::size_t last = 0;
    for (std::size_t at = 0; at <= rows.text().length(); at += 13) {
        const std::size_t estimate = rows.estimate(at);
        EXPECT_GE(estimate, last);
        last = estimate;
        const std::size_t first = rows.locationOfEstimate(estimate);
        EXPECT_LE(first, at);
        EXPECT_EQ(rows.estimate(first), estimate);
    }
}

TEST(ViewRows, StayTrueUnderRandomEdits)
{
    std::mt19937 random(17);
    const std::u16string_view pieces[] = {u"x",    u" ",     u"\n",     u"\r",
                                          u"\r\n", u"word ", u"\u00E9", u""};
    std::u16string text =
        oneLongLine(10000) + u"\n" + oneLongLine(300) + u"\n\n" + oneLongLine(9000);
    ViewRows rows = rowsOf(text);
    for (int round = 0; round < 400; ++round) {
        const std::size_t at = random() % (text.size() + 1);
        const std::size_t length = random() % 4 ? random() % 3 : random() % 600;
        const TextRange range = clampedRange({at, length}, text.size());
        std::u16string piece(pieces[random() % std::size(pieces)]);
        if (random() % 20 == 0)
            piece = oneLongLine(5000);
        text.replace(range.location, range.length, piece);
        rows.replaceText(TextSnapshot(text), range, piece.size());
        const ViewRows fresh = rowsOf(text);
        for (int i = 0; i < 12; ++i) {
            const std::size_t near =
                random() % 2 ? at + random() % 200 : random() % (text.size() + 1);
            const std::size_t place = std::min(near, text.size());
            ASSERT_EQ(rows.row(place).segment, fresh.row(place).segment)
                << round << " at " << place;
            ASSERT_EQ(rows.rowAt(place), fresh.rowAt(place)) << round << " at " << place;
        }
        if (text.size() > 60000)
            text.resize(20000), rows.setText(TextSnapshot(text));
    }
}

TEST(SegmentCache, HoldsABoundedAmount)
{
    const WrapSettings wrap{font().advance() * 20, 4, true};
    SegmentCache cache;
    const auto fill = [&](const std::u16string& line, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t start = i * (line.size() + 1);
            const std::size_t end = start + line.size();
            cache.insert({start, start, end, end + 1, true},
                         SegmentLayout::make(line, font(), wrap));
            EXPECT_LE(cache.size(), SegmentCache::capacity);
            EXPECT_LE(cache.memoryBytes(), SegmentCache::maximumMemoryBytes);
        }
        const std::size_t last = (count - 1) * (line.size() + 1);
        ASSERT_TRUE(cache.find(last));
        EXPECT_EQ(cache.find(last)->segment.start, last);
        EXPECT_FALSE(cache.find(0));
    };
    fill(u"short", 3 * SegmentCache::capacity);
    cache.clear();
    EXPECT_EQ(cache.memoryBytes(), 0u);
    fill(std::u16string(4000, u'\u00E9'), 200);
}

class ViewScrollTest : public testing::Test {
protected:
    static constexpr double rowHeight = 16;
    static constexpr double viewHeight = 100;

    ViewScroll scroll(const ViewRows& rows) const { return {rows, rowHeight, viewHeight}; }
};

TEST_F(ViewScrollTest, MovesByPixelsAcrossRows)
{
    const ViewRows rows = rowsOf(std::u16string(200, u'\n'));
    EXPECT_EQ(scroll(rows).movedBy({0, 0}, 5), (ScrollOrigin{0, 5}));
    EXPECT_EQ(scroll(rows).movedBy({0, 5}, 27), (ScrollOrigin{2, 0}));
    EXPECT_EQ(scroll(rows).movedBy({2, 0}, -1), (ScrollOrigin{1, 15}));
    EXPECT_EQ(scroll(rows).movedBy({2, 4}, -4), (ScrollOrigin{2, 0}));
    EXPECT_EQ(scroll(rows).movedBy({2, 4}, -500), (ScrollOrigin{0, 0}));
}

TEST_F(ViewScrollTest, EndsWithTheLastRowAtTheBottom)
{
    const ViewRows rows = rowsOf(std::u16string(200, u'\n'));
    // 201 rows; six and a quarter of them fit.
    const ScrollOrigin end{194, 12};
    EXPECT_EQ(scroll(rows).end(), end);
    EXPECT_EQ(scroll(rows).movedBy({0, 0}, 1e9), end);
    EXPECT_EQ(scroll(rows).clamped({200, 0}), end);
    const std::vector<VisibleRow> visible = scroll(rows).visibleRows(end);
    EXPECT_EQ(visible.back().row.start(), 200u);
    EXPECT_EQ(visible.back().top + rowHeight, viewHeight);
}

TEST_F(ViewScrollTest, AShortTextDoesNotScroll)
{
    const ViewRows rows = rowsOf(u"one\ntwo");
    EXPECT_EQ(scroll(rows).movedBy({0, 0}, 50), (ScrollOrigin{0, 0}));
    EXPECT_EQ(scroll(rows).clamped({4, 3}), (ScrollOrigin{0, 0}));
    EXPECT_EQ(scroll(rows).end(), (ScrollOrigin{0, 0}));
}

TEST_F(ViewScrollTest, DownAndUpAgainIsTheSamePlace)
{
    const ViewRows rows = rowsOf(oneLongLine(20000) + u"\n" + oneLongLine(700));
    std::mt19937 random(23);
    ScrollOrigin origin;
    for (int i = 0; i < 300; ++i) {
        const double distance = static_cast<double>(random() % 3000) - 1200;
        const ScrollOrigin there = scroll(rows).movedBy(origin, distance);
        const bool isAtAnEnd = there == scroll(rows).end() || there == ScrollOrigin{};
        if (!isAtAnEnd) {
            EXPECT_EQ(scroll(rows).movedBy(there, -distance), origin);
        }
        origin = there;
        EXPECT_EQ(rows.row(origin.location).start(), origin.location);
        EXPECT_GE(origin.offset, 0);
        EXPECT_LT(origin.offset, rowHeight);
    }
}

TEST_F(ViewScrollTest, ShowsWhatIsOutOfSight)
{
    const ViewRows rows = rowsOf(std::u16string(1000, u'\n'));
    std::mt19937 random(29);
    ScrollOrigin origin;
    for (int i = 0; i < 300; ++i) {
        const std::size_t target =
            random() % 2 ? random() % 1001
                         : std::min<std::size_t>(1000, origin.location + random() % 20);
        origin = scroll(rows).showing(origin, {target, 0});
        const std::vector<VisibleRow> visible = scroll(rows).visibleRows(origin);
        const bool isWhole =
            std::any_of(visible.begin(), visible.end(), [&](const VisibleRow& row) {
                return row.row.start() == target && row.top >= 0 &&
                       row.top + rowHeight <= viewHeight;
            });
        ASSERT_TRUE(isWhole) << "target " << target << " origin " << origin.location;
        EXPECT_EQ(scroll(rows).showing(origin, {target, 0}), origin);
    }
}

TEST_F(ViewScrollTest, ARowJustBeyondTheEdgeMovesThePictureByAsMuch)
{
    const ViewRows rows = rowsOf(std::u16string(1000, u'\n'));
    EXPECT_EQ(scroll(rows).showing({0, 0}, {6, 0}), (ScrollOrigin{0, 12}));
    EXPECT_EQ(scroll(rows).showing({0, 0}, {7, 0}), (ScrollOrigin{1, 12}));
    EXPECT_EQ(scroll(rows).showing({10, 0}, {9, 0}), (ScrollOrigin{9, 0}));
}

TEST_F(ViewScrollTest, AVeryLongLineIsLaidOutOnlyWhereItIsSeen)
{
    const ViewRows rows = rowsOf(oneLongLine(10'000'000), 80);
    const std::size_t middle = rows.text().length() / 2;
    ScrollOrigin origin = scroll(rows).showing({}, {middle, 0});
    EXPECT_LT(origin.location, middle);
    EXPECT_GT(origin.location + 1000, middle);
    for (int page = 0; page < 50; ++page)
        origin = scroll(rows).movedBy(origin, viewHeight);
    EXPECT_GT(origin.location, middle);
    EXPECT_GT(scroll(rows).end().location, rows.text().length() - 1000);
}

}  // namespace
}  // namespace tavrel
