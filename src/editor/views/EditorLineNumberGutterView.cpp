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

std::vector<EditorLineNumberGutterView::Number> EditorLineNumberGutterView::makeNumbers() const
{
    const TextSnapshot& text = textView_.rows().text();
    std::vector<Number> numbers;
    for (const VisibleRow& row : textView_.visibleRows()) {
        // What begins behind a lone CR or a Unicode separator is a line, but not one that is
        // numbered.
        const std::size_t start = row.row.start();
        if (!row.row.startsLine())
            continue;
        const std::size_t index = text.lfLineIndexAt(start);
        if (text.lfLineStart(index) == start)
            numbers.push_back({index + 1, row.top});
    }
    return numbers;
}

void EditorLineNumberGutterView::setNumbers(std::vector<Number> numbers)
{
    std::vector<Number> before = std::move(numbers_);
    numbers_ = std::move(numbers);
    std::vector<Number> after = numbers_;
    std::sort(before.begin(), before.end());
    std::sort(after.begin(), after.end());
    std::vector<Number> changed;
    std::set_symmetric_difference(before.begin(), before.end(), after.begin(), after.end(),
                                  std::back_inserter(changed));
    for (const Number& number : changed) {
        const double height = textView_.editorFont().rowHeight();
        update(QRectF(0, number.top, width(), height).toAlignedRect());
    }
}

void EditorLineNumberGutterView::refresh()
{
    setNumbers(makeNumbers());
}

void EditorLineNumberGutterView::scrolled(int dy)
{
    scroll(0, dy);
    for (Number& number : numbers_)
        number.top += dy;
    setNumbers(makeNumbers());
}

void EditorLineNumberGutterView::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    const QRect bounds = event->rect();
    const ViewTheme& theme = textView_.theme();
    const EditorFont& font = textView_.editorFont();
    painter.fillRect(bounds, QColor::fromRgb(theme.background));
    painter.setPen(QColor::fromRgb(theme.gutter));
    QGlyphRun run;
    run.setRawFont(font.rawFont());
    for (const Number& number : numbers_) {
        if (number.top > bounds.bottom() || number.top + font.rowHeight() < bounds.top())
            continue;
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
        run.setGlyphIndexes(glyphs);
        run.setPositions(positions);
        painter.drawGlyphRun({0, 0}, run);
    }
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
