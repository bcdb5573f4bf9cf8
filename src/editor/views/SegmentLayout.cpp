#include "editor/views/SegmentLayout.h"

#include "editor/views/ColumnLayout.h"
#include "editor/views/EditorFont.h"
#include "editor/views/RowWrap.h"
#include "editor/views/ShapedLayout.h"

#include <algorithm>

namespace tavrel {

std::shared_ptr<const SegmentLayout>
SegmentLayout::make(std::u16string text, const EditorFont& font, const WrapSettings& settings)
{
    if (font.hasColumns() && isColumnText(text))
        return std::make_shared<ColumnLayout>(std::move(text), font, settings);
    return std::make_shared<ShapedLayout>(std::move(text), font, settings);
}

std::size_t SegmentLayout::rowAt(std::size_t offset) const
{
    const auto behind = std::upper_bound(rowStarts_.begin(), rowStarts_.end(), offset);
    return static_cast<std::size_t>(behind - rowStarts_.begin()) - 1;
}

}  // namespace tavrel
