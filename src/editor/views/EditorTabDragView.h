#pragma once

#include "editor/views/ViewTheme.h"

#include <QAbstractButton>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <optional>

namespace tavrel {

/// The mark at the left of a tab that closes it: when the mouse goes up on it, not down.
class EditorTabCloseMark final : public QAbstractButton {
public:
    explicit EditorTabCloseMark(QWidget* parent);

    /// All in logical pixels. The mark stands in the middle of the area that takes the click.
    static constexpr double markSize = 14.0;
    static constexpr double hitSize = 18.0;
    static constexpr double left = 5.0;

    void setColors(QRgb mark, QRgb ground);

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    QRgb mark_ = 0;
    QRgb ground_ = 0;  // Behind the mark while the mouse is over it.
};

/// One tab of the tab bar: it draws its title, and turns the mouse into calls.
class EditorTabDragView final : public QWidget {
public:
    explicit EditorTabDragView(QWidget* parent);

    static constexpr int tabHeight = 24;
    static constexpr double cornerRadius = 5.0;
    static constexpr double dragDistance = 4.0;

    /// What a tab shows.
    struct Face {
        QString title;
        bool isActive = false;
        bool isProminent = false;  // In the column that has the keys.
        bool showsCloseButton = true;
        bool operator==(const Face&) const = default;
    };

    void setFace(const Face& face, const ViewTheme& theme);
    const Face& face() const { return face_; }
    /// As drawn: cut in its middle where it is too long.
    const QString& shownTitle() const { return shownTitle_; }
    EditorTabCloseMark& closeMark() { return *closeMark_; }

    /// Counted from 0.
    void setTabIndex(int index) { tabIndex_ = index; }
    int tabIndex() const { return tabIndex_; }
    /// The width that the title takes, at most `maximumWidth`.
    int preferredWidth() const { return preferredWidth_; }

    /// Leaves its place empty while its picture is dragged about.
    void setHiddenForDrag(bool isHidden);
    bool isHiddenForDrag() const { return isHiddenForDrag_; }

    /// Each may be empty, and is called with the index.
    std::function<void(int)> didSelect;
    std::function<void(int)> didClose;
    /// The mouse has carried the tab `dragDistance` away from where it went down. Called once for a
    /// press; `grip` is the place inside the tab where the mouse holds it.
    std::function<void(int, QPoint grip)> didStartDrag;

    static QFont titleFont(bool isActive);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    static constexpr int maximumWidth = 240;

    void measure();

    Face face_;
    QString shownTitle_;
    QRgb titleColor_ = 0;
    QRgb ground_ = 0;
    EditorTabCloseMark* closeMark_;
    int tabIndex_ = 0;
    int preferredWidth_ = 0;
    std::optional<QPointF> mouseDownPoint_;  // Absent once the drag has started.
    bool isHiddenForDrag_ = false;
};

}  // namespace tavrel
