#include "editor/views/PreeditText.h"

#include "editor/views/EditorFont.h"
#include "editor/views/ViewTheme.h"

#include <QInputMethodEvent>
#include <QPainter>

#include <algorithm>

namespace tavrel {

namespace {

// Input methods compose words and phrases; what is longer is no composition to be read.
constexpr qsizetype maximumLength = 4096;

QList<QTextLayout::FormatRange> formatsOf(const QInputMethodEvent& event, int length)
{
    QList<QTextLayout::FormatRange> formats;
    for (const QInputMethodEvent::Attribute& attribute : event.attributes()) {
        if (attribute.type != QInputMethodEvent::TextFormat)
            continue;
        QTextLayout::FormatRange range;
        range.start = std::clamp(attribute.start, 0, length);
        range.length = std::clamp(attribute.length, 0, length - range.start);
        range.format = attribute.value.value<QTextFormat>().toCharFormat();
        if (range.length > 0 && range.format.isValid())
            formats.append(range);
    }
    if (formats.isEmpty()) {
        QTextLayout::FormatRange all;
        all.length = length;
        all.format.setFontUnderline(true);
        formats.append(all);
    }
    return formats;
}

}  // namespace

void PreeditText::clear()
{
    text_.clear();
    layout_.reset();
    width_ = 0;
    cursorX_ = 0;
}

void PreeditText::set(const QInputMethodEvent& event, const EditorFont& font,
                      const ViewTheme& theme)
{
    clear();
    text_ = event.preeditString().left(maximumLength);
    if (text_.isEmpty())
        return;
    const int length = static_cast<int>(text_.size());
    int cursor = length;
    hasCursor_ = true;
    for (const QInputMethodEvent::Attribute& attribute : event.attributes()) {
        if (attribute.type != QInputMethodEvent::Cursor)
            continue;
        cursor = std::clamp(attribute.start, 0, length);
        hasCursor_ = attribute.length > 0;
    }
    layout_ = std::make_unique<QTextLayout>(text_, font.font());
    QTextOption option;
    option.setTextDirection(Qt::LeftToRight);
    option.setWrapMode(QTextOption::NoWrap);
    option.setFlags(QTextOption::IncludeTrailingSpaces);
    layout_->setTextOption(option);
    QList<QTextLayout::FormatRange> formats = formatsOf(event, length);
    for (QTextLayout::FormatRange& range : formats) {
        if (!range.format.hasProperty(QTextFormat::ForegroundBrush))
            range.format.setForeground(QColor::fromRgb(theme.foreground));
    }
    layout_->setFormats(formats);
    layout_->beginLayout();
    QTextLine line = layout_->createLine();
    if (line.isValid())
        line.setLineWidth(1e7);
    layout_->endLayout();
    width_ = line.isValid() ? line.naturalTextWidth() : 0;
    cursorX_ = line.isValid() ? line.cursorToX(cursor) : 0;
    height_ = font.rowHeight();
    baseline_ = font.baseline() - (line.isValid() ? line.ascent() : 0);
}

void PreeditText::paint(QPainter& painter, QPointF topLeft, const ViewTheme& theme) const
{
    if (!layout_)
        return;
    painter.fillRect(QRectF(topLeft.x(), topLeft.y(), width_, height_),
                     QColor::fromRgb(theme.selection));
    painter.setPen(QColor::fromRgb(theme.foreground));
    layout_->draw(&painter, {topLeft.x(), topLeft.y() + baseline_});
}

}  // namespace tavrel
