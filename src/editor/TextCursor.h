#pragma once

#include "editor/TextSnapshot.h"

#include <cstddef>
#include <cstdint>

namespace tavrel {

/// Reads the units of a snapshot one by one, near each other in O(1), anywhere in O(log n).
///
/// Holds the snapshot and the place of one of its blocks. A value; one cursor is for one thread at
/// a time.
class TextCursor {
public:
    explicit TextCursor(TextSnapshot text, std::size_t position = 0);

    const TextSnapshot& text() const { return text_; }
    std::size_t length() const { return length_; }

    /// The unit at `location`; at or past the end it is U+0000.
    char16_t unitAt(std::size_t location)
    {
        // Locations before the block wrap around to huge offsets.
        const std::size_t offset = location - blockStart_;
        if (offset < blockLength_) [[likely]]
            return narrow_ ? static_cast<char16_t>(narrow_[offset]) : wide_[offset];
        return unitElsewhere(location);
    }

    /// A location from 0 to the length of the text.
    std::size_t position() const { return position_; }
    void setPosition(std::size_t position) { position_ = position < length_ ? position : length_; }
    bool isAtStart() const { return position_ == 0; }
    bool isAtEnd() const { return position_ == length_; }

    /// The unit behind the position, and the one before it; U+0000 where there is none.
    char16_t peekNext() { return unitAt(position_); }
    char16_t peekPrevious() { return position_ == 0 ? u'\0' : unitAt(position_ - 1); }
    /// The same, moving over it.
    char16_t next()
    {
        const char16_t unit = unitAt(position_);
        position_ += position_ < length_;
        return unit;
    }
    char16_t previous() { return position_ == 0 ? u'\0' : unitAt(--position_); }

    /// The units from the position to the end of its block, empty at the end of the text. Valid
    /// while the cursor lives.
    TextPiece piece();

private:
    char16_t unitElsewhere(std::size_t location);

    TextSnapshot text_;
    std::size_t length_;
    std::size_t position_;
    const std::uint8_t* narrow_ = nullptr;  // The block's units lie in one of the two.
    const char16_t* wide_ = nullptr;
    std::size_t blockStart_ = 0;
    std::size_t blockLength_ = 0;  // 0 before the first block is looked up.
    bool isAscii_ = false;
};

}  // namespace tavrel
