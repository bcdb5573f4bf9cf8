#pragma once

#include "editor/SharedRef.h"
#include "highlight/TokenRuns.h"
#include "platform/TextRange.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tavrel {

class TextNode;
void retain(const TextNode* node);
void release(const TextNode* node);

/// Some units that lie side by side in memory, in one of two forms.
struct TextPiece {
    const std::uint8_t* narrow = nullptr;  // One byte a unit, U+0000 to U+00FF; or null, and then
    const char16_t* wide = nullptr;        // two bytes a unit.
    std::size_t length = 0;
    bool isAscii = false;  // Known to be narrow units below U+0080.
};

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
///
/// Beside its units a text holds a `SyntaxToken` for each, and marks on those U+FFFD that stand for
/// bytes which were no UTF-8 in the file. Neither takes part in comparisons.
class TextSnapshot {
public:
    /// Units in a block of a text that is read or pasted. Larger blocks make a batch of edits copy
    /// and touch more memory, smaller ones a deeper tree; this is where both are cheap.
    static constexpr std::size_t defaultBlockSize = 3072;

    TextSnapshot() = default;
    explicit TextSnapshot(std::u16string_view text, std::size_t blockSize = defaultBlockSize);
    /// For those who build trees. May be null.
    explicit TextSnapshot(SharedRef<const TextNode> root) : root_(std::move(root)) {}

    std::size_t length() const;
    bool isEmpty() const { return length() == 0; }

    /// The unit at `location`; at or past the end it is U+0000. O(log n); walk many with
    /// `TextCursor`.
    char16_t unitAt(std::size_t location) const;

    /// A copy of the units of `range`.
    std::u16string text(TextRange range) const;
    std::u16string text() const { return text({0, length()}); }

    /// The text of `range` with its raw bytes and tokens, sharing the blocks that it covers whole.
    /// O(log n) and the copying of at most a few blocks.
    TextSnapshot slice(TextRange range) const;

    /// Calls `visit` with the units of `range`, chunk by chunk in order, until it answers false.
    /// A chunk is never empty and is valid for the length of the call.
    void forEachChunk(TextRange range,
                      const std::function<bool(std::u16string_view chunk)>& visit) const;
    /// The same without decoding; a piece is valid for as long as this snapshot or a copy of it.
    void forEachPiece(TextRange range,
                      const std::function<bool(const TextPiece& piece)>& visit) const;

    /// Number of lines: 1 and the number of terminators. O(1).
    std::size_t lineCount() const;
    /// The line that holds `location` (the last one for a location at the end or past it). Between
    /// CR and LF it is the line that they end. O(log n), like all that follow.
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

    /// The token of the unit at `location`; at or past the end it is `SyntaxToken::foreground`.
    SyntaxToken tokenAt(std::size_t location) const;
    /// The tokens of `range`, as a stretch of its own.
    TokenRuns tokens(TextRange range) const;

    /// The 1 to 3 bytes that the U+FFFD at `location` stands for; absent where it is a unit like
    /// any other.
    std::optional<std::string> rawBytesAt(std::size_t location) const;

    /// Compares the units. What both share is not looked at, so a copy compares equal at once.
    bool operator==(const TextSnapshot& other) const;
    bool operator==(std::u16string_view other) const;

    /// Bytes of memory that blocks, marks, tokens and nodes take, shared ones included. O(n).
    std::size_t memoryBytes() const;

    /// Null for the empty text.
    const SharedRef<const TextNode>& root() const { return root_; }

private:
    SharedRef<const TextNode> root_;
};

}  // namespace tavrel
