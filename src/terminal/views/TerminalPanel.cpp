#include "terminal/views/TerminalPanel.h"

#include "editor/views/EditorScrollBar.h"
#include "terminal/TerminalViewController.h"
#include "terminal/views/GridPainter.h"
#include "terminal/views/TerminalGridView.h"
#include "terminal/views/TerminalTabBar.h"

#include <algorithm>
#include <limits>

namespace tavrel {

namespace {

int clampedToInt(std::int64_t value)
{
    return static_cast<int>(std::clamp<std::int64_t>(value, 0, std::numeric_limits<int>::max()));
}

/// The scroll bar stands on the terminal's ground.
ViewTheme barTheme(const TerminalAppearance& appearance)
{
    ViewTheme theme = appearance.theme;
    theme.background = qtColor(appearance.colors.defaultBackground).rgb();
    return theme;
}

}  // namespace

TerminalPanel::TerminalPanel(TerminalViewController& controller, Pasteboard& pasteboard,
                             QWidget* parent)
    : QWidget(parent), controller_(controller), tabBar_(new TerminalTabBar({}, this)),
      gridView_(new TerminalGridView(pasteboard, this)),
      scrollBar_(new EditorScrollBar(barTheme({}), this))
{
    setFocusProxy(gridView_);
    tabBar_->onSelect = [this](std::size_t index) { controller_.selectTab(index); };
    tabBar_->onRename = [this](std::size_t index) { controller_.renameTab(index); };
    tabBar_->onClose = [this](std::size_t index) { controller_.requestCloseTab(index); };
    gridView_->onInput = [this](std::string_view bytes) { controller_.sendInput(bytes); };
    gridView_->keyCommandHandler = [this](const KeyEvent& event) {
        return controller_.handleKeyCommand(event);
    };
    gridView_->didScroll = [this] { showPosition(); };
    connect(scrollBar_, &QAbstractSlider::valueChanged, this,
            [this](int value) { scrollBarMoved(value); });
    controller_.setView(this);
}

TerminalPanel::~TerminalPanel()
{
    controller_.setView(nullptr);
    gridView_->setEmulator(nullptr);
}

// --- Places

void TerminalPanel::resizeEvent(QResizeEvent*)
{
    arrange();
}

void TerminalPanel::showEvent(QShowEvent*)
{
    arrange();
    gridView_->refresh();
    controller_.startActiveSession();
}

void TerminalPanel::arrange()
{
    const int bar = controller_.showsTabBar() ? std::min(TerminalTabBar::barHeight, height()) : 0;
    tabBar_->setVisible(bar > 0);
    tabBar_->setGeometry(0, 0, width(), bar);
    const int thickness = std::min(EditorScrollBar::thickness, width());
    gridView_->setGeometry(0, bar, width() - thickness, height() - bar);
    scrollBar_->setGeometry(width() - thickness, bar, thickness, height() - bar);
    controller_.syncGridSize();
}

// --- The controller's wishes

void TerminalPanel::panelDidShow(TerminalEmulator& emulator)
{
    gridView_->setEmulator(&emulator);
}

void TerminalPanel::clearSelection()
{
    gridView_->clearSelection();
}

void TerminalPanel::panelDidChangeRows()
{
    // A panel that is hidden costs nothing but what its programs write.
    if (isVisible())
        gridView_->refreshSoon();
}

bool TerminalPanel::isFollowingOutput() const
{
    return gridView_->scroll().isFollowing();
}

void TerminalPanel::followOutput()
{
    gridView_->follow();
}

std::optional<TerminalSize> TerminalPanel::fittingSize() const
{
    if (gridView_->width() <= 0 || gridView_->height() <= 0)
        return std::nullopt;
    return gridView_->gridSize(gridView_->size());
}

bool TerminalPanel::isInWindow() const
{
    return isVisible();
}

void TerminalPanel::takeFocus()
{
    gridView_->setFocus();
}

void TerminalPanel::panelDidChangeTabs()
{
    std::vector<QString> titles;
    for (std::size_t index = 0; index < controller_.tabCount(); ++index)
        titles.push_back(QString::fromStdU16String(controller_.tabTitle(index)));
    tabBar_->setTabs(titles, controller_.activeSessionIndex());
    arrange();
}

void TerminalPanel::panelDidChangePreferences(const Preferences& preferences)
{
    const TerminalAppearance appearance = terminalAppearanceOf(preferences);
    tabBar_->setAppearance(appearance);
    gridView_->setAppearance(appearance);
    scrollBar_->setTheme(barTheme(appearance));
}

// --- The scroll bar

void TerminalPanel::showPosition()
{
    const GridScroll& scroll = gridView_->scroll();
    isShowingPosition_ = true;
    scrollBar_->setRange(0, clampedToInt(scroll.lastTop()));
    scrollBar_->setPageStep(clampedToInt(scroll.shownCount()));
    // A thumb that is held stays where the mouse has it.
    if (!scrollBar_->isSliderDown())
        scrollBar_->setValue(clampedToInt(scroll.top()));
    isShowingPosition_ = false;
}

void TerminalPanel::scrollBarMoved(int value)
{
    if (!isShowingPosition_)
        gridView_->scrollTo(value);
}

}  // namespace tavrel
