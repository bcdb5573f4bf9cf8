#include "platform/Graphemes.h"

#include "platform/Unicode.h"

#include <algorithm>
#include <cstdint>
#include <unicode/ubrk.h>
#include <unicode/uchar.h>

namespace tavrel {
namespace {

/// Units below this neither extend a cluster nor join with a neighbour, except CR with LF.
/// The soft hyphen and the controls break on both sides like the rest.
constexpr char16_t firstJoiningUnit = 0x0300;

/// Whether `unit` is a character that leaves all joining to its neighbours. Two in a row break.
bool joinsNothing(char16_t unit)
{
    return unit < firstJoiningUnit
               ? unit >= u' ' && unit != 0x7F
               : !isSurrogate(unit) &&
                     u_getIntPropertyValue(unit, UCHAR_GRAPHEME_CLUSTER_BREAK) == U_GCB_OTHER;
}

bool splitsPair(std::u16string_view text, std::size_t offset)
{
    return offset > 0 && offset < text.size() && isHighSurrogate(text[offset - 1]) &&
           isLowSurrogate(text[offset]);
}

}  // namespace

void Graphemes::Close::operator()(UBreakIterator* iterator) const
{
    ubrk_close(iterator);
}

Graphemes::Graphemes(std::u16string_view text) : text_(text) {}
Graphemes::~Graphemes() = default;
Graphemes::Graphemes(Graphemes&&) noexcept = default;
Graphemes& Graphemes::operator=(Graphemes&&) noexcept = default;

bool Graphemes::isCertainBoundary(std::size_t offset) const
{
    if (offset == 0 || offset >= text_.size())
        return true;
    const char16_t before = text_[offset - 1];
    const char16_t behind = text_[offset];
    if (before < firstJoiningUnit && behind < firstJoiningUnit)
        return !(before == u'\r' && behind == u'\n');
    return joinsNothing(before) && joinsNothing(behind);
}

/// Moves the iterator's window so that it reaches well to both sides of `offset`.
void Graphemes::look(std::size_t offset)
{
    if (!iterator_) {
        UErrorCode status = U_ZERO_ERROR;
        iterator_.reset(ubrk_open(UBRK_CHARACTER, "", nullptr, 0, &status));
        if (U_FAILURE(status))
            iterator_.reset();
    }
    // The window begins at a boundary where one is near, so that what it shows is true.
    const std::size_t limit = offset > maximumReach ? offset - maximumReach : 0;
    std::size_t start = offset;
    while (start > limit && (start == offset || !isCertainBoundary(start)))
        --start;
    windowStart_ = splitsPair(text_, start) ? start - 1 : start;
    windowEnd_ = std::min(text_.size(), offset + maximumReach);
    if (splitsPair(text_, windowEnd_))
        ++windowEnd_;
    if (iterator_) {
        UErrorCode status = U_ZERO_ERROR;
        ubrk_setText(iterator_.get(), text_.data() + windowStart_,
                     static_cast<std::int32_t>(windowEnd_ - windowStart_), &status);
    }
}

bool Graphemes::isBoundary(std::size_t offset)
{
    if (isCertainBoundary(offset))
        return true;
    look(offset);
    return !iterator_ ||
           ubrk_isBoundary(iterator_.get(), static_cast<std::int32_t>(offset - windowStart_)) != 0;
}

std::size_t Graphemes::next(std::size_t offset)
{
    if (offset >= text_.size())
        return text_.size();
    if (isCertainBoundary(offset + 1))
        return offset + 1;
    look(offset);
    if (!iterator_)
        return offset + 1;
    const std::int32_t found =
        ubrk_following(iterator_.get(), static_cast<std::int32_t>(offset - windowStart_));
    return found == UBRK_DONE ? windowEnd_ : windowStart_ + static_cast<std::size_t>(found);
}

std::size_t Graphemes::previous(std::size_t offset)
{
    offset = std::min(offset, text_.size());
    if (offset == 0)
        return 0;
    if (isCertainBoundary(offset - 1))
        return offset - 1;
    look(offset);
    if (!iterator_)
        return offset - 1;
    // The library takes an offset inside a pair for the start of the pair.
    if (splitsPair(text_, offset))
        ++offset;
    const std::int32_t found =
        ubrk_preceding(iterator_.get(), static_cast<std::int32_t>(offset - windowStart_));
    return found == UBRK_DONE ? windowStart_ : windowStart_ + static_cast<std::size_t>(found);
}

std::size_t Graphemes::nearest(std::size_t offset)
{
    offset = std::min(offset, text_.size());
    if (isBoundary(offset))
        return offset;
    const std::size_t before = previous(offset);
    const std::size_t behind = next(offset);
    return offset - before <= behind - offset ? before : behind;
}

std::size_t Graphemes::count()
{
    std::size_t clusters = 0;
    for (std::size_t offset = 0; offset < text_.size(); offset = next(offset))
        ++clusters;
    return clusters;
}

}  // namespace tavrel
