#pragma once

#include "terminal/views/TerminalAppearance.h"
#include "terminal/views/TerminalTabView.h"

#include <QString>
#include <QWidget>

#include <cstddef>
#include <functional>
#include <vector>

namespace tavrel {

/// The strip of tabs above the grid. Where the tabs are wider than the strip, the active one is in
/// sight and the wheel moves them.
class TerminalTabBar final : public QWidget {
public:
    static constexpr int barHeight = 22;

    TerminalTabBar(const TerminalAppearance& appearance, QWidget* parent);

    /// Shows these tabs in place of those before.
    void setTabs(const std::vector<QString>& titles, std::size_t activeIndex);
    void setAppearance(const TerminalAppearance& appearance);

    const std::vector<TerminalTabView*>& tabs() const { return tabs_; }

    // What is done to a tab, by its index from 0. Each may be empty.
    std::function<void(std::size_t)> onSelect;
    std::function<void(std::size_t)> onRename;
    std::function<void(std::size_t)> onClose;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    static constexpr int spacing = 4;

    void rebuild();
    void arrange();
    int contentWidth() const;
    void moveTo(int offset);

    QColor background_;
    TerminalTabView::Colors colors_;
    std::vector<QString> titles_;
    std::size_t activeIndex_ = 0;
    std::vector<TerminalTabView*> tabs_;  // Children, in order.
    int offset_ = 0;                      // How far the tabs are moved to the left.
};

}  // namespace tavrel
