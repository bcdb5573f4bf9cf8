#pragma once

#include <QAccessibleWidget>

namespace tavrel {

class TavrelTextView;

/// The text view as programs that read the screen know it: a text that can be read, selected and
/// edited. Offsets are UTF-16 units.
///
/// What is asked for is copied and nothing else; the text around an offset is looked for in the
/// line or the row there, so no question costs time in proportion to the text.
class TextViewAccessible final : public QAccessibleWidget,
                                 public QAccessibleTextInterface,
                                 public QAccessibleEditableTextInterface {
public:
    explicit TextViewAccessible(TavrelTextView& view);

    void* interface_cast(QAccessible::InterfaceType type) override;
    QAccessible::State state() const override;

    // QAccessibleTextInterface
    void selection(int index, int* start, int* end) const override;
    int selectionCount() const override;
    void addSelection(int start, int end) override;
    void removeSelection(int index) override;
    void setSelection(int index, int start, int end) override;
    int cursorPosition() const override;
    void setCursorPosition(int position) override;
    QString text(int start, int end) const override;
    using QAccessibleWidget::text;
    QString textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                             int* end) const override;
    QString textAfterOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                            int* end) const override;
    QString textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                         int* end) const override;
    int characterCount() const override;
    /// In the coordinates of the screen; empty for what is out of sight.
    QRect characterRect(int offset) const override;
    int offsetAtPoint(const QPoint& point) const override;
    void scrollToSubstring(int start, int end) override;
    QString attributes(int offset, int* start, int* end) const override;

    // QAccessibleEditableTextInterface
    void deleteText(int start, int end) override;
    void insertText(int offset, const QString& text) override;
    void replaceText(int start, int end, const QString& text) override;

private:
    TavrelTextView& view_;
};

}  // namespace tavrel
