#pragma once

#include "platform/RegularExpression.h"

#include <bitset>
#include <optional>
#include <string_view>

namespace tavrel {

/// A set of characters, written as a bracket expression whose meaning the regular expression
/// library decides. A value; may be asked by several threads at once.
class CharacterClass {
public:
    static constexpr std::size_t asciiCount = 128;

    /// Absent where `expression` is not one whole set.
    static std::optional<CharacterClass> compile(std::u16string_view expression);

    /// A look-up, but for characters beyond ASCII in sets that name such characters or hold other
    /// sets: these take a match of the library, about a microsecond.
    bool contains(char32_t character) const;

private:
    explicit CharacterClass(RegularExpression expression);

    std::bitset<asciiCount> ascii_;
    std::optional<bool> beyondAscii_;  // What holds for all other characters, where one thing does.
    RegularExpression expression_;
};

}  // namespace tavrel
