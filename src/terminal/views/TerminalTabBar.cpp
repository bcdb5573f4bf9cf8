#include "terminal/views/TerminalTabBar.h"

#include "terminal/views/GridPainter.h"

#include <QPainter>
#include <QWheelEvent>

#include <algorithm>

namespace tavrel {

TerminalTabBar::TerminalTabBar(const TerminalAppearance& appearance, QWidget* parent)
    : QWidget(parent)
{
    setFocusPolicy(Qt::NoFocus);
    setAppearance(appearance);
}

void TerminalTabBar::setAppearance(const TerminalAppearance& appearance)
{
    background_ = QColor::fromRgb(appearance.theme.panelBackground);
    colors_ = {qtColor(appearance.colors.defaultForeground), qtColor(appearance.colors.selection)};
    rebuild();
    update();
}

void TerminalTabBar::setTabs(const std::vector<QString>& titles, std::size_t activeIndex)
{
    titles_ = titles;
    activeIndex_ = activeIndex;
    rebuild();
}

void TerminalTabBar::rebuild()
{
    for (TerminalTabView* tab : tabs_) {
        // It may be the one whose click led here, so it goes when that is done with.
        tab->hide();
        tab->deleteLater();
    }
    tabs_.clear();
    for (std::size_t index = 0; index < titles_.size(); ++index) {
        auto* tab = new TerminalTabView(titles_[index], index == activeIndex_, colors_, this);
        tab->onSelect = [this, index] {
            if (onSelect)
                onSelect(index);
        };
        tab->onRename = [this, index] {
            if (onRename)
                onRename(index);
        };
        tab->closeButton().onClose = [this, index] {
            if (onClose)
                onClose(index);
        };
        tab->show();
        tabs_.push_back(tab);
    }
    arrange();
}

int TerminalTabBar::contentWidth() const
{
    int total = spacing;
    for (const TerminalTabView* tab : tabs_)
        total += tab->sizeHint().width() + spacing;
    return total;
}

void TerminalTabBar::arrange()
{
    int left = spacing;
    for (std::size_t index = 0; index < activeIndex_ && index < tabs_.size(); ++index)
        left += tabs_[index]->sizeHint().width() + spacing;
    int offset = offset_;
    if (activeIndex_ < tabs_.size()) {
        const int right = left + tabs_[activeIndex_]->sizeHint().width() + spacing;
        offset = std::min(std::max(offset, right - width()), left - spacing);
    }
    moveTo(offset);
}

void TerminalTabBar::moveTo(int offset)
{
    offset_ = std::clamp(offset, 0, std::max(contentWidth() - width(), 0));
    int left = spacing - offset_;
    for (TerminalTabView* tab : tabs_) {
        const QSize size = tab->sizeHint();
        const int tabHeight = std::min(size.height(), height());
        tab->setGeometry(left, (height() - tabHeight) / 2, size.width(), tabHeight);
        left += size.width() + spacing;
    }
}

void TerminalTabBar::paintEvent(QPaintEvent*)
{
    QPainter(this).fillRect(rect(), background_);
}

void TerminalTabBar::resizeEvent(QResizeEvent*)
{
    arrange();
}

void TerminalTabBar::wheelEvent(QWheelEvent* event)
{
    const QPoint delta = event->angleDelta();
    moveTo(offset_ - (delta.x() != 0 ? delta.x() : delta.y()) / 2);
    event->accept();
}

}  // namespace tavrel
