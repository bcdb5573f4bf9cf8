#include "editor/views/TextViewAccessible.h"

#include "editor/views/TavrelTextView.h"

#include <QTextBoundaryFinder>

#include <algorithm>
#include <limits>

namespace tavrel {

namespace {

// How far around an offset the ends of words and sentences are looked for.
constexpr std::size_t boundaryReach = 2048;

int offsetOf(std::size_t location)
{
    constexpr auto most = static_cast<std::size_t>(std::numeric_limits<int>::max());
    return static_cast<int>(std::min(location, most));
}

std::size_t locationOf(int offset, const TextSnapshot& text)
{
    return std::min(static_cast<std::size_t>(std::max(offset, 0)), text.length());
}

TextRange rangeOf(int start, int end, const TextSnapshot& text)
{
    const std::size_t from = locationOf(std::min(start, end), text);
    const std::size_t to = locationOf(std::max(start, end), text);
    return {from, to - from};
}

QTextBoundaryFinder::BoundaryType finderType(QAccessible::TextBoundaryType boundary)
{
    if (boundary == QAccessible::CharBoundary)
        return QTextBoundaryFinder::Grapheme;
    return boundary == QAccessible::WordBoundary ? QTextBoundaryFinder::Word
                                                 : QTextBoundaryFinder::Sentence;
}

// The character, word or sentence at `location`, which is short of the text's end.
TextRange stretchAt(const TextSnapshot& text, std::size_t location,
                    QAccessible::TextBoundaryType boundary)
{
    const TextRange line = text.lineRange({location, 0});
    const std::size_t from = std::max(line.location, location - std::min(location, boundaryReach));
    const std::size_t to = std::min(line.end(), location + boundaryReach);
    const QString around = QString::fromStdU16String(text.text({from, to - from}));
    QTextBoundaryFinder finder(finderType(boundary), around);
    const auto at = static_cast<qsizetype>(location - from);
    finder.setPosition(at);
    const qsizetype start = finder.isAtBoundary() ? at : finder.toPreviousBoundary();
    finder.setPosition(at);
    const qsizetype end = finder.toNextBoundary();
    const std::size_t first = start < 0 ? from : from + static_cast<std::size_t>(start);
    const std::size_t last = end < 0 ? to : from + static_cast<std::size_t>(end);
    return {first, last - first};
}

// What of a kind holds `location`.
TextRange unitAt(const ViewRows& rows, std::size_t location, QAccessible::TextBoundaryType boundary)
{
    const TextSnapshot& text = rows.text();
    switch (boundary) {
    case QAccessible::ParagraphBoundary:
        return text.lineRange({location, 0});
    case QAccessible::LineBoundary:
        return rows.row(location).range();
    case QAccessible::NoBoundary:
        return {0, text.length()};
    default:
        break;
    }
    if (location >= text.length())
        return {text.length(), 0};
    return stretchAt(text, location, boundary);
}

QString answer(const TextSnapshot& text, TextRange range, int* start, int* end)
{
    *start = offsetOf(range.location);
    *end = offsetOf(range.end());
    return QString::fromStdU16String(text.text(range));
}

QString noAnswer(int* start, int* end)
{
    *start = *end = -1;
    return {};
}

}  // namespace

TextViewAccessible::TextViewAccessible(TavrelTextView& view)
    : QAccessibleWidget(&view, QAccessible::EditableText), view_(view)
{
}

void* TextViewAccessible::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TextInterface)
        return static_cast<QAccessibleTextInterface*>(this);
    if (type == QAccessible::EditableTextInterface)
        return static_cast<QAccessibleEditableTextInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

QAccessible::State TextViewAccessible::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    state.editable = true;
    state.selectableText = true;
    state.multiLine = !view_.pane().isFieldEditor();
    state.multiSelectable = true;
    return state;
}

// --- Selection and cursor

int TextViewAccessible::selectionCount() const
{
    const std::vector<TextRange>& ranges = view_.pane().selectedRanges();
    return ranges.front().isEmpty() ? 0 : offsetOf(ranges.size());
}

void TextViewAccessible::selection(int index, int* start, int* end) const
{
    *start = *end = 0;
    if (index < 0 || index >= selectionCount())
        return;
    const TextRange range = view_.pane().selectedRanges()[static_cast<std::size_t>(index)];
    *start = offsetOf(range.location);
    *end = offsetOf(range.end());
}

void TextViewAccessible::addSelection(int start, int end)
{
    setSelection(0, start, end);
}

void TextViewAccessible::removeSelection(int index)
{
    if (index >= 0 && index < selectionCount())
        view_.pane().setSelectedRange({view_.pane().selectedRange().end(), 0});
}

void TextViewAccessible::setSelection(int index, int start, int end)
{
    if (index == 0)
        view_.pane().setSelectedRange(rangeOf(start, end, view_.pane().text()));
}

int TextViewAccessible::cursorPosition() const
{
    return offsetOf(view_.pane().selectedRange().end());
}

void TextViewAccessible::setCursorPosition(int position)
{
    const TextRange place{locationOf(position, view_.pane().text()), 0};
    view_.pane().setSelectedRange(place);
    view_.pane().scrollToVisible(place);
}

// --- Text

int TextViewAccessible::characterCount() const
{
    return offsetOf(view_.pane().text().length());
}

QString TextViewAccessible::text(int start, int end) const
{
    const TextSnapshot& all = view_.pane().text();
    return QString::fromStdU16String(all.text(rangeOf(start, end, all)));
}

QString TextViewAccessible::textAtOffset(int offset, QAccessible::TextBoundaryType boundary,
                                         int* start, int* end) const
{
    const TextSnapshot& all = view_.rows().text();
    return answer(all, unitAt(view_.rows(), locationOf(offset, all), boundary), start, end);
}

QString TextViewAccessible::textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary,
                                             int* start, int* end) const
{
    const TextSnapshot& all = view_.rows().text();
    const TextRange here = unitAt(view_.rows(), locationOf(offset, all), boundary);
    if (here.location == 0 || boundary == QAccessible::NoBoundary)
        return noAnswer(start, end);
    return answer(all, unitAt(view_.rows(), here.location - 1, boundary), start, end);
}

QString TextViewAccessible::textAfterOffset(int offset, QAccessible::TextBoundaryType boundary,
                                            int* start, int* end) const
{
    const TextSnapshot& all = view_.rows().text();
    const TextRange here = unitAt(view_.rows(), locationOf(offset, all), boundary);
    if (here.end() >= all.length() || boundary == QAccessible::NoBoundary)
        return noAnswer(start, end);
    return answer(all, unitAt(view_.rows(), here.end(), boundary), start, end);
}

// --- Places

QRect TextViewAccessible::characterRect(int offset) const
{
    const TextSnapshot& all = view_.rows().text();
    const std::size_t location = locationOf(offset, all);
    const std::optional<QRectF> cursor = view_.cursorRectAt(location);
    if (!cursor)
        return {};
    double width = view_.editorFont().advance();
    const std::optional<QRectF> next = view_.cursorRectAt(location + 1);
    if (location < all.length() && next && next->top() == cursor->top())
        width = next->left() - cursor->left();
    // What runs from right to left stands to the left of its edge.
    const QRectF rect(std::min(cursor->left(), cursor->left() + width), cursor->top(),
                      std::max(std::abs(width), 1.0), cursor->height());
    const QRect area = rect.toAlignedRect();
    return {view_.mapToGlobal(area.topLeft()), area.size()};
}

int TextViewAccessible::offsetAtPoint(const QPoint& point) const
{
    const QPoint local = view_.mapFromGlobal(point);
    return view_.rect().contains(local) ? offsetOf(view_.offsetAt(local)) : -1;
}

void TextViewAccessible::scrollToSubstring(int start, int end)
{
    view_.pane().scrollToVisible(rangeOf(start, end, view_.pane().text()));
}

QString TextViewAccessible::attributes(int, int* start, int* end) const
{
    *start = 0;
    *end = characterCount();
    const QFont& font = view_.editorFont().font();
    return QStringLiteral("font-family:\"%1\";font-size:%2px;")
        .arg(font.family())
        .arg(font.pixelSize());
}

// --- Editing

void TextViewAccessible::deleteText(int start, int end)
{
    replaceText(start, end, {});
}

void TextViewAccessible::insertText(int offset, const QString& text)
{
    replaceText(offset, offset, text);
}

void TextViewAccessible::replaceText(int start, int end, const QString& text)
{
    view_.pane().replaceText(rangeOf(start, end, view_.pane().text()),
                             TextSnapshot(text.toStdU16String()));
}

}  // namespace tavrel
