#include "editor/views/ViewRows.h"

#include "editor/views/EditorFont.h"

#include <algorithm>

namespace tavrel {

double TextRow::xAt(std::size_t location) const
{
    const std::size_t inRow = std::clamp(location, start(), contentEnd());
    return layout->xAt(index, inRow - segment.start);
}

void ViewRows::setText(TextSnapshot text)
{
    text_ = std::move(text);
    cache_.clear();
}

void ViewRows::replaceText(TextSnapshot text, TextRange range, std::size_t newLength)
{
    text_ = std::move(text);
    cache_.replace(range, newLength);
}

void ViewRows::setFont(const EditorFont& font)
{
    font_ = &font;
    cache_.clear();
}

void ViewRows::setWrap(const WrapSettings& wrap)
{
    if (wrap == wrap_)
        return;
    wrap_ = wrap;
    cache_.clear();
}

TextRow ViewRows::row(std::size_t location) const
{
    location = std::min(location, text_.length());
    const SegmentCache::Entry* entry = cache_.find(location);
    if (!entry) {
        const LineSegment segment = segmentAt(text_, location);
        std::u16string units = text_.text({segment.start, segment.end - segment.start});
        entry = cache_.insert(segment, SegmentLayout::make(std::move(units), *font_, wrap_));
    }
    const LineSegment& segment = entry->segment;
    const std::size_t inContent = std::min(location, segment.end) - segment.start;
    return {segment, entry->layout, entry->layout->rowAt(inContent)};
}

std::optional<TextRow> ViewRows::rowAfter(const TextRow& row) const
{
    if (!row.isLastOfSegment())
        return TextRow{row.segment, row.layout, row.index + 1};
    // The text ends where a line ends without a terminator.
    if (row.segment.isLastOfLine && row.segment.nextStart == row.segment.end)
        return std::nullopt;
    return this->row(row.segment.nextStart);
}

std::optional<TextRow> ViewRows::rowBefore(const TextRow& row) const
{
    if (row.index > 0)
        return TextRow{row.segment, row.layout, row.index - 1};
    if (row.segment.start == 0)
        return std::nullopt;
    TextRow before = this->row(row.segment.start - 1);
    before.index = before.layout->rowCount() - 1;
    return before;
}

std::size_t ViewRows::estimate(std::size_t location) const
{
    const double columns = wrap_.wraps ? wrap_.width / std::max(font_->advance(), 1.0) : 1e9;
    const auto perRow = static_cast<std::size_t>(std::clamp(columns, 1.0, 1e9));
    return text_.lineIndexAt(location) + location / perRow;
}

std::size_t ViewRows::locationOfEstimate(std::size_t wanted) const
{
    std::size_t low = 0;
    std::size_t high = text_.length();
    while (low < high) {
        const std::size_t middle = low + (high - low) / 2;
        if (estimate(middle) < wanted)
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

std::size_t ViewRows::locationAt(TextRange range, double x) const
{
    const TextRow row = this->row(range.location);
    const RowHit hit = row.layout->hitAt(row.index, x);
    const std::size_t location = row.segment.start + hit.nearestEdge();
    if (row.isLastOfSegment() && row.segment.isLastOfLine)
        return location;
    // The end of a wrapped row shows on the next one, so the row's last character is as far as it
    // goes.
    if (location < row.end())
        return location;
    return row.segment.start + row.layout->hitAt(row.index, 1e9).start;
}

}  // namespace tavrel
