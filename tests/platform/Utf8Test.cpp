#include "platform/Utf8.h"

#include <gtest/gtest.h>
#include <string>

namespace tavrel {
namespace {

TEST(Utf8, EveryCharacterGoesThereAndBack)
{
    std::u16string text;
    for (char32_t character = 0; character < 0x110000; ++character) {
        if (character < 0xD800 || (character >= 0xE000 && character < 0x10000)) {
            text += static_cast<char16_t>(character);
        } else if (character >= 0x10000) {
            text += static_cast<char16_t>(0xD7C0 + (character >> 10));
            text += static_cast<char16_t>(0xDC00 + (character & 0x3FF));
        }
    }
    const std::string bytes = utf8FromUtf16(text);
    EXPECT_TRUE(isValidUtf8(bytes));
    EXPECT_EQ(utf16FromUtf8(bytes), text);
}

TEST(Utf8, EachMaximalPartOfAnInvalidSequenceIsOneReplacement)
{
    EXPECT_EQ(utf16FromUtf8("\xF0\x9F\x98z"), u"\uFFFDz");
    EXPECT_EQ(utf16FromUtf8("\xC0\xAF"), u"\uFFFD\uFFFD");
    EXPECT_EQ(utf16FromUtf8("\xE0\x80\x80"), u"\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(utf16FromUtf8("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(utf16FromUtf8("\xF4\x91\x92\x93\xFF"), u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(utf16FromUtf8("a\xE2\x82"), u"a\uFFFD");
    EXPECT_EQ(utf16FromUtf8("\x80"), u"\uFFFD");
    for (const char* bytes : {"\xF0\x9F\x98z", "\xC0\xAF", "\xED\xA0\x80", "a\xE2\x82", "\x80"})
        EXPECT_FALSE(isValidUtf8(bytes)) << bytes;
}

TEST(Utf8, AsciiRunsOfAnyLengthMeetTheRestAtAnyOffset)
{
    for (std::size_t before = 0; before < 20; ++before) {
        for (std::size_t behind = 0; behind < 20; ++behind) {
            const std::string bytes =
                std::string(before, 'a') + "\xC3\xA9" + std::string(behind, 'b');
            const std::u16string text =
                std::u16string(before, u'a') + u"\u00E9" + std::u16string(behind, u'b');
            ASSERT_EQ(utf16FromUtf8(bytes), text);
            ASSERT_EQ(utf8FromUtf16(text), bytes);
            ASSERT_TRUE(isValidUtf8(bytes));
        }
    }
}

TEST(Utf8, LoneSurrogatesBecomeReplacements)
{
    const std::u16string text{0xDE00, u'a', 0xD83D};
    EXPECT_EQ(utf8FromUtf16(text), "\xEF\xBF\xBD"
                                   "a\xEF\xBF\xBD");
}

TEST(Utf8, NulAndByteOrderMarksAreKept)
{
    const std::string bytes("\xEF\xBB\xBF"
                            "a\0b",
                            6);
    EXPECT_EQ(utf16FromUtf8(bytes), std::u16string(u"\uFEFFa\0b", 4));
    EXPECT_EQ(utf8FromUtf16(std::u16string(u"\uFEFFa\0b", 4)), bytes);
    EXPECT_EQ(utf16FromUtf8(""), u"");
    EXPECT_EQ(utf8FromUtf16(u""), "");
    EXPECT_TRUE(isValidUtf8(""));
}

}  // namespace
}  // namespace tavrel
