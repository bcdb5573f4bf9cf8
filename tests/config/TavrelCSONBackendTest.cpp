#include "config/cson/TavrelCSONBackend.h"
#include "config/cson/JSONTreeReader.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tavrel {
namespace {

std::string repeated(const std::string& piece, std::size_t count)
{
    std::string out;
    out.reserve(piece.size() * count);
    for (std::size_t i = 0; i < count; ++i)
        out.append(piece);
    return out;
}

std::string nested(const std::string& open, const std::string& close, std::size_t depth)
{
    return repeated(open, depth) + repeated(close, depth);
}

constexpr std::size_t million = 1'000'000;

TEST(TavrelCSONBackend, NormalizesAMillionLevels)
{
    const std::string arrays = nested("[", "]", million);
    EXPECT_EQ(TavrelCSONBackend::normalizedJSONFromCSON(arrays), arrays);
    const auto objects = TavrelCSONBackend::normalizedJSONFromCSON(nested("{", "}", million));
    EXPECT_EQ(objects, repeated("{\"#\":", million - 1) + "{" + repeated("}", million));
    const auto mixed = TavrelCSONBackend::normalizedJSONFromCSON(nested("{a:[", "]}", million));
    EXPECT_EQ(mixed, nested("{\"a\":[", "]}", million));
}

TEST(TavrelCSONBackend, ReportsTheInnermostOfAMillionOpenLevels)
{
    const auto result = TavrelCSONBackend::normalizedJSONFromCSON(repeated("[\n", million));
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().message, "Expected ']' at 1000001:1");
}

TEST(TavrelCSONBackend, TheTreeEndsAtItsLargestDepth)
{
    const std::size_t depth = CSONValue::maximumDepth;
    EXPECT_TRUE(TavrelCSONBackend::parseCSON(nested("[", "]", depth)));
    EXPECT_TRUE(TavrelCSONBackend::parseCSON(nested("{a:", "}", depth).insert(3 * depth, "1")));
    const CSONError tooDeep{"TavrelJSONReader", 1, "Nesting deeper than 10000 levels"};
    for (const std::string& text :
         {nested("[", "]", depth + 1), nested("{", "}", depth + 1), nested("[{", "}]", million)}) {
        const auto tree = TavrelCSONBackend::parseCSON(text);
        ASSERT_FALSE(tree);
        EXPECT_EQ(tree.error(), tooDeep);
    }
}

TEST(TavrelCSONBackend, DepthCountsWhatIsOpenAtOnce)
{
    const auto tree = TavrelCSONBackend::parseCSON("[" + repeated("[] {}", 30'000) + "]");
    ASSERT_TRUE(tree);
    EXPECT_EQ(tree->elements().size(), 60'000U);
}

TEST(TavrelCSONBackend, NullIsAValueAndNoError)
{
    const auto tree = TavrelCSONBackend::parseCSON("none");
    ASSERT_TRUE(tree);
    EXPECT_TRUE(tree->isNull());
}

TEST(TavrelCSONBackend, AnAbsentTextIsTheEmptyText)
{
    const auto result = TavrelCSONBackend::normalizedJSONFromCSON({});
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error(), (CSONError{"TavrelCSONBackend", 1, "Expected value at 1:1"}));
}

TEST(TavrelCSONBackend, ReadsNothingBehindTheEndOfTheText)
{
    const std::string text = "[1 \"a\" word /* c */";
    for (std::size_t length = 0; length <= text.size(); ++length) {
        // A copy of its own, so that a read past the end leaves the allocation.
        const std::vector<char> bytes(text.begin(), text.begin() + static_cast<long>(length));
        EXPECT_FALSE(TavrelCSONBackend::normalizedJSONFromCSON({bytes.data(), bytes.size()}));
    }
}

// Every number of up to six characters of the alphabet that the token reader takes for one.
TEST(TavrelCSONBackend, NumbersAreReadAsTheJSONReaderReadsThem)
{
    constexpr std::string_view alphabet = "-+.e09";
    std::vector<std::string> written{"-", "0", "9"};
    for (std::size_t i = 0; i < written.size(); ++i) {
        const std::string text = written[i];
        const auto tree = TavrelCSONBackend::parseCSON(text);
        ASSERT_EQ(tree, readJSONTree(text)) << text;
        if (tree) {
            ASSERT_EQ(tree->isFloating(), readJSONTree(text)->isFloating()) << text;
        }
        for (std::size_t j = 0; text.size() < 6 && j < alphabet.size(); ++j)
            written.push_back(text + alphabet[j]);
    }
}

TEST(TavrelCSONBackend, LongNumbersAreReadAsTheJSONReaderReadsThem)
{
    for (const std::string text :
         {"9223372036854775807", "9223372036854775808", "-9223372036854775808",
          "-9223372036854775809", "18446744073709551615", "18446744073709551616", "1e308", "1e309",
          "-1e309", "5e-324", "1e-400", "0.1", "123456789.123456789", "2.2250738585072011e-308",
          "1.7976931348623159e308", "0e0", "-0", "-0.0", "0E-0"})
        EXPECT_EQ(TavrelCSONBackend::parseCSON(text), readJSONTree(text)) << text;
}

TEST(TavrelCSONBackend, StringsAreReadAsTheJSONReaderReadsThem)
{
    for (int byte = 1; byte < 0x80; ++byte) {
        for (const char* before : {"", "\\", "\xC3\xA9"}) {
            const std::string text =
                "{\"" + std::string(before) + static_cast<char>(byte) + "\": \"a\\\"\"}";
            const auto json = TavrelCSONBackend::normalizedJSONFromCSON(text);
            const auto tree = TavrelCSONBackend::parseCSON(text);
            if (json)
                EXPECT_EQ(tree, readJSONTree(*json)) << text;
            else
                EXPECT_EQ(tree, tl::make_unexpected(json.error())) << text;
        }
    }
}

TEST(TavrelCSONBackend, NumbersKeepTheirKind)
{
    const auto tree = TavrelCSONBackend::parseCSON("[1 1.0 1e0 18446744073709551615 1e20 -0 true]");
    ASSERT_TRUE(tree);
    const auto elements = tree->elements();
    EXPECT_TRUE(elements[0].isInteger());
    EXPECT_TRUE(elements[1].isFloating());
    EXPECT_TRUE(elements[2].isFloating());
    EXPECT_TRUE(elements[3].isInteger());
    EXPECT_EQ(elements[3].unsignedInteger(), 18446744073709551615U);
    EXPECT_TRUE(elements[4].isFloating());
    EXPECT_TRUE(elements[5].isInteger());
    EXPECT_TRUE(elements[6].isBoolean());
}

}  // namespace
}  // namespace tavrel
