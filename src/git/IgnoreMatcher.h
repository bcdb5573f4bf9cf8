#pragma once

#include "git/CharacterClass.h"
#include "git/IgnoreTranslation.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavrel {

/// A path below the folder of an ignore file, ready to be matched: valid UTF-8, no slash at
/// either end, no empty component. Borrows its bytes.
struct IgnorePath {
    std::string_view path;
    std::string_view name;  // The last component.
    bool isPlain = true;    // Whether the path holds no line terminator.
};

/// Whether no character of `path`, which is UTF-8, ends a line.
bool isPlainPath(std::string_view path);

/// Tells which paths the regular expression of an ignore pattern matches, in time bounded by the
/// product of the lengths of path and pattern.
///
/// Gives the answers of the expression itself: most patterns are a comparison of strings, and the
/// rest run all their possible positions side by side, one bit each. So no pattern of a foreign
/// repository can make the walk through it endless. A value; shared freely between threads.
class IgnoreMatcher {
public:
    /// Absent where the regular expression for `pattern` does not compile.
    static std::optional<IgnoreMatcher> make(std::u16string_view pattern);

    bool matches(const IgnorePath& path) const;

    /// The regular expression for the pattern. Made anew.
    std::u16string expression() const { return translateIgnorePattern(pattern_).expression; }

private:
    enum class Shape : std::uint8_t {
        name,        // Floating, characters alone: the last component is `literal_`.
        nameSuffix,  // Floating, "*" and characters: it ends in `literal_`.
        namePrefix,  // Floating, characters and "*": it starts with `literal_`.
        path,        // Anchored, characters alone: the path is `literal_`.
        pathPrefix,  // Anchored, characters and "**": the path starts with `literal_`.
        general,
    };
    struct Program;

    IgnoreMatcher() = default;
    void setShape(const IgnoreTranslation& translation);
    bool matchesPlain(const IgnorePath& path) const;

    std::u16string pattern_;
    Shape shape_ = Shape::general;
    std::string literal_;  // For `general`, what every plain path that matches ends in.
    std::shared_ptr<const Program>
        program_;  // For `general`; the others need one for paths that are not plain only.
};

}  // namespace tavrel
