#include "highlight/TokenRuns.h"

#include <gtest/gtest.h>

#include <random>

namespace tavrel {

TEST(TokenRuns, BeginAsForeground)
{
    EXPECT_TRUE(TokenRuns().runs().empty());
    const TokenRuns runs(4);
    ASSERT_EQ(runs.runs().size(), 1U);
    EXPECT_EQ(runs.runs()[0], (TokenRuns::Run{4, SyntaxToken::foreground}));
    EXPECT_EQ(runs.tokenAt(4), SyntaxToken::foreground);
}

TEST(TokenRuns, ClampWhatIsPainted)
{
    TokenRuns runs(4);
    runs.paint({2, static_cast<std::size_t>(-1)}, SyntaxToken::keyword);
    EXPECT_EQ(runs.length(), 4U);
    EXPECT_EQ(runs.tokenAt(1), SyntaxToken::foreground);
    EXPECT_EQ(runs.tokenAt(3), SyntaxToken::keyword);
    runs.paint({4, 1}, SyntaxToken::string);
    runs.paint({1, 0}, SyntaxToken::string);
    EXPECT_EQ(runs.runs().size(), 2U);
}

TEST(TokenRuns, EqualColouringsCompareEqual)
{
    TokenRuns runs(6);
    runs.paint({1, 2}, SyntaxToken::comment);
    runs.paint({3, 2}, SyntaxToken::comment);
    TokenRuns other(6);
    other.paint({0, 6}, SyntaxToken::comment);
    other.paint({0, 1}, SyntaxToken::foreground);
    other.paint({5, 1}, SyntaxToken::foreground);
    EXPECT_EQ(runs, other);
    EXPECT_EQ(runs.runs().size(), 3U);
}

TEST(TokenRuns, PaintLikeAnArrayOfTokens)
{
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        std::vector<SyntaxToken> plain(random() % 60);
        TokenRuns runs(plain.size());
        for (int i = 0; i < 60; ++i) {
            const TextRange range = clampedRange({random() % 61, random() % 20}, plain.size());
            const auto token = static_cast<SyntaxToken>(random() % 4);
            runs.paint(range, token);
            std::fill_n(plain.begin() + static_cast<std::ptrdiff_t>(range.location), range.length,
                        token);
            TokenRuns expected;
            for (const SyntaxToken unit : plain)
                expected.append(1, unit);
            ASSERT_EQ(runs, expected);
        }
        for (std::size_t i = 0; i < plain.size(); ++i)
            ASSERT_EQ(runs.tokenAt(i), plain[i]);
    }
}

}  // namespace tavrel
