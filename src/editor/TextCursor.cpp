#include "editor/TextCursor.h"

#include "editor/TextTree.h"

#include <utility>

namespace tavrel {

TextCursor::TextCursor(TextSnapshot text, std::size_t position)
    : text_(std::move(text)), length_(text_.length()),
      position_(position < length_ ? position : length_)
{
}

TextPiece TextCursor::piece()
{
    if (position_ == length_)
        return {};
    unitAt(position_);
    const std::size_t offset = position_ - blockStart_;
    return {narrow_ ? narrow_ + offset : nullptr, wide_ ? wide_ + offset : nullptr,
            blockLength_ - offset, isAscii_};
}

char16_t TextCursor::unitElsewhere(std::size_t location)
{
    if (location >= length_)
        return 0;
    const TextTreePlace place = placeOfUnit(*text_.root(), location);
    const TextBlock& block = *place.entry->block;
    narrow_ = block.narrowUnits();
    wide_ = block.wideUnits();
    blockStart_ = place.before.units;
    blockLength_ = block.length();
    isAscii_ = block.isAscii();
    return block.unitAt(location - blockStart_);
}

}  // namespace tavrel
