#pragma once

#include "editor/views/ViewTheme.h"

#include <QScrollBar>

namespace tavrel {

/// A vertical scroll bar in the editor's colours. Drawn flat, since it is drawn with every scroll.
class EditorScrollBar final : public QScrollBar {
public:
    EditorScrollBar(const ViewTheme& theme, QWidget* parent);

    static constexpr int thickness = 14;

    QSize sizeHint() const override { return {thickness, 40}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void contextMenuEvent(QContextMenuEvent*) override {}

private:
    ViewTheme theme_;
};

}  // namespace tavrel
