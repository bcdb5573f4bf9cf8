// The selection, the secondary cursors and the selected occurrences of a pane.

#include "editor/EditorPane.h"

#include "editor/LocationMap.h"

#include <algorithm>
#include <utility>

namespace tavrel {

namespace {

/// The tab's own copies of what is selected in it. The marker does not follow the text.
void moveWithText(EditorTab& tab, const LocationMap& map)
{
    std::vector<std::size_t> cursors = tab.secondaryCursorLocations.offsets();
    for (std::size_t& cursor : cursors)
        cursor = map.mapped(cursor);
    tab.selectedRange = map.mapped(tab.selectedRange);
    tab.secondaryCursorLocations = CursorLocations::normalised(
        std::move(cursors), tab.document->text().length(), tab.selectedRange);
    if (tab.selectedWordOccurrences) {
        for (TextRange& range : tab.selectedWordOccurrences->ranges)
            range = map.mapped(range);
    }
}

}  // namespace

void EditorPane::setSelectedRanges(std::vector<TextRange> ranges)
{
    for (TextRange& range : ranges)
        range = clampedRange(range, text().length());
    if (ranges.empty())
        ranges.push_back({});
    goalX_.reset();
    occurrencesRevision_.reset();
    selectedRanges_ = std::move(ranges);
    if (hasSecondaryCursors())  // One of them may stand where the primary cursor now is.
        activeTab().secondaryCursorLocations = normalisedCursors(selectedRange());
    didChangeSelection();
}

void EditorPane::didChangeSelection()
{
    if (guard_ == Guard::none && view_)
        view_->paneDidChangeSelection();
}

const std::vector<std::size_t>& EditorPane::secondaryCursorLocations() const
{
    return activeTab().secondaryCursorLocations.offsets();
}

std::vector<std::size_t> EditorPane::allCursorLocations() const
{
    return activeTab().secondaryCursorLocations.withPrimary(selectedRange().location,
                                                            text().length());
}

CursorLocations EditorPane::normalisedCursors(TextRange primary) const
{
    return CursorLocations::normalised(secondaryCursorLocations(), text().length(), primary);
}

void EditorPane::setCursors(CursorLocations cursors)
{
    if (activeTab().secondaryCursorLocations.isEmpty() && cursors.isEmpty())
        return;
    activeTab().secondaryCursorLocations = std::move(cursors);
    didChangeSelection();
}

void EditorPane::clearSecondaryCursors()
{
    setCursors({});
}

void EditorPane::storeCursors(std::vector<std::size_t> locations)
{
    setCursors(CursorLocations::normalised(std::move(locations), text().length(), selectedRange()));
    refreshStatus();
}

void EditorPane::toggleCursor(std::size_t offset)
{
    activeTab().selectedWordOccurrences.reset();
    if (!selectedRange().isEmpty() || selectedRanges_.size() > 1)
        setSelectedRange({selectedRange().location, 0});
    const std::size_t place = std::min(offset, text().length());
    std::vector<std::size_t> cursors = normalisedCursors(selectedRange()).offsets();
    if (place != selectedRange().location) {
        const auto known = std::find(cursors.begin(), cursors.end(), place);
        if (known != cursors.end())
            cursors.erase(known);
        else
            cursors.push_back(place);
    }
    storeCursors(std::move(cursors));
}

const SelectedWordOccurrences* EditorPane::validOccurrences()
{
    std::optional<SelectedWordOccurrences>& stored = activeTab().selectedWordOccurrences;
    if (!stored || stored->word.empty())
        return nullptr;
    const std::uint64_t revision = document().textStorage().revision();
    if (occurrencesRevision_ == revision)
        return &*stored;
    std::vector<TextRange> surviving = survivingOccurrences(text(), *stored);
    if (surviving.empty())
        return nullptr;
    std::vector<TextRange> sorted = surviving;
    std::vector<TextRange> selected = selectedRanges_;
    std::sort(sorted.begin(), sorted.end());
    std::sort(selected.begin(), selected.end());
    if (sorted != selected) {
        stored.reset();  // The user has selected something else by other means.
        return nullptr;
    }
    stored->ranges = std::move(surviving);
    occurrencesRevision_ = revision;
    return &*stored;
}

/// What is selected stays on its text. The active tab of a pane that makes the change itself is
/// left to whoever makes it, so that a key press goes no further than here.
void EditorPane::storageDidChange(const TextStorage& storage, std::span<const TextChange> changes)
{
    const bool isShown = &document().textStorage() == &storage;
    if (isChangingText_)
        gitMarks_.schedule(EditorGitMarks::delayAfterEdit);
    std::vector<EditorTab*> moved;
    for (const std::shared_ptr<EditorTab>& tab : tabs_) {
        const bool isLeftToOthers = isChangingText_ && tab.get() == &activeTab();
        if (&tab->document->textStorage() == &storage && !isLeftToOthers)
            moved.push_back(tab.get());
    }
    const bool movesColor = isShown && colorPanelReplacementRange_;
    if (moved.empty() && !movesColor)
        return;
    const LocationMap map(changes);
    if (movesColor)
        colorPanelReplacementRange_ = map.mapped(*colorPanelReplacementRange_);
    if (isShown && !isChangingText_) {
        activeTab().selectedRange = selectedRange();
        for (TextRange& range : selectedRanges_)
            range = map.mapped(range);
        occurrencesRevision_.reset();
    }
    for (EditorTab* tab : moved)
        moveWithText(*tab, map);
}

void EditorPane::showOccurrences(SelectedWordOccurrences occurrences, TextRange visible)
{
    EditorTab& tab = activeTab();
    tab.selectedRange = occurrences.ranges.front();
    tab.selectedWordOccurrences = occurrences;
    setSelectedRanges(std::move(occurrences.ranges));
    scrollToVisible(visible);
}

bool EditorPane::collapseOccurrences(std::int64_t direction)
{
    if (direction != 1 && direction != -1)
        return false;
    const SelectedWordOccurrences* occurrences = validOccurrences();
    if (!occurrences)
        return false;
    std::vector<std::size_t> offsets;
    for (const TextRange& range : occurrences->ranges)
        offsets.push_back(direction == 1 ? range.end() : range.location);
    activeTab().selectedWordOccurrences.reset();
    setSelectedRange({offsets.front(), 0});
    const std::size_t primary = offsets.front();
    storeCursors(std::move(offsets));
    scrollToVisible({primary, 0});
    return true;
}

void EditorPane::setMarker(std::optional<std::size_t> marker)
{
    activeTab().marker = marker;
    didChangeSelection();
    refreshStatus();
}

void EditorPane::moveVertically(VerticalDirection direction, VerticalDistance distance)
{
    if (!view_)
        return;
    const RowLayout& layout = view_->rowLayout();
    const std::size_t rowCount = distance == VerticalDistance::page ? layout.rowsPerPage() : 1;
    const TextRange selection = selectedRange();
    const std::size_t from =
        direction == VerticalDirection::up ? selection.location : selection.end();
    const double x = goalX_ ? *goalX_ : layout.xAt(from);
    const std::size_t target = verticallyMoved(text(), layout, from, direction, rowCount, x);
    setSelectedRange({target, 0});
    goalX_ = x;
    scrollToVisible({target, 0});
}

void EditorPane::scrollToVisible(TextRange range)
{
    if (view_)
        view_->paneWantsVisible(range);
}

}  // namespace tavrel
