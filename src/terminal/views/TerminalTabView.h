#pragma once

#include <QAbstractButton>
#include <QColor>
#include <QString>
#include <QWidget>

#include <functional>

namespace tavrel {

/// The button that closes a terminal's tab: an "x" without a frame.
class TerminalTabCloseButton final : public QAbstractButton {
public:
    explicit TerminalTabCloseButton(QWidget* parent);

    void setTint(const QColor& tint);

    /// The button was pressed. May be empty.
    std::function<void()> onClose;

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor tint_;
};

/// One tab of the terminal panel: a close button and a title. A click selects it, a right click is
/// for naming it. It never takes the keys.
class TerminalTabView final : public QWidget {
public:
    struct Colors {
        QColor text;
        QColor selection;
    };

    TerminalTabView(const QString& title, bool isActive, const Colors& colors, QWidget* parent);

    const QString& title() const { return title_; }
    bool isActive() const { return isActive_; }
    TerminalTabCloseButton& closeButton() { return *closeButton_; }

    // Each may be empty.
    std::function<void()> onSelect;
    std::function<void()> onRename;

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    QString title_;
    bool isActive_;
    Colors colors_;
    TerminalTabCloseButton* closeButton_;
};

}  // namespace tavrel
