#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct UCollator;

namespace tavrel {

class Environment;

/// What a text sorts by: keys compare as their texts do, and only equal texts have equal keys.
///
/// A value, for lists where each text is compared many times. Keys of different collators must not
/// be compared.
class CollationKey {
public:
    auto operator<=>(const CollationKey&) const = default;

private:
    friend class Collator;
    explicit CollationKey(std::string bytes) : bytes_(std::move(bytes)) {}

    std::string
        bytes_;  // The library's key, its closing 0, then the text's units, high byte first.
};

/// The order in which the user's locale lists names: accents count, case does not. Texts that are
/// equal so far are ordered by their code units, so only equal texts are equal.
///
/// Never changes after it is made; may be used by several threads at once.
class Collator {
public:
    /// `locale` is a name as the environment gives it, like "de_DE.UTF-8". "C", "POSIX", an empty
    /// and an unknown name stand for the root locale.
    explicit Collator(const std::string& locale);

    std::strong_ordering compare(std::u16string_view left, std::u16string_view right) const;

    /// The same order for UTF-8, without a conversion: texts of printable ASCII are compared by a
    /// table, which is many times as fast. Bytes that are not UTF-8 count as U+FFFD; texts that are
    /// equal so far are ordered by their bytes.
    std::strong_ordering compareUtf8(std::string_view left, std::string_view right) const;

    /// The key of `text`. Costs several times a comparison.
    CollationKey key(std::u16string_view text) const;

private:
    struct Close {
        void operator()(UCollator* collator) const;
    };
    void rankAscii();

    std::unique_ptr<UCollator, Close> collator_;  // None when the library has no data at all.
    bool hasAsciiRanks_ = false;                  // False where the locale joins ASCII letters.
    std::array<std::uint8_t, 128> asciiRanks_{};  // 0 for characters that are not printable.
};

/// The name of the locale that a program with this environment sorts by.
std::string collationLocale(const Environment& environment);

}  // namespace tavrel
