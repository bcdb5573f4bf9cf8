#pragma once

#include "editor/views/EditorTabDragView.h"
#include "editor/views/ViewTheme.h"

#include <QWidget>

#include <functional>
#include <span>
#include <string>
#include <vector>

namespace tavrel {

/// The row of tabs above a text. What does not fit is scrolled out of sight at the left and right,
/// by the wheel; the active tab is brought into sight whenever it becomes that.
class EditorTabScrollView final : public QWidget {
public:
    EditorTabScrollView(const ViewTheme& theme, QWidget* parent);

    /// In logical pixels.
    static constexpr int barHeight = 30;
    static constexpr int tabSpacing = 4;

    /// The titles from left to right, and which of them is shown below. Only the tabs that differ
    /// are drawn anew; nothing happens where none does. At least one title.
    struct Tabs {
        std::vector<std::u16string> titles;
        std::size_t activeIndex = 0;
        bool isLoneEmptyTab = false;  // Then there is nothing that could be closed.
        bool operator==(const Tabs&) const = default;
    };
    void setTabs(Tabs tabs);
    void setTheme(const ViewTheme& theme);
    /// The tab that is shown stands out more in the column that the user works in.
    void setProminent(bool isProminent);

    int tabCount() const { return static_cast<int>(views_.size()); }
    EditorTabDragView& tabView(int index) { return *views_[static_cast<std::size_t>(index)]; }

    /// How much of the row is out of sight at the left, in logical pixels.
    double scrollOffset() const { return offset_; }
    void setScrollOffset(double offset);

    /// As those of each tab. Each may be empty.
    std::function<void(int)> didSelect;
    std::function<void(int)> didClose;
    std::function<void(int, QPoint)> didStartDrag;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    static constexpr int margin = 4;  // Before the first tab and behind the last.

    EditorTabDragView* makeTab();
    EditorTabDragView::Face faceOf(std::size_t index) const;
    void showFaces();
    void arrange();
    void showActiveTab();
    double contentWidth() const;

    ViewTheme theme_;
    Tabs tabs_;
    std::vector<EditorTabDragView*> views_;  // Children, in the order of the titles.
    bool isProminent_ = true;
    double offset_ = 0;
};

}  // namespace tavrel
