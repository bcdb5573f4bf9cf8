#pragma once

#include "editor/BlockMemory.h"
#include "editor/TextBlock.h"
#include "editor/TextSnapshot.h"
#include "editor/TextTree.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tavrel {

/// Reads the bytes of a file as UTF-8, piece by piece.
///
/// No byte is lost: each maximal part that cannot begin a well-formed sequence (a surrogate, an
/// overlong form, a stray byte, a sequence that is cut short) becomes one U+FFFD that remembers its
/// 1 to 3 bytes, and `forEachUtf8Chunk` writes those again. A byte-order mark stays in the text.
class TextDecoder {
public:
    explicit TextDecoder(std::size_t blockSize = TextSnapshot::defaultBlockSize);

    /// The next bytes. A sequence may lie across several calls.
    void feed(std::string_view bytes);

    /// The text of all bytes so far. The decoder starts afresh.
    TextSnapshot finish();

private:
    void decode(const std::uint8_t* bytes, std::size_t count);
    std::size_t takeAscii(const std::uint8_t* bytes, std::size_t count);
    void appendSequence(const std::uint8_t* bytes, std::size_t count);
    void appendInvalid(const std::uint8_t* bytes, std::size_t count);
    void appendUnit(char16_t unit);
    void flush();

    std::size_t blockSize_;
    BlockMemory memory_;
    std::vector<TextTreeEntry> entries_;
    std::vector<char16_t> units_;  // Of the block that is being filled; as long as a block.
    std::size_t unitCount_ = 0;
    std::vector<RawByteMark> marks_;
    std::array<std::uint8_t, 4> partial_{};  // The begin of a sequence that may go on.
    std::size_t partialCount_ = 0;
};

/// The text of a file that lies in memory.
TextSnapshot decodedText(std::string_view bytes,
                         std::size_t blockSize = TextSnapshot::defaultBlockSize);

}  // namespace tavrel
