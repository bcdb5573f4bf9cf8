#pragma once

#include "highlight/SyntaxToken.h"
#include "platform/TextRange.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace tavrel {

/// A text that never changes: a tree over immutable, shared blocks of UTF-16 code units.
///
/// A value. Copying costs a reference count whatever the length, and a copy may be read on any
/// thread while the storage it was taken from goes on changing. All locations are UTF-16 code
/// units from 0; half of a surrogate pair is a location like any other, and lone surrogates are
/// legal. Ranges out of bounds are clamped.
///
/// Two notions of a line stand side by side:
/// - a *line* ends at LF, CR, CR LF, U+0085, U+2028 or U+2029 (commands, layout, go to line);
/// - an *LF line* ends at LF alone (the gutter's numbers and git marks).
/// Both count from 0, and a text that ends in a terminator has an empty last line behind it.
class TextSnapshot {
public:
    TextSnapshot() = default;
    explicit TextSnapshot(std::u16string_view text);

    std::size_t length() const;
    bool isEmpty() const { return length() == 0; }

    /// The unit at `location`, which must lie in the text. O(log n); walk many with `TextCursor`.
    char16_t unitAt(std::size_t location) const;

    /// A copy of the units of `range`.
    std::u16string text(TextRange range) const;
    std::u16string text() const { return text({0, length()}); }

    /// The text of `range` with its raw bytes and tokens, sharing the blocks that it covers whole.
    /// O(log n) and the copying of at most two blocks.
    TextSnapshot slice(TextRange range) const;

    /// Calls `visit` with the units of `range`, piece by piece in order, until it answers false.
    /// A piece is valid for the length of the call.
    void forEachChunk(TextRange range,
                      const std::function<bool(std::u16string_view chunk)>& visit) const;

    /// Number of lines: 1 and the number of terminators.
    std::size_t lineCount() const;
    /// The line that holds `location` (the last one for a location at the end or past it).
    std::size_t lineIndexAt(std::size_t location) const;
    /// Where line `index` starts; the text's length for an index past the last line.
    std::size_t lineStart(std::size_t index) const;
    /// The lines that `range` touches, terminators included. An empty range at the end of a text
    /// that ends in a terminator has an empty line range.
    TextRange lineRange(TextRange range) const;
    /// End of the content of the line at `location`: where its terminator begins.
    std::size_t lineContentEnd(std::size_t location) const;

    /// The same three for LF lines.
    std::size_t lfLineCount() const;
    std::size_t lfLineIndexAt(std::size_t location) const;
    std::size_t lfLineStart(std::size_t index) const;

    /// Compares the units. Shared blocks are not looked at, so equal snapshots compare at once.
    bool operator==(const TextSnapshot& other) const;
    bool operator==(std::u16string_view other) const;
};

}  // namespace tavrel
