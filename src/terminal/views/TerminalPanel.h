#pragma once

#include "terminal/TerminalPanelView.h"

#include <QWidget>

namespace tavrel {

class EditorScrollBar;
class Pasteboard;
class TerminalGridView;
class TerminalTabBar;
class TerminalViewController;

/// The terminal panel on the screen: a bar of tabs, the grid and its scroll bar, joined to the
/// controller that they show.
///
/// The first shell starts when the panel is first shown.
class TerminalPanel final : public QWidget, private TerminalPanelView {
public:
    /// Both references are borrowed and outlive the panel, which becomes the controller's view and
    /// gets fonts and colours from it.
    TerminalPanel(TerminalViewController& controller, Pasteboard& pasteboard, QWidget* parent);
    ~TerminalPanel() override;

    TerminalViewController& controller() { return controller_; }
    TerminalGridView& gridView() { return *gridView_; }
    TerminalTabBar& tabBar() { return *tabBar_; }
    EditorScrollBar& scrollBar() { return *scrollBar_; }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void panelDidShow(TerminalEmulator& emulator) override;
    void clearSelection() override;
    void panelDidChangeRows() override;
    bool isFollowingOutput() const override;
    void followOutput() override;
    std::optional<TerminalSize> fittingSize() const override;
    bool isInWindow() const override;
    void takeFocus() override;
    void panelDidChangeTabs() override;
    void panelDidChangePreferences(const Preferences& preferences) override;

    void arrange();
    void showPosition();
    void scrollBarMoved(int value);

    TerminalViewController& controller_;
    TerminalTabBar* tabBar_;
    TerminalGridView* gridView_;
    EditorScrollBar* scrollBar_;
    bool isShowingPosition_ = false;
};

}  // namespace tavrel
