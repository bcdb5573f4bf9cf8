#include "platform/Unicode.h"

#include <gtest/gtest.h>
#include <string>
#include <unicode/uchar.h>

namespace tavrel {
namespace {

constexpr char32_t characterEnd = 0x110000;

bool hasCategory(char32_t character, std::uint32_t mask)
{
    return (U_GET_GC_MASK(static_cast<UChar32>(character)) & mask) != 0;
}

TEST(Unicode, SetsFollowTheGeneralCategoriesOfEveryCharacter)
{
    for (char32_t character = 0; character < characterEnd; ++character) {
        ASSERT_EQ(isAlphanumeric(character),
                  hasCategory(character, U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK))
            << std::hex << static_cast<unsigned>(character);
        ASSERT_EQ(isLetter(character), hasCategory(character, U_GC_L_MASK | U_GC_M_MASK))
            << std::hex << static_cast<unsigned>(character);
        ASSERT_EQ(isUppercaseLetter(character), hasCategory(character, U_GC_LU_MASK | U_GC_LT_MASK))
            << std::hex << static_cast<unsigned>(character);
        ASSERT_EQ(isDecimalDigit(character), hasCategory(character, U_GC_ND_MASK))
            << std::hex << static_cast<unsigned>(character);
        ASSERT_EQ(isWhitespace(character),
                  character == '\t' || hasCategory(character, U_GC_ZS_MASK))
            << std::hex << static_cast<unsigned>(character);
    }
}

TEST(Unicode, ValuesPastTheLastCharacterAreInNoSet)
{
    for (const char32_t value : {char32_t{0x110000}, char32_t{0x7FFFFFFF}, char32_t{0xFFFFFFFF}}) {
        EXPECT_FALSE(isAlphanumeric(value));
        EXPECT_FALSE(isLetter(value));
        EXPECT_FALSE(isUppercaseLetter(value));
        EXPECT_FALSE(isDecimalDigit(value));
        EXPECT_FALSE(isWhitespaceOrNewline(value));
        EXPECT_FALSE(hasWhiteSpaceProperty(value));
    }
}

TEST(Unicode, NewlinesAreTheSevenTerminators)
{
    std::u32string found;
    for (char32_t character = 0; character < characterEnd; ++character) {
        if (isNewline(character))
            found += character;
        ASSERT_EQ(isWhitespaceOrNewline(character),
                  isWhitespace(character) || isNewline(character));
    }
    EXPECT_EQ(found, U"\n\v\f\r\u0085\u2028\u2029");
}

TEST(Unicode, WhiteSpaceByPropertyHoldsSpacesAndTerminators)
{
    EXPECT_TRUE(hasWhiteSpaceProperty(U' '));
    EXPECT_TRUE(hasWhiteSpaceProperty(U'\u0085'));
    EXPECT_TRUE(hasWhiteSpaceProperty(U'\u2029'));
    EXPECT_TRUE(hasWhiteSpaceProperty(U'\u3000'));
    EXPECT_FALSE(hasWhiteSpaceProperty(U'\u200B'));
    EXPECT_FALSE(hasWhiteSpaceProperty(U'x'));
}

TEST(Unicode, WordCharactersAreUnderscoreAlphanumericsAndSurrogates)
{
    for (unsigned unit = 0; unit < 0x10000; ++unit) {
        const bool expected =
            unit == '_' || (unit >= 0xD800 && unit < 0xE000) || isAlphanumeric(unit);
        ASSERT_EQ(isWordCharacter(static_cast<char16_t>(unit)), expected) << std::hex << unit;
    }
    EXPECT_FALSE(isWordCharacter(u'-'));
    EXPECT_TRUE(isWordCharacter(u'\u0301'));
}

TEST(Unicode, CharacterAtJoinsPairsAndKeepsLoneHalves)
{
    const std::u16string text{u'a', 0xD83D, 0xDE00, 0xDE00, 0xD83D};
    EXPECT_EQ(characterAt(text, 0).character, U'a');
    EXPECT_EQ(characterAt(text, 1).character, U'\U0001F600');
    EXPECT_EQ(characterAt(text, 1).length, 2U);
    EXPECT_EQ(characterAt(text, 2).character, char32_t{0xDE00});
    EXPECT_EQ(characterAt(text, 2).length, 1U);
    EXPECT_EQ(characterAt(text, 4).character, char32_t{0xD83D});
    EXPECT_EQ(characterAt(text, 4).length, 1U);
}

TEST(Unicode, TrimmingKeepsTerminatorsUnlessAsked)
{
    EXPECT_EQ(trimmedWhitespace(u" \t\u3000a b\n "), u"a b\n");
    EXPECT_EQ(trimmedWhitespace(u"\n x"), u"\n x");
    EXPECT_EQ(trimmedWhitespaceAndNewlines(u"\r\n \u2028a\u0085\t"), u"a");
    EXPECT_EQ(trimmedWhitespace(u" \t "), u"");
    EXPECT_EQ(trimmedWhitespaceAndNewlines(u""), u"");
}

TEST(Unicode, CaseMappingIsFullAndKnowsNoLanguage)
{
    EXPECT_EQ(uppercased(u"straße ŉ ﬁ"), u"STRASSE ʼN FI");
    EXPECT_EQ(lowercased(u"ΟΔΟΣ ΣΑΣ"), u"οδος σας");
    EXPECT_EQ(lowercased(u"I\u0130"), u"ii\u0307");
    EXPECT_EQ(uppercased(u"i\u0131"), u"II");
    EXPECT_EQ(uppercased(u"\U00010428"), u"\U00010400");
    EXPECT_EQ(uppercased(u""), u"");
}

TEST(Unicode, CaseMappingGrowsAsFarAsTheTextNeeds)
{
    const std::u16string text(100'000, u'\u0390');
    EXPECT_EQ(uppercased(text).size(), 3 * text.size());
}

TEST(Unicode, CaseMappingKeepsLoneSurrogates)
{
    const std::u16string text{u'a', 0xD83D, u'b', 0xDE00};
    const std::u16string upper{u'A', 0xD83D, u'B', 0xDE00};
    EXPECT_EQ(uppercased(text), upper);
    EXPECT_EQ(lowercased(upper), text);
    const std::u16string lone{0xD83D, u'b'};
    EXPECT_EQ(withFirstCharacterUppercased(lone), lone);
}

TEST(Unicode, TheFirstCharacterTakesTheUpperForm)
{
    EXPECT_EQ(withFirstCharacterUppercased(u"ßa"), u"SSa");
    EXPECT_EQ(withFirstCharacterUppercased(u"ǆa"), u"Ǆa");
    EXPECT_EQ(withFirstCharacterUppercased(u"\U00010428\U00010428"), u"\U00010400\U00010428");
    EXPECT_EQ(withFirstCharacterUppercased(u"aBC"), u"ABC");
    EXPECT_EQ(withFirstCharacterUppercased(u""), u"");
}

}  // namespace
}  // namespace tavrel
