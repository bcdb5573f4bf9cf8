#include "editor/TextDifference.h"

#include "editor/TextSnapshot.h"

#include <algorithm>
#include <string>

namespace tavrel {

namespace {

constexpr char16_t replacementCharacter = u'\xFFFD';
constexpr std::size_t stretchLength = 64 * 1024;  // Units compared at once.

bool hasReplacementCharacter(const TextSnapshot& text)
{
    bool found = false;
    text.forEachPiece({0, text.length()}, [&found](const TextPiece& piece) {
        const char16_t* end = piece.wide + (piece.wide ? piece.length : 0);
        found = piece.wide && std::find(piece.wide, end, replacementCharacter) != end;
        return !found;
    });
    return found;
}

/// Whether both stretches hold the same units, none of which may stand for raw bytes.
bool isSameStretch(const TextSnapshot& before, TextRange beforeRange, const TextSnapshot& after,
                   TextRange afterRange)
{
    const TextSnapshot slice = before.slice(beforeRange);
    return slice == after.slice(afterRange) && !hasReplacementCharacter(slice);
}

bool isSameUnit(char16_t left, char16_t right)
{
    return left == right && left != replacementCharacter;
}

/// The length of what both texts begin with, at most `most`.
std::size_t commonPrefix(const TextSnapshot& before, const TextSnapshot& after, std::size_t most)
{
    std::size_t length = 0;
    while (length < most) {
        const TextRange next{length, std::min(stretchLength, most - length)};
        if (!isSameStretch(before, next, after, next)) {
            const std::u16string left = before.text(next);
            const std::u16string right = after.text(next);
            const auto end = std::mismatch(left.begin(), left.end(), right.begin(), isSameUnit);
            return length + static_cast<std::size_t>(end.first - left.begin());
        }
        length += next.length;
    }
    return length;
}

/// The length of what both texts end with, at most `most`.
std::size_t commonSuffix(const TextSnapshot& before, const TextSnapshot& after, std::size_t most)
{
    std::size_t length = 0;
    while (length < most) {
        const std::size_t step = std::min(stretchLength, most - length);
        const TextRange ofBefore{before.length() - length - step, step};
        const TextRange ofAfter{after.length() - length - step, step};
        if (!isSameStretch(before, ofBefore, after, ofAfter)) {
            const std::u16string left = before.text(ofBefore);
            const std::u16string right = after.text(ofAfter);
            const auto end = std::mismatch(left.rbegin(), left.rend(), right.rbegin(), isSameUnit);
            return length + static_cast<std::size_t>(end.first - left.rbegin());
        }
        length += step;
    }
    return length;
}

}  // namespace

std::optional<TextEdit> differingStretch(const TextSnapshot& before, const TextSnapshot& after)
{
    if (before.root() == after.root())
        return std::nullopt;
    const std::size_t most = std::min(before.length(), after.length());
    const std::size_t prefix = commonPrefix(before, after, most);
    const std::size_t suffix = commonSuffix(before, after, most - prefix);
    const TextRange replaced{prefix, before.length() - prefix - suffix};
    const TextRange kept{prefix, after.length() - prefix - suffix};
    if (replaced.isEmpty() && kept.isEmpty())
        return std::nullopt;
    return TextEdit{replaced, after.slice(kept)};
}

}  // namespace tavrel
