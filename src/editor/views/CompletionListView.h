#pragma once

#include "editor/views/ViewTheme.h"

#include <QFont>
#include <QStringList>
#include <QWidget>

#include <functional>
#include <string>
#include <vector>

class QKeyEvent;

namespace tavrel {

/// The words that may complete what is being typed, in a box over the text. It lies inside the
/// window of the text view and never has the keyboard: the view hands its keys over.
///
/// Shows at most `maximumRows` words at a time; longer lists scroll, longer words are elided. One
/// word is always the chosen one.
class CompletionListView final : public QWidget {
public:
    explicit CompletionListView(QWidget* window);

    static constexpr int maximumRows = 10;

    /// Shows the words, of which there is at least one, and chooses the first. The box lies below
    /// `cursor`, or above it where there is no room, and in any case inside `bounds`; both are in
    /// the coordinates of the window.
    void present(const std::vector<std::u16string>& words, const QFont& font,
                 const ViewTheme& theme, const QRect& cursor, const QRect& bounds);

    const QStringList& words() const { return words_; }
    int chosenIndex() const { return chosenIndex_; }
    /// The first of the words in sight.
    int firstShownIndex() const { return firstIndex_; }
    int shownRowCount() const { return shownRowCount_; }
    /// Where a word is drawn, which is outside the box for one out of sight.
    QRect rowRect(int index) const;

    /// Up and Down, the page keys, Home and End choose another word. False for any other key.
    bool handleKey(const QKeyEvent& event);

    /// Called with the index of the word that was clicked.
    std::function<void(int)> didClick;
    /// Called when the mouse goes down anywhere else in the program.
    std::function<void()> didClickElsewhere;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void choose(int index);
    void scrollTo(int firstIndex);
    int rowHeight() const;
    QRect thumbRect() const;

    QStringList words_;
    ViewTheme theme_;
    int chosenIndex_ = 0;
    int firstIndex_ = 0;
    int shownRowCount_ = 1;
    int wheelRest_ = 0;  // Of a step, in the wheel's own units.
};

}  // namespace tavrel
