// What clicks in the text of a pane do beyond moving the cursor.

#include "editor/EditorPane.h"

#include "editor/ColorLiterals.h"
#include "editor/LinkAtOffset.h"
#include "editor/SearchResultLines.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tavrel {

namespace {

std::uint8_t colorByte(double component)
{
    const double within = component > 0.0 ? std::min(component, 1.0) : 0.0;  // No number is 0 too.
    return static_cast<std::uint8_t>(std::lround(within * 255.0));
}

}  // namespace

bool EditorPane::clickedAt(std::size_t offset)
{
    if (!activeTab().isSearchResults || !delegate_)
        return false;
    const std::optional<SearchResultPlace> place = searchResultAt(text(), offset);
    if (!place)
        return false;
    const std::filesystem::path path = utf8FromUtf16(place->path);
    if (!files_.documentFiles().identity(path))
        return false;
    EditorPane* shown = delegate_->editorPaneWantsFileShown(*this, path);
    if (!shown)
        return false;
    shown->selectLine(place->line);
    return true;
}

void EditorPane::selectLine(std::int64_t number)
{
    const auto last = static_cast<std::int64_t>(text().lineCount());
    const auto index = static_cast<std::size_t>(std::clamp<std::int64_t>(number, 1, last) - 1);
    const std::size_t start = text().lineStart(index);
    const TextRange line{start, text().lineContentEnd(start) - start};
    clearSecondaryCursors();
    setSelectedRange(line);
    scrollToVisible(line);
}

std::optional<std::u16string> EditorPane::linkAt(std::size_t offset) const
{
    if (activeTab().isSearchResults || activeTab().language->id != LanguageMode::plain().id)
        return std::nullopt;
    const std::optional<TextRange> range = linkAtOffset(text(), offset);
    return range ? std::optional(text().text(*range)) : std::nullopt;
}

bool EditorPane::beginColorPicking(std::size_t offset)
{
    const std::optional<ColorLiteral> literal = colorLiteralAt(text(), offset);
    if (!literal)
        return false;
    clearSecondaryCursors();
    colorPanelReplacementRange_ = literal->range;
    setSelectedRange(literal->range);
    scrollToVisible(literal->range);
    if (view_) {
        view_->paneWantsFocus();
        view_->paneWantsColorPanel(literal->color);
    }
    return true;
}

void EditorPane::pickColor(double red, double green, double blue)
{
    if (!colorPanelReplacementRange_)
        return;
    const TextRange range = *colorPanelReplacementRange_;
    if (range.length != ColorLiteral::length || !colorLiteralFrom(text(), range.location))
        return;
    const TextSnapshot picked(
        utf16FromUtf8(hexText({colorByte(red), colorByte(green), colorByte(blue)})));
    if (!(text().slice(range) == picked))
        replaceText(range, picked, range);
}

void EditorPane::endColorPicking()
{
    if (std::exchange(colorPanelReplacementRange_, {}) && view_)
        view_->paneDidEndColorPicking();
}

}  // namespace tavrel
