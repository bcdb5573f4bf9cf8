#include "git/GitLineDiff.h"

#include <gtest/gtest.h>
#include <map>
#include <random>
#include <set>
#include <string>

namespace tavrel {
namespace {

using Kind = GitLineChangeKind;

std::map<std::int64_t, Kind> lineByLine(const GitLineDiff& diff)
{
    std::map<std::int64_t, Kind> lines;
    for (const GitChangedLines& changed : diff.changedLines) {
        for (std::int64_t line = changed.first; line < changed.end(); ++line)
            lines[line] = changed.kind;
    }
    return lines;
}

TEST(GitLineDiff, RandomHunksGiveWhatPaintingLineByLineGives)
{
    for (unsigned seed = 0; seed < 2'000; ++seed) {
        std::mt19937 random(seed);
        std::string diff;
        std::map<std::int64_t, Kind> expected;
        std::set<std::int64_t> deleted;
        for (unsigned count = random() % 12; count > 0; --count) {
            const std::int64_t oldCount = random() % 3;
            const std::int64_t start = random() % 30;
            const std::int64_t newCount = random() % 8;
            diff += "@@ -1," + std::to_string(oldCount) + " +" + std::to_string(start) + "," +
                    std::to_string(newCount) + " @@\n";
            for (std::int64_t line = start; line < start + newCount; ++line)
                expected[line] = oldCount == 0 ? Kind::added : Kind::modified;
            if (newCount == 0)
                deleted.insert(start);
            else if (oldCount > newCount)
                deleted.insert(start + newCount - 1);
        }
        const GitLineDiff parsed = GitLineDiff::parse(diff);
        ASSERT_EQ(lineByLine(parsed), expected) << "seed " << seed << "\n" << diff;
        ASSERT_EQ(std::set(parsed.deletedAfterLines.begin(), parsed.deletedAfterLines.end()),
                  deleted);
        for (std::size_t index = 1; index < parsed.changedLines.size(); ++index) {
            const GitChangedLines& before = parsed.changedLines[index - 1];
            const GitChangedLines& lines = parsed.changedLines[index];
            ASSERT_LE(before.end(), lines.first);
            ASSERT_TRUE(before.end() < lines.first || before.kind != lines.kind);
        }
        for (std::int64_t line = -1; line < 45; ++line) {
            const auto found = expected.find(line);
            ASSERT_EQ(parsed.changeAt(line),
                      found == expected.end() ? std::nullopt : std::optional(found->second));
            ASSERT_EQ(parsed.isDeletedAfter(line), deleted.contains(line));
        }
    }
}

TEST(GitLineDiff, HugeCountsTakeNoRoom)
{
    const GitLineDiff diff = GitLineDiff::parse("@@ -0,0 +2147483647,2147483647 @@");
    ASSERT_EQ(diff.changedLines.size(), 1U);
    EXPECT_EQ(diff.changedLines[0].count, 2147483647);
    EXPECT_EQ(diff.changeAt(std::int64_t{2147483647} * 2 - 1), Kind::added);
    EXPECT_EQ(diff.changeAt(std::int64_t{2147483647} * 2), std::nullopt);
}

TEST(GitLineDiff, AnEmptyDiffHasNoMarks)
{
    const GitLineDiff diff;
    EXPECT_TRUE(diff.isEmpty());
    EXPECT_EQ(diff.changeAt(1), std::nullopt);
    EXPECT_FALSE(diff.isDeletedAfter(0));
    EXPECT_EQ(GitLineDiff::parse(""), diff);
}

TEST(GitLineDiff, AllLinesOfANewTextAreAdded)
{
    const auto lines = [](std::string_view text) {
        const GitLineDiff diff = GitLineDiff::allAdded(text);
        EXPECT_EQ(diff.changedLines.size(), 1U);
        EXPECT_EQ(diff.changeAt(1), Kind::added);
        EXPECT_TRUE(diff.deletedAfterLines.empty());
        return diff.changedLines[0].count;
    };
    EXPECT_EQ(lines(""), 1);
    EXPECT_EQ(lines("a"), 1);
    EXPECT_EQ(lines("a\n"), 1);
    EXPECT_EQ(lines("a\nb"), 2);
    EXPECT_EQ(lines("a\nb\n\n"), 3);
    EXPECT_EQ(lines("a\r\nb\r\n"), 1);
    EXPECT_EQ(lines("a\r\nb\nc"), 2);
    EXPECT_EQ(lines("\n\r"), 2);
}

}  // namespace
}  // namespace tavrel
