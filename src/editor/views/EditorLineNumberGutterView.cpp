#include "editor/views/EditorLineNumberGutterView.h"

#include <QCoreApplication>
#include <QGlyphRun>
#include <QPaintEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>

namespace tavrel {

namespace {

// Of the marks, in logical pixels.
constexpr double barWidth = 3.0;
constexpr double removalWidth = 12.0;
constexpr double removalHeight = 2.0;
constexpr double removalRise = 1.0;       // Over the top of the row below.
constexpr double removalRiseAtEnd = 3.0;  // Over the bottom of the last row.

SyntaxToken markToken(EditorLineNumberGutterView::MarkKind kind)
{
    using Kind = EditorLineNumberGutterView::MarkKind;
    if (kind == Kind::added)
        return SyntaxToken::gitAdded;
    return kind == Kind::modified ? SyntaxToken::gitModified : SyntaxToken::gitRemoved;
}

// What only one of the two holds.
template<class Item>
std::vector<Item> differences(std::vector<Item> before, std::vector<Item> after)
{
    std::sort(before.begin(), before.end());
    std::sort(after.begin(), after.end());
    std::vector<Item> changed;
    std::set_symmetric_difference(before.begin(), before.end(), after.begin(), after.end(),
                                  std::back_inserter(changed));
    return changed;
}

}  // namespace

EditorLineNumberGutterView::EditorLineNumberGutterView(TavrelTextView& textView, QWidget* parent)
    : QWidget(parent), textView_(textView)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::NoFocus);
}

int EditorLineNumberGutterView::preferredWidth() const
{
    const std::size_t lines = textView_.rows().text().lfLineCount();
    const double digits = static_cast<double>(std::to_string(lines).size());
    const double width = digits * textView_.editorFont().advance() + 2 * rightMargin;
    return std::max(static_cast<int>(std::ceil(width)), minimumWidth);
}

void EditorLineNumberGutterView::setLineDiff(std::optional<GitLineDiff> diff)
{
    if (diff == lineDiff_)
        return;
    lineDiff_ = std::move(diff);
    refresh();
}

// Adds what of the marks stands beside one row of a line, which is counted from 1.
void EditorLineNumberGutterView::addMarks(const VisibleRow& row, std::int64_t line,
                                          bool isFirstOfLine)
{
    if (const auto change = lineDiff_->changeAt(line)) {
        const bool isAdded = *change == GitLineChangeKind::added;
        marks_.push_back({row.top, isAdded ? MarkKind::added : MarkKind::modified});
    }
    // What is gone stood above the line, or behind the last one.
    if (isFirstOfLine && lineDiff_->isDeletedAfter(line - 1))
        marks_.push_back({row.top - removalRise, MarkKind::removed});
    const bool endsText = row.row.endsLine() && row.row.end() == row.row.contentEnd();
    const double bottom = row.top + textView_.editorFont().rowHeight();
    if (endsText && lineDiff_->isDeletedAfter(line))
        marks_.push_back({bottom - removalRiseAtEnd, MarkKind::removed});
}

void EditorLineNumberGutterView::readRows()
{
    const TextSnapshot& text = textView_.rows().text();
    numbers_.clear();
    marks_.clear();
    for (const VisibleRow& row : textView_.visibleRows()) {
        const std::size_t start = row.row.start();
        // What begins behind a lone CR or a Unicode separator is a line, but not one that is
        // numbered.
        const std::size_t index = text.lfLineIndexAt(start);
        const bool isFirstOfLine = row.row.startsLine() && text.lfLineStart(index) == start;
        if (isFirstOfLine)
            numbers_.push_back({index + 1, row.top});
        if (lineDiff_)
            addMarks(row, static_cast<std::int64_t>(index) + 1, isFirstOfLine);
    }
    std::sort(marks_.begin(), marks_.end());
}

QRectF EditorLineNumberGutterView::markRect(const Mark& mark) const
{
    if (mark.kind == MarkKind::removed)
        return {width() - removalWidth, mark.top, removalWidth, removalHeight};
    return {width() - barWidth, mark.top, barWidth, textView_.editorFont().rowHeight()};
}

void EditorLineNumberGutterView::refresh()
{
    std::vector<Number> numbers = numbers_;
    std::vector<Mark> marks = marks_;
    readRows();
    const double height = textView_.editorFont().rowHeight();
    for (const Number& number : differences(std::move(numbers), numbers_))
        update(QRectF(0, number.top, width(), height).toAlignedRect());
    for (const Mark& mark : differences(std::move(marks), marks_))
        update(markRect(mark).toAlignedRect());
}

void EditorLineNumberGutterView::scrolled(int dy)
{
    scroll(0, dy);
    for (Number& number : numbers_)
        number.top += dy;
    for (Mark& mark : marks_)
        mark.top += dy;
    refresh();
}

void EditorLineNumberGutterView::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    const QRect bounds = event->rect();
    const ViewTheme& theme = textView_.theme();
    painter.fillRect(bounds, QColor::fromRgb(theme.background));
    painter.setPen(QColor::fromRgb(theme.gutter));
    for (const Number& number : numbers_) {
        const double bottom = number.top + textView_.editorFont().rowHeight();
        if (number.top <= bounds.bottom() && bottom >= bounds.top())
            paintNumber(painter, number);
    }
    for (const Mark& mark : marks_) {
        const QRectF rect = markRect(mark);
        if (rect.intersects(bounds))
            painter.fillRect(rect, QColor::fromRgb(theme.color(markToken(mark.kind))));
    }
}

void EditorLineNumberGutterView::paintNumber(QPainter& painter, const Number& number) const
{
    const EditorFont& font = textView_.editorFont();
    const std::string digits = std::to_string(number.value);
    QList<quint32> glyphs;
    QList<QPointF> positions;
    const double baseline = number.top + font.baseline();
    double x = width() - rightMargin - static_cast<double>(digits.size()) * font.advance();
    for (const char digit : digits) {
        glyphs.append(font.glyph(static_cast<char16_t>(digit)));
        positions.append({x, baseline});
        x += font.advance();
    }
    QGlyphRun run;
    run.setRawFont(font.rawFont());
    run.setGlyphIndexes(glyphs);
    run.setPositions(positions);
    painter.drawGlyphRun({0, 0}, run);
}

void EditorLineNumberGutterView::mousePressEvent(QMouseEvent*)
{
    // A click beside the text is not a click into it.
}

void EditorLineNumberGutterView::wheelEvent(QWheelEvent* event)
{
    QCoreApplication::sendEvent(&textView_, event);
}

}  // namespace tavrel
