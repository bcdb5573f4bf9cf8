#include "platform/Collator.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <unicode/ucol.h>
#include <unicode/uloc.h>

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

std::int32_t libraryLength(std::u16string_view text)
{
    constexpr std::size_t maximum = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::min(text.size(), maximum));
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
}

std::strong_ordering Collator::compare(std::u16string_view left, std::u16string_view right) const
{
    if (collator_) {
        const UCollationResult result = ucol_strcoll(
            collator_.get(), left.data(), libraryLength(left), right.data(), libraryLength(right));
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
                ucol_getSortKey(collator_.get(), text.data(), libraryLength(text),
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

}  // namespace tavrel
