#include "platform/Collator.h"

#include "platform/Environment.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <unicode/ucol.h>
#include <unicode/uloc.h>
#include <unicode/uset.h>

namespace tavrel {
namespace {

/// The library's name for a locale of the environment; "" is the root.
std::string localeName(const std::string& locale)
{
    const std::string language = locale.substr(0, locale.find_first_of(".@"));
    if (language.empty() || language == "C" || language == "POSIX")
        return "";
    char name[ULOC_FULLNAME_CAPACITY] = "";
    UErrorCode status = U_ZERO_ERROR;
    uloc_canonicalize(locale.c_str(), name, sizeof name, &status);
    const bool complete = U_SUCCESS(status) && status != U_STRING_NOT_TERMINATED_WARNING;
    return complete ? name : "";
}

UCollator* open(const std::string& name)
{
    UErrorCode status = U_ZERO_ERROR;
    UCollator* collator = ucol_open(name.c_str(), &status);
    if (U_FAILURE(status)) {
        ucol_close(collator);
        return nullptr;
    }
    ucol_setStrength(collator, UCOL_SECONDARY);
    return collator;
}

std::int32_t libraryLength(std::size_t length)
{
    constexpr std::size_t maximum = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::min(length, maximum));
}

/// Looks at every byte, so that the compiler can take many at once.
bool isPrintableAscii(std::string_view text)
{
    unsigned others = 0;
    for (const char byte : text)
        others |= static_cast<unsigned char>(byte - 0x20) >= 0x7F - 0x20 ? 1U : 0U;
    return others == 0;
}

/// Whether the locale sees two or more ASCII characters as one, as "ch" or "aa".
bool joinsAscii(const UCollator* collator)
{
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<USet, decltype(&uset_close)> joined(uset_openEmpty(), uset_close);
    ucol_getContractionsAndExpansions(collator, joined.get(), nullptr, true, &status);
    if (U_FAILURE(status))
        return true;
    const std::int32_t count = uset_getItemCount(joined.get());
    for (std::int32_t index = 0; index < count; ++index) {
        std::array<UChar, 64> text{};
        UChar32 start = 0;
        UChar32 end = 0;
        const std::int32_t length = uset_getItem(joined.get(), index, &start, &end, text.data(),
                                                 static_cast<std::int32_t>(text.size()), &status);
        if (U_FAILURE(status))
            return true;
        if (length >= 2 && std::all_of(text.begin(), text.begin() + length,
                                       [](UChar unit) { return unit < 0x80; }))
            return true;
    }
    return false;
}

}  // namespace

void Collator::Close::operator()(UCollator* collator) const
{
    ucol_close(collator);
}

Collator::Collator(const std::string& locale) : collator_(open(localeName(locale)))
{
    if (!collator_)
        collator_.reset(open(""));
    if (collator_ && !joinsAscii(collator_.get()))
        rankAscii();
}

/// Numbers the printable characters by asking the library for the order of each two. Where none of
/// them joins another, comparing texts by these numbers is what the library does.
void Collator::rankAscii()
{
    std::array<char16_t, 0x7F - 0x20> characters{};
    for (std::size_t index = 0; index < characters.size(); ++index)
        characters[index] = static_cast<char16_t>(0x20 + index);
    const auto order = [&](char16_t left, char16_t right) {
        return ucol_strcoll(collator_.get(), &left, 1, &right, 1);
    };
    std::sort(characters.begin(), characters.end(),
              [&](char16_t left, char16_t right) { return order(left, right) == UCOL_LESS; });
    if (order(characters.front(), u'\0') == UCOL_EQUAL)
        return;  // The locale passes over blanks or punctuation.
    std::uint8_t rank = 1;
    for (std::size_t index = 0; index < characters.size(); ++index) {
        if (index > 0 && order(characters[index - 1], characters[index]) != UCOL_EQUAL)
            ++rank;
        asciiRanks_[characters[index]] = rank;
    }
    hasAsciiRanks_ = true;
}

std::strong_ordering Collator::compareUtf8(std::string_view left, std::string_view right) const
{
    if (hasAsciiRanks_ && isPrintableAscii(left) && isPrintableAscii(right)) {
        const auto [first, second] = std::mismatch(
            left.begin(), left.end(), right.begin(), right.end(), [&](char one, char other) {
                return asciiRanks_[static_cast<unsigned char>(one)] ==
                       asciiRanks_[static_cast<unsigned char>(other)];
            });
        if (first != left.end() && second != right.end())
            return asciiRanks_[static_cast<unsigned char>(*first)] <=>
                   asciiRanks_[static_cast<unsigned char>(*second)];
        if (left.size() != right.size())
            return left.size() <=> right.size();
    } else if (collator_) {
        UErrorCode status = U_ZERO_ERROR;
        const UCollationResult result =
            ucol_strcollUTF8(collator_.get(), left.data(), libraryLength(left.size()), right.data(),
                             libraryLength(right.size()), &status);
        if (result != UCOL_EQUAL)
            return result == UCOL_LESS ? std::strong_ordering::less : std::strong_ordering::greater;
    }
    return left <=> right;
}

std::strong_ordering Collator::compare(std::u16string_view left, std::u16string_view right) const
{
    if (collator_) {
        const UCollationResult result =
            ucol_strcoll(collator_.get(), left.data(), libraryLength(left.size()), right.data(),
                         libraryLength(right.size()));
        if (result != UCOL_EQUAL)
            return result == UCOL_LESS ? std::strong_ordering::less : std::strong_ordering::greater;
    }
    return left <=> right;
}

CollationKey Collator::key(std::u16string_view text) const
{
    std::string bytes;
    if (collator_) {
        // Most keys are no longer than twice their text; the second round is for the others.
        bytes.resize(2 * text.size() + 16);
        for (;;) {
            const std::int32_t needed =
                ucol_getSortKey(collator_.get(), text.data(), libraryLength(text.size()),
                                reinterpret_cast<std::uint8_t*>(bytes.data()),
                                static_cast<std::int32_t>(std::min<std::size_t>(
                                    bytes.size(), std::numeric_limits<std::int32_t>::max())));
            const bool complete = static_cast<std::size_t>(needed) <= bytes.size();
            bytes.resize(static_cast<std::size_t>(needed));
            if (complete)
                break;
        }
    }
    bytes.reserve(bytes.size() + 2 * text.size());
    for (const char16_t unit : text) {
        bytes.push_back(static_cast<char>(unit >> 8));
        bytes.push_back(static_cast<char>(unit & 0xFF));
    }
    return CollationKey(std::move(bytes));
}

std::string collationLocale(const Environment& environment)
{
    for (const char* name : {"LC_ALL", "LC_COLLATE", "LANG"}) {
        const auto value = environment.value(name);
        if (value && !value->empty())
            return *value;
    }
    return "C";
}

}  // namespace tavrel
