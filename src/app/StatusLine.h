#pragma once

#include "editor/views/ViewTheme.h"

#include <QString>
#include <QWidget>

#include <string_view>

namespace tavrel {

/// One line of text at the foot of the window. What is too long is cut at its end.
class StatusLine final : public QWidget {
public:
    StatusLine(const ViewTheme& theme, QWidget* parent);

    void setTheme(const ViewTheme& theme);

    static constexpr int lineHeight = 24;

    /// Line breaks and other control characters show as blanks.
    void setText(std::u16string_view text);
    const QString& text() const { return text_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    ViewTheme theme_;
    QString text_;
};

}  // namespace tavrel
