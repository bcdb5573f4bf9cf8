#include "editor/views/CompletionListView.h"

#include <QCoreApplication>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>

namespace tavrel {

namespace {

constexpr int border = 1;
constexpr int rowPadding = 6;
constexpr int thumbWidth = 4;
constexpr int narrowest = 120;
constexpr int widestBox = 420;
constexpr int minimumThumb = 12;
constexpr int anglePerWheelStep = 120;
constexpr int rowsPerWheelStep = 3;

}  // namespace

CompletionListView::CompletionListView(QWidget* window) : QWidget(window)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAttribute(Qt::WA_NoMousePropagation);
    setFocusPolicy(Qt::NoFocus);
    setCursor(Qt::ArrowCursor);
    hide();
}

void CompletionListView::present(const std::vector<std::u16string>& words, const QFont& font,
                                 const ViewTheme& theme, const QRect& cursor, const QRect& bounds)
{
    words_.clear();
    for (const std::u16string& word : words)
        words_.append(QString::fromStdU16String(word));
    theme_ = theme;
    chosenIndex_ = 0;
    firstIndex_ = 0;
    wheelRest_ = 0;
    setFont(font);

    int widest = 0;
    for (const QString& word : words_)
        widest = std::max(widest, fontMetrics().horizontalAdvance(word));
    const int wanted = widest + 2 * (rowPadding + border) + thumbWidth;
    const int width = std::min(std::clamp(wanted, narrowest, widestBox), bounds.width());
    const int below = bounds.bottom() - cursor.bottom();
    const int above = cursor.top() - bounds.top();
    const int rowCount = std::min(static_cast<int>(words_.size()), maximumRows);
    const bool goesBelow = rowCount * rowHeight() + 2 * border <= below || below >= above;
    const int room = (goesBelow ? below : above) - 2 * border;
    shownRowCount_ = std::clamp(room / rowHeight(), 1, rowCount);
    const int height = shownRowCount_ * rowHeight() + 2 * border;
    const int left = std::clamp(cursor.left() - rowPadding - border, bounds.left(),
                                bounds.left() + bounds.width() - width);
    const int top = goesBelow ? cursor.bottom() + 1 : cursor.top() - height;
    setGeometry(left, top, width, height);
    raise();
    show();
    update();
}

int CompletionListView::rowHeight() const
{
    return fontMetrics().height() + 2;
}

QRect CompletionListView::rowRect(int index) const
{
    return {border, border + (index - firstIndex_) * rowHeight(), width() - 2 * border,
            rowHeight()};
}

void CompletionListView::choose(int index)
{
    chosenIndex_ = std::clamp(index, 0, static_cast<int>(words_.size()) - 1);
    const int highest = chosenIndex_;
    const int lowest = chosenIndex_ - shownRowCount_ + 1;
    scrollTo(std::clamp(firstIndex_, lowest, highest));
    update();
}

void CompletionListView::scrollTo(int firstIndex)
{
    firstIndex_ = std::clamp(firstIndex, 0, static_cast<int>(words_.size()) - shownRowCount_);
    update();
}

bool CompletionListView::handleKey(const QKeyEvent& event)
{
    if ((event.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier)
        return false;
    switch (event.key()) {
    case Qt::Key_Up:
        choose(chosenIndex_ - 1);
        return true;
    case Qt::Key_Down:
        choose(chosenIndex_ + 1);
        return true;
    case Qt::Key_PageUp:
        choose(chosenIndex_ - shownRowCount_);
        return true;
    case Qt::Key_PageDown:
        choose(chosenIndex_ + shownRowCount_);
        return true;
    case Qt::Key_Home:
        choose(0);
        return true;
    case Qt::Key_End:
        choose(static_cast<int>(words_.size()) - 1);
        return true;
    default:
        return false;
    }
}

void CompletionListView::showEvent(QShowEvent*)
{
    QCoreApplication::instance()->installEventFilter(this);
}

void CompletionListView::hideEvent(QHideEvent*)
{
    QCoreApplication::instance()->removeEventFilter(this);
}

bool CompletionListView::eventFilter(QObject* watched, QEvent* event)
{
    const bool isPress = event->type() == QEvent::MouseButtonPress && watched->isWidgetType();
    if (isPress && watched != this && didClickElsewhere)
        didClickElsewhere();
    return false;
}

void CompletionListView::mousePressEvent(QMouseEvent* event)
{
    const int y = event->position().toPoint().y();
    const int index = firstIndex_ + (y - border) / rowHeight();
    if (event->button() == Qt::LeftButton && y >= border && index < words_.size() && didClick)
        didClick(index);
}

void CompletionListView::wheelEvent(QWheelEvent* event)
{
    event->accept();
    wheelRest_ -= event->angleDelta().y() * rowsPerWheelStep;
    const int rows = wheelRest_ / anglePerWheelStep;
    wheelRest_ -= rows * anglePerWheelStep;
    scrollTo(firstIndex_ + rows);
}

QRect CompletionListView::thumbRect() const
{
    const int count = static_cast<int>(words_.size());
    if (count <= shownRowCount_)
        return {};
    const int room = height() - 2 * border;
    const int length = std::max(room * shownRowCount_ / count, std::min(minimumThumb, room));
    const int top = (room - length) * firstIndex_ / (count - shownRowCount_);
    return {width() - border - thumbWidth, border + top, thumbWidth - 1, length};
}

void CompletionListView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor::fromRgb(theme_.gutter));
    painter.fillRect(rect().adjusted(border, border, -border, -border),
                     QColor::fromRgb(theme_.panelBackground));
    painter.setPen(QColor::fromRgb(theme_.foreground));
    const int end = std::min(firstIndex_ + shownRowCount_, static_cast<int>(words_.size()));
    for (int index = firstIndex_; index < end; ++index) {
        const QRect row = rowRect(index);
        if (index == chosenIndex_)
            painter.fillRect(row, QColor::fromRgb(theme_.selection));
        const QRect box = row.adjusted(rowPadding, 0, -rowPadding - thumbWidth, 0);
        painter.drawText(box, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                         fontMetrics().elidedText(words_[index], Qt::ElideRight, box.width()));
    }
    painter.fillRect(thumbRect(), QColor::fromRgb(theme_.gutter));
}

}  // namespace tavrel
