#include "git/IgnoreMatcher.h"

#include "platform/RegularExpression.h"
#include "platform/Utf8.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace tavrel {
namespace {

bool matches(std::string_view pattern, std::string_view path)
{
    const auto matcher = IgnoreMatcher::make(utf16FromUtf8(pattern));
    return matcher && matcher->matches({path, path.substr(path.rfind('/') + 1), isPlainPath(path)});
}

/// The regular expression for `pattern`; absent where it does not compile.
std::optional<RegularExpression> expressionFor(std::string_view pattern)
{
    const auto compiled =
        RegularExpression::compile(translateIgnorePattern(utf16FromUtf8(pattern)).expression);
    return compiled ? std::optional(*compiled) : std::nullopt;
}

bool matches(const RegularExpression& expression, std::string_view path)
{
    const std::u16string text = utf16FromUtf8(path);
    RegularExpressionMatcher matcher(expression);
    matcher.setText(text);
    return matcher.next() == MatchOutcome::match;
}

std::string randomText(std::mt19937& random, const std::vector<std::string>& pieces,
                       std::size_t most)
{
    std::string text;
    for (std::size_t count = random() % (most + 1); count > 0; --count)
        text += pieces[random() % pieces.size()];
    return text;
}

/// Without slashes at the ends or next to each other, as paths below a folder are.
std::string randomPath(std::mt19937& random)
{
    static const std::vector<std::string> pieces{"a",  "b", "ab", "é",      "😀",  ".", "\n",
                                                 "\r", "]", "-",  "\u2028", "\\", "*"};
    std::string path;
    const std::size_t depth = 1 + random() % 4;
    for (std::size_t level = 0; level < depth; ++level) {
        if (level > 0)
            path += '/';
        // Terminators are kept rare, as most of them end all matching.
        const std::string name = randomText(random, pieces, 4);
        path += name.empty() || random() % 3 != 0 ? std::string("a") + "b.*"[random() % 4] : name;
    }
    return path.substr(0, path.find('\0'));
}

TEST(IgnoreMatcher, GivesTheAnswersOfTheExpression)
{
    const std::vector<std::string> pieces{
        "a",    "b",    "*",     "**",          "**/",     "/",        "?",
        "[ab]", "[!a]", "[^b-]", "[[:alpha:]]", "\\*",     "]",        "[",
        "é",    "😀",    "[é-ü]", ".",           "\\",      "-",        "a/",
        "*/",   "[a/]", "[!é]",  "[a&&b]",      "[!a&&b]", "[a-z--b]", "[^a-z--b]"};
    std::size_t matched = 0;
    for (unsigned seed = 0; seed < 2'000; ++seed) {
        std::mt19937 random(seed);
        const std::string pattern = randomText(random, pieces, 6);
        if (pattern.empty())
            continue;
        const auto expression = expressionFor(pattern);
        ASSERT_EQ(IgnoreMatcher::make(utf16FromUtf8(pattern)).has_value(), expression.has_value())
            << pattern;
        for (int round = 0; expression && round < 25; ++round) {
            const std::string path = randomPath(random);
            const bool expected = matches(*expression, path);
            ASSERT_EQ(matches(pattern, path), expected)
                << "seed " << seed << ": " << pattern << " and " << path;
            matched += expected;
        }
    }
    EXPECT_GT(matched, 1'500U);
}

TEST(IgnoreMatcher, PatternsOfEveryLengthGiveTheAnswersOfTheExpression)
{
    // Around the ends of the words that hold the positions.
    for (const std::size_t length : {30, 61, 62, 63, 64, 65, 126, 127, 128, 129, 300}) {
        const std::string literal(length, 'a');
        for (const std::string& pattern :
             {literal + "*b", "*" + literal + "?b", literal + "**/b", "x**" + literal + "/**/c*"}) {
            for (const std::string& path :
                 {literal + "b", literal + "xxb", literal + "b/b", literal + "/b",
                  "x/y" + literal + "/q/r/cc", "x" + literal + "/c", literal.substr(1) + "b"})
                EXPECT_EQ(matches(pattern, path), matches(*expressionFor(pattern), path))
                    << length << ": " << pattern << " and " << path;
        }
    }
}

TEST(IgnoreMatcher, NoPatternTakesLong)
{
    std::string pattern;
    for (int count = 0; count < 2'000; ++count)
        pattern += "*a**/";
    const std::string path = std::string(2'000, 'a') + "/" + std::string(2'000, 'a');
    EXPECT_FALSE(matches(pattern + "b", path));
}

TEST(IgnoreMatcher, ClassesThatNeverEndDoNotCompile)
{
    for (const char* pattern : {"[!]", "[^]", "[a[b]", "[[:alpha:]", "[[a]b", "[z-a]", "[a&&]x[b"})
        EXPECT_EQ(IgnoreMatcher::make(utf16FromUtf8(pattern)).has_value(),
                  expressionFor(pattern).has_value())
            << pattern;
    EXPECT_FALSE(IgnoreMatcher::make(u"[!]"));
}

}  // namespace
}  // namespace tavrel
