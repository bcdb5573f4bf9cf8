// The text view as the place that text is dragged from and dropped on.

#include "editor/views/TavrelTextView.h"

#include <QDrag>
#include <QDragMoveEvent>
#include <QMimeData>
#include <QPointer>
#include <QUrl>

#include <algorithm>

namespace tavrel {

namespace {

// The text of a drag, made when somebody asks for it: most drags end where nobody does.
class DraggedTextData final : public QMimeData {
public:
    explicit DraggedTextData(TextSnapshot text) : text_(std::move(text)) {}

    QStringList formats() const override { return {QStringLiteral("text/plain")}; }

protected:
    QVariant retrieveData(const QString& format, QMetaType type) const override
    {
        if (format != QLatin1String("text/plain"))
            return {};
        const QString text = QString::fromStdU16String(text_.text());
        return type.id() == QMetaType::QByteArray ? QVariant(text.toUtf8()) : QVariant(text);
    }

private:
    TextSnapshot text_;
};

// Files are for the window to open; anything else that is text is inserted.
bool isText(const QMimeData& data)
{
    const QList<QUrl> urls = data.urls();
    const bool hasFiles =
        std::any_of(urls.begin(), urls.end(), [](const QUrl& url) { return url.isLocalFile(); });
    return data.hasText() && !hasFiles;
}

const TavrelTextView* sourceView(const QDropEvent& event)
{
    return dynamic_cast<const TavrelTextView*>(event.source());
}

}  // namespace

bool TavrelTextView::isInSelection(QPointF point) const
{
    return pane_.selectedRanges().size() == 1 &&
           std::any_of(decorations_.selection.begin(), decorations_.selection.end(),
                       [point](const QRectF& rect) { return rect.contains(point); });
}

void TavrelTextView::dragText()
{
    textDragStart_.reset();
    const TextRange range = pane_.selectedRange();
    const std::shared_ptr<EditorDocument> document = document_;
    const TextSnapshot carried = rows_.text().slice(range);
    auto* drag = new QDrag(this);
    drag->setMimeData(new DraggedTextData(carried));
    draggedText_ = range;
    const QPointer<TavrelTextView> self = this;
    const Qt::DropAction done = drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::MoveAction);
    if (!self)
        return;
    draggedText_.reset();
    // Whoever took the text has not taken it from here. It goes, unless it is another one by now.
    if (done == Qt::MoveAction && document == document_ && rows_.text().slice(range) == carried)
        pane_.replaceText(range, {});
}

void TavrelTextView::dragEnterEvent(QDragEnterEvent* event)
{
    if (!isText(*event->mimeData())) {
        event->ignore();
        return;
    }
    event->acceptProposedAction();
    showDropLocation(offsetAt(event->position()));
}

void TavrelTextView::dragMoveEvent(QDragMoveEvent* event)
{
    if (!isText(*event->mimeData())) {
        event->ignore();
        return;
    }
    event->acceptProposedAction();
    showDropLocation(offsetAt(event->position()));
    updateAutoscroll(event->position(), font_.rowHeight());
}

void TavrelTextView::dragLeaveEvent(QDragLeaveEvent*)
{
    autoscrollTimer_.stop();
    showDropLocation(std::nullopt);
}

void TavrelTextView::dropEvent(QDropEvent* event)
{
    autoscrollTimer_.stop();
    showDropLocation(std::nullopt);
    if (!isText(*event->mimeData())) {
        event->ignore();
        return;
    }
    event->acceptProposedAction();
    const TavrelTextView* source = sourceView(*event);
    const bool isSameText = source && source->document_ == document_ && source->draggedText_;
    if (isSameText && event->proposedAction() == Qt::MoveAction) {
        // Both halves of the move are done here, so they are one step of undo.
        event->setDropAction(Qt::TargetMoveAction);
        event->accept();
    }
    dropText(*event, offsetAt(event->position()));
    setFocus(Qt::MouseFocusReason);
}

void TavrelTextView::dropText(const QDropEvent& event, std::size_t location)
{
    closeCompletions();
    pane_.clearLastActionWasTyping();
    const TavrelTextView* source = sourceView(event);
    if (event.dropAction() == Qt::TargetMoveAction) {
        pane_.moveText(*source->draggedText_, location);
        return;
    }
    // Between two of our own views the text goes as it is, with what no other program could carry.
    const TextSnapshot dropped = source && source->draggedText_
                                     ? source->rows_.text().slice(*source->draggedText_)
                                     : TextSnapshot(event.mimeData()->text().toStdU16String());
    pane_.replaceText({location, 0}, dropped, TextRange{location, dropped.length()});
}

void TavrelTextView::showDropLocation(std::optional<std::size_t> location)
{
    if (location == dropLocation_)
        return;
    dropLocation_ = location;
    refreshDecorations();
}

}  // namespace tavrel
