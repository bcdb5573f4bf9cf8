#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavrel {

/// One piece of an ignore pattern, and the part of the regular expression that it stands for.
struct IgnoreStep {
    enum class Kind : std::uint8_t {
        character,       // That character.
        notSlash,        // "?": one character, no slash.
        notSlashes,      // "*": any number of them.
        folders,         // "**/": any number of names with a slash behind each.
        anything,        // "**": any text without a line terminator.
        characterClass,  // "[…]": one character of a set.
    };
    Kind kind = Kind::character;
    char32_t character = 0;
    std::u16string expression;
};

/// An ignore pattern as a regular expression, and the same in steps.
struct IgnoreTranslation {
    /// Whether a match begins at the start of the path. Otherwise it begins there or behind any
    /// slash, as long as no line terminator stands before it.
    bool isAnchored = false;
    std::vector<IgnoreStep> steps;
    std::u16string expression;  // Anchored at both ends. It may fail to compile.
};

/// Translates what is left of a line once the marks around the pattern are gone.
IgnoreTranslation translateIgnorePattern(std::u16string_view pattern);

}  // namespace tavrel
