#pragma once

#include <QPointF>
#include <QString>
#include <QTextLayout>

#include <memory>

class QInputMethodEvent;
class QPainter;

namespace tavrel {

class EditorFont;
struct ViewTheme;

/// What an input method is composing: text that is shown at the cursor but is not in the document
/// yet. Empty most of the time.
class PreeditText {
public:
    /// Takes what the event shows, in its formats; what has none is underlined. `font` must outlive
    /// this object, or it is to be cleared first.
    void set(const QInputMethodEvent& event, const EditorFont& font, const ViewTheme& theme);
    void clear();

    bool isEmpty() const { return text_.isEmpty(); }
    const QString& text() const { return text_; }
    /// In logical pixels: the width of it all, and how far into it the cursor stands.
    double width() const { return width_; }
    double cursorX() const { return cursorX_; }
    /// Whether the input method wants a cursor to be seen.
    bool hasCursor() const { return hasCursor_; }

    /// Draws it from `topLeft` on over the row's ground.
    void paint(QPainter& painter, QPointF topLeft, const ViewTheme& theme) const;

private:
    QString text_;
    std::unique_ptr<QTextLayout> layout_;  // Null for none.
    double width_ = 0;
    double cursorX_ = 0;
    double baseline_ = 0;  // From the top of a row.
    double height_ = 0;
    bool hasCursor_ = true;
};

}  // namespace tavrel
