#include "platform/Collator.h"

#include "platform/Environment.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace tavrel {
namespace {

using Texts = std::vector<std::u16string>;

Texts sorted(Texts texts, const std::string& locale)
{
    const Collator collator(locale);
    std::sort(texts.begin(), texts.end(), [&](const auto& left, const auto& right) {
        return collator.compare(left, right) < 0;
    });
    return texts;
}

TEST(Collator, CaseDoesNotCountButAccentsDo)
{
    EXPECT_EQ(sorted({u"Zebra", u"apple", u"Éclair", u"eclair", u"Apples"}, ""),
              (Texts{u"apple", u"Apples", u"eclair", u"Éclair", u"Zebra"}));
}

TEST(Collator, TiesGoByCodeUnits)
{
    EXPECT_EQ(sorted({u"readme", u"README", u"ReadMe"}, "C"),
              (Texts{u"README", u"ReadMe", u"readme"}));
    EXPECT_EQ(Collator("").compare(u"a", u"A"), std::strong_ordering::greater);
    EXPECT_EQ(Collator("").compare(u"a", u"a"), std::strong_ordering::equal);
}

TEST(Collator, TheLocaleDecides)
{
    const Texts texts{u"z", u"ö", u"o"};
    EXPECT_EQ(sorted(texts, "de_DE.UTF-8"), (Texts{u"o", u"ö", u"z"}));
    EXPECT_EQ(sorted(texts, "sv_SE.UTF-8"), (Texts{u"o", u"z", u"ö"}));
    EXPECT_EQ(sorted(texts, "sv"), (Texts{u"o", u"z", u"ö"}));
}

TEST(Collator, PlainAndUnknownLocalesAreTheRoot)
{
    // In the root locale punctuation stands before letters; by code units "_" stands behind "Z".
    const Texts texts{u"Z", u"_", u"ö", u"o", u"a"};
    const Texts expected{u"_", u"a", u"o", u"ö", u"Z"};
    for (const char* locale :
         {"", "C", "POSIX", "C.UTF-8", "C.utf8", "xx_YY.UTF-8", "!", "@", "en_US"})
        EXPECT_EQ(sorted(texts, locale), expected) << locale;
    EXPECT_EQ(sorted(texts, std::string(5000, 'q')), expected);
}

TEST(Collator, KeysCompareAsTheirTextsDo)
{
    const Collator collator("de_DE");
    const Texts texts{u"",  u"a",  u"A",  u"ab", u"a b", u"a-b", u"ä",      u"Ä",      u"\u0301",
                      u"ß", u"ss", u"SS", u"1",  u"10",  u"2",   u"\n",     u"\u0001", u"z\u0001",
                      u"z", u"中", u"😀",  u"_",  u".",   u"é",   u"e\u0301"};
    for (const auto& left : texts) {
        for (const auto& right : texts)
            EXPECT_EQ(collator.key(left) <=> collator.key(right), collator.compare(left, right));
    }
}

TEST(Collator, LoneSurrogatesAndLongTextsHaveTheirPlace)
{
    const Collator collator("");
    const std::u16string lone{0xD83D};
    const std::u16string otherLone{0xDE00};
    EXPECT_NE(collator.compare(lone, otherLone), std::strong_ordering::equal);
    EXPECT_EQ(collator.key(lone) <=> collator.key(otherLone), collator.compare(lone, otherLone));
    const std::u16string text(100'000, u'\u00E4');
    EXPECT_EQ(collator.key(text), collator.key(text));
    EXPECT_LT(collator.key(text), collator.key(text + u"a"));
}

TEST(Collator, Utf8ComparesAsUtf16DoesInEveryLocale)
{
    std::string ascii;
    for (char character = 0x20; character < 0x7F; ++character)
        ascii += character;
    // Some of these locales see "ch", "aa", "lj" or "ny" as one letter, some order capitals first.
    for (const char* locale : {"", "de", "sv", "cs", "sk", "da", "hr", "hu", "es@collation=trad",
                               "et", "lt", "th", "ja", "uk", "ar", "cy", "mt", "en_US"}) {
        const Collator collator(locale);
        std::mt19937 random(7);
        for (int round = 0; round < 3'000; ++round) {
            std::string left;
            std::string right;
            for (unsigned count = random() % 8; count > 0; --count)
                left += round % 3 != 0 ? ascii[random() % ascii.size()] : "acdhlny"[random() % 7];
            right = left.substr(0, random() % (left.size() + 1));
            for (unsigned count = random() % 4; count > 0; --count)
                right += round % 3 != 0 ? ascii[random() % ascii.size()] : "acdhlny"[random() % 7];
            if (round % 10 == 0)
                right += "\u00E4";
            ASSERT_EQ(collator.compareUtf8(left, right),
                      collator.compare(utf16FromUtf8(left), utf16FromUtf8(right)))
                << locale << ": " << left << " and " << right;
        }
    }
}

TEST(Collator, BytesThatAreNotUtf8HaveTheirPlace)
{
    const Collator collator("");
    EXPECT_NE(collator.compareUtf8("a\xFF", "a\xFE"), std::strong_ordering::equal);
    EXPECT_EQ(collator.compareUtf8("a\xFF", "a\xFF"), std::strong_ordering::equal);
    EXPECT_EQ(collator.compareUtf8("a\x01", "a"), std::strong_ordering::greater);
    EXPECT_EQ(collator.compareUtf8("", ""), std::strong_ordering::equal);
    EXPECT_EQ(collator.compareUtf8("", "a"), std::strong_ordering::less);
}

TEST(Collator, TheEnvironmentNamesTheLocale)
{
    Environment environment;
    EXPECT_EQ(collationLocale(environment), "C");
    environment.set("LANG", "de_DE.UTF-8");
    EXPECT_EQ(collationLocale(environment), "de_DE.UTF-8");
    environment.set("LC_COLLATE", "sv_SE.UTF-8");
    EXPECT_EQ(collationLocale(environment), "sv_SE.UTF-8");
    environment.set("LC_ALL", "");
    EXPECT_EQ(collationLocale(environment), "sv_SE.UTF-8");
    environment.set("LC_ALL", "C");
    EXPECT_EQ(collationLocale(environment), "C");
}

}  // namespace
}  // namespace tavrel
