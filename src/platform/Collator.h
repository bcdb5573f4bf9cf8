#pragma once

#include <compare>
#include <memory>
#include <string>
#include <string_view>

struct UCollator;

namespace tavrel {

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

    /// The key of `text`. Costs several times a comparison.
    CollationKey key(std::u16string_view text) const;

private:
    struct Close {
        void operator()(UCollator* collator) const;
    };
    std::unique_ptr<UCollator, Close> collator_;  // None when the library has no data at all.
};

}  // namespace tavrel
