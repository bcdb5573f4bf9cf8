#include "editor/TextDecoder.h"

#include "editor/PlainText.h"
#include "editor/TextEncoder.h"
#include "editor/TextStorage.h"

#include <gtest/gtest.h>

namespace tavrel {

namespace {

using namespace std::string_literals;

struct DecodingCase {
    std::string name;
    std::string bytes;
    std::u16string units;
    std::vector<std::string> rawBytes;  // In order of their U+FFFD.
};

void PrintTo(const DecodingCase& decoding, std::ostream* out)
{
    *out << decoding.name;
}

std::vector<std::string> rawBytesOf(const TextSnapshot& text)
{
    std::vector<std::string> all;
    for (std::size_t i = 0; i < text.length(); ++i) {
        if (const std::optional<std::string> bytes = text.rawBytesAt(i))
            all.push_back(*bytes);
    }
    return all;
}

class TextDecoding : public testing::TestWithParam<DecodingCase> {};

}  // namespace

TEST_P(TextDecoding, GivesTheseUnitsAndEveryByteBack)
{
    const DecodingCase& decoding = GetParam();
    for (const std::size_t blockSize : {1, 2, 7, 4096, 65536}) {
        const TextSnapshot text = decodedText(decoding.bytes, blockSize);
        EXPECT_EQ(text.text(), decoding.units);
        EXPECT_EQ(rawBytesOf(text), decoding.rawBytes);
        EXPECT_EQ(encodedText(text), decoding.bytes);
        EXPECT_FALSE(text.rawBytesAt(text.length()));

        TextDecoder decoder(blockSize);
        for (const char byte : decoding.bytes)
            decoder.feed({&byte, 1});
        const TextSnapshot byteByByte = decoder.finish();
        EXPECT_EQ(byteByByte.text(), decoding.units);
        EXPECT_EQ(rawBytesOf(byteByByte), decoding.rawBytes);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Bytes, TextDecoding,
    testing::Values(
        DecodingCase{"nothing", "", u"", {}}, DecodingCase{"ASCII", "ab\n", u"ab\n", {}},
        DecodingCase{"no final newline", "ab", u"ab", {}},
        DecodingCase{"NUL", "a\0b"s, u"a\0b"s, {}},
        DecodingCase{"CR LF", "a\r\nb\r\n", u"a\r\nb\r\n", {}},
        DecodingCase{"a byte-order mark stays", "\xEF\xBB\xBF"s + "a", u"\uFEFF"s + u"a", {}},
        DecodingCase{"the first and last of two bytes", "\xC2\x80\xDF\xBF", u"\u0080\u07FF", {}},
        DecodingCase{
            "the first and last of three bytes", "\xE0\xA0\x80\xEF\xBF\xBF", u"\u0800\uFFFF", {}},
        DecodingCase{
            "the scalars beside the surrogates", "\xED\x9F\xBF\xEE\x80\x80", u"\uD7FF\uE000", {}},
        DecodingCase{"the first and last of four bytes",
                     "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF",
                     u"\U00010000\U0010FFFF",
                     {}},
        DecodingCase{"a replacement character of the file", "\xEF\xBF\xBD", u"\uFFFD", {}},
        DecodingCase{"a stray continuation", "a\x80z", u"a\uFFFDz", {"\x80"}},
        DecodingCase{"bytes that never occur",
                     "\xC0\xC1\xF5\xFE\xFF",
                     u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD",
                     {"\xC0", "\xC1", "\xF5", "\xFE", "\xFF"}},
        DecodingCase{"an overlong slash", "\xC0\xAF", u"\uFFFD\uFFFD", {"\xC0", "\xAF"}},
        DecodingCase{"an overlong form of three bytes",
                     "\xE0\x80\xAF",
                     u"\uFFFD\uFFFD\uFFFD",
                     {"\xE0", "\x80", "\xAF"}},
        DecodingCase{"an overlong form of four bytes",
                     "\xF0\x8F\xBF\xBF",
                     u"\uFFFD\uFFFD\uFFFD\uFFFD",
                     {"\xF0", "\x8F", "\xBF", "\xBF"}},
        DecodingCase{"surrogates as three bytes each",
                     "\xED\xA0\xBD\xED\xB8\x80",
                     u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD",
                     {"\xED", "\xA0", "\xBD", "\xED", "\xB8", "\x80"}},
        DecodingCase{"past the last scalar",
                     "\xF4\x90\x80\x80",
                     u"\uFFFD\uFFFD\uFFFD\uFFFD",
                     {"\xF4", "\x90", "\x80", "\x80"}},
        DecodingCase{"a maximal part of two bytes", "\xE2\x80z", u"\uFFFDz", {"\xE2\x80"}},
        DecodingCase{
            "a maximal part of three bytes", "\xF0\x9F\x98z", u"\uFFFDz", {"\xF0\x9F\x98"}},
        DecodingCase{"parts that are cut by a lead byte",
                     "\xF1\x80\x80\xE1\x80\xC2"s + "b",
                     u"\uFFFD\uFFFD\uFFFDb",
                     {"\xF1\x80\x80", "\xE1\x80", "\xC2"}},
        DecodingCase{"two bytes cut short at the end", "a\xC3", u"a\uFFFD", {"\xC3"}},
        DecodingCase{"three bytes cut short at the end", "a\xE2\x80", u"a\uFFFD", {"\xE2\x80"}},
        DecodingCase{
            "four bytes cut short at the end", "a\xF0\x9F\x98", u"a\uFFFD", {"\xF0\x9F\x98"}},
        DecodingCase{"UTF-16 with its mark",
                     "\xFF\xFE"s + "a\0\n\0"s,
                     u"\uFFFD\uFFFDa\0\n\0"s,
                     {"\xFF", "\xFE"}}));

TEST(TextDecoder, GivesBackAnyBytesWhateverTheCuts)
{
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomTexts random(seed);
        std::string bytes;
        if (seed % 3 == 0) {
            for (std::size_t i = random.number(3000); i > 0; --i)
                bytes.push_back(static_cast<char>(random.number(255)));
        } else {
            bytes = random.bytes(seed % 3 == 1 ? 3000 : 50);
        }
        const std::size_t blockSize = seed % 2 == 0 ? random.number(99) + 1 : 4096;
        TextDecoder decoder(blockSize);
        for (std::size_t done = 0; done < bytes.size();) {
            const std::size_t step = random.number(random.number(1) == 0 ? 5 : 500);
            decoder.feed(std::string_view(bytes).substr(done, step));
            done += step;
        }
        const TextSnapshot text = decoder.finish();
        ASSERT_EQ(encodedText(text), bytes);
        const TextSnapshot atOnce = decodedText(bytes);
        ASSERT_TRUE(atOnce == text);
        ASSERT_EQ(rawBytesOf(atOnce), rawBytesOf(text));
        ASSERT_EQ(text.lineCount(), plainLineStarts(text.text()).size());
        ASSERT_TRUE(decoder.finish().isEmpty());
    }
}

TEST(TextDecoder, LongAsciiIsKeptInOneByteAUnit)
{
    std::string bytes;
    while (bytes.size() < 1'000'000)
        bytes += "int main() { return 0; }\n";
    const TextSnapshot text = decodedText(bytes);
    EXPECT_EQ(encodedText(text), bytes);
    EXPECT_LT(text.memoryBytes(), bytes.size() * 104 / 100);
    EXPECT_EQ(text.lineCount(), bytes.size() / 25 + 1);
}

TEST(TextDecoder, RandomBytesTakeAFewTimesTheirSize)
{
    RandomTexts random(1);
    std::string bytes;
    while (bytes.size() < 300'000)
        bytes.push_back(static_cast<char>(random.number(255)));
    const TextSnapshot text = decodedText(bytes);
    EXPECT_EQ(encodedText(text), bytes);
    EXPECT_LT(text.memoryBytes(), bytes.size() * 6);
}

TEST(TextEncoder, WritesLoneSurrogatesAsReplacementCharacters)
{
    for (const std::size_t blockSize : {1, 2, 3, 4096}) {
        const std::u16string units{0xD83D, 0xDE00, 0xDE00, 0xD83D, u'a',
                                   0xD83D, 0xD83D, 0xDE00, 0xD83D};
        EXPECT_EQ(encodedText(TextSnapshot(units, blockSize)),
                  "\xF0\x9F\x98\x80\xEF\xBF\xBD\xEF\xBF\xBD"
                  "a\xEF\xBF\xBD\xF0\x9F\x98\x80\xEF\xBF\xBD");
    }
}

TEST(TextEncoder, EndsAHighSurrogateBeforeRawBytes)
{
    TextStorage storage(decodedText("\x80"));
    storage.replace({0, 0}, std::u16string(1, 0xD83D));
    storage.replace({2, 0}, std::u16string(1, 0xDE00));
    EXPECT_EQ(encodedText(storage.snapshot()), "\xEF\xBF\xBD\x80\xEF\xBF\xBD");
}

TEST(TextEncoder, GivesPiecesOfAtMost64KiBAndStopsWhenTold)
{
    for (const std::u16string& unit : {u"a"s, u"\u00e9"s, u"\u4e2d"s, u"\U0001F600"s}) {
        std::u16string units;
        while (units.size() < 300'000)
            units += unit;
        const TextSnapshot text(units);
        std::size_t total = 0;
        EXPECT_TRUE(forEachUtf8Chunk(text, [&](std::string_view bytes) {
            EXPECT_LE(bytes.size(), 65536U);
            EXPECT_FALSE(bytes.empty());
            total += bytes.size();
            return true;
        }));
        EXPECT_EQ(total, encodedText(text).size());
        EXPECT_EQ(decodedText(encodedText(text)), text);
        int calls = 0;
        EXPECT_FALSE(forEachUtf8Chunk(text, [&](std::string_view) { return ++calls < 2; }));
        EXPECT_EQ(calls, 2);
    }
    EXPECT_TRUE(forEachUtf8Chunk({}, [](std::string_view) { return false; }));
}

TEST(RawBytes, GoWithTheirUnitAndComeBackWithASlice)
{
    TextStorage storage(decodedText("ab\xFF"
                                    "cd\xE2\x80"
                                    "ef"));
    storage.replace({0, 1}, u"12345");
    EXPECT_EQ(encodedText(storage.snapshot()), "12345b\xFF"
                                               "cd\xE2\x80"
                                               "ef");
    const TextSnapshot removed = storage.snapshot().slice({6, 3});
    storage.replace({6, 3}, u"\uFFFD");
    EXPECT_EQ(encodedText(storage.snapshot()), "12345b\xEF\xBF\xBD\xE2\x80"
                                               "ef");
    storage.replace({6, 1}, removed);
    EXPECT_EQ(encodedText(storage.snapshot()), "12345b\xFF"
                                               "cd\xE2\x80"
                                               "ef");
}

}  // namespace tavrel
