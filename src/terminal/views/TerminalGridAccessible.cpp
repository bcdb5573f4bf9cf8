#include "terminal/views/TerminalGridAccessible.h"

#include "terminal/TerminalEmulator.h"
#include "terminal/views/TerminalGridView.h"

#include <QAccessible>
#include <QAccessibleWidget>

#include <algorithm>

namespace tavrel {

namespace {

/// The rows in sight as one text, in UTF-16 units. Screen readers may read and select in it; only
/// the shell can change it.
class TerminalGridAccessible final : public QAccessibleWidget, public QAccessibleTextInterface {
public:
    explicit TerminalGridAccessible(TerminalGridView* view)
        : QAccessibleWidget(view, QAccessible::Terminal)
    {
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::TextInterface)
            return static_cast<QAccessibleTextInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QString text(QAccessible::Text type) const override
    {
        return type == QAccessible::Value ? view().shownText() : QAccessibleWidget::text(type);
    }

    QString text(int startOffset, int endOffset) const override
    {
        const QString text = view().shownText();
        const qsizetype start = std::clamp<qsizetype>(startOffset, 0, text.size());
        const qsizetype end =
            endOffset < 0 ? text.size() : std::min<qsizetype>(endOffset, text.size());
        return text.mid(start, std::max<qsizetype>(end - start, 0));
    }

    int characterCount() const override { return static_cast<int>(view().shownText().size()); }
    int cursorPosition() const override { return view().shownCursorOffset().value_or(0); }
    void setCursorPosition(int) override {}

    // The selection, as far as it is in sight.
    void selection(int index, int* startOffset, int* endOffset) const override
    {
        const auto selected = index == 0 ? view().selection() : std::nullopt;
        *startOffset = selected ? offsetOf(selected->start) : 0;
        const GridPosition behind =
            selected ? GridPosition{selected->end.row, selected->end.column + 1} : GridPosition();
        *endOffset = selected ? offsetOf(behind) : 0;
    }
    int selectionCount() const override { return view().selection() ? 1 : 0; }
    void addSelection(int startOffset, int endOffset) override
    {
        setSelection(0, startOffset, endOffset);
    }
    void removeSelection(int) override { view().clearSelection(); }
    void setSelection(int, int startOffset, int endOffset) override
    {
        if (endOffset <= startOffset) {
            view().clearSelection();
            return;
        }
        view().setSelection(selectionBetween(positionOf(startOffset), positionOf(endOffset - 1)));
    }

    QRect characterRect(int offset) const override
    {
        const QRect rect = view().cellRect(positionOf(offset)).toRect();
        return {view().mapToGlobal(rect.topLeft()), rect.size()};
    }
    int offsetAtPoint(const QPoint& point) const override
    {
        return offsetOf(view().positionAt(view().mapFromGlobal(point)));
    }
    void scrollToSubstring(int, int) override {}

    QString attributes(int offset, int* startOffset, int* endOffset) const override
    {
        *startOffset = std::clamp(offset, 0, characterCount());
        *endOffset = characterCount();
        return {};
    }

private:
    TerminalGridView& view() const { return *static_cast<TerminalGridView*>(widget()); }

    // Each character counts as one column here, which holds for all but those of two units.
    GridPosition positionOf(int offset) const
    {
        const QString before = text(0, std::max(offset, 0));
        const qsizetype lineFeed = before.lastIndexOf(QLatin1Char('\n'));
        return {view().scroll().top() + before.count(QLatin1Char('\n')),
                static_cast<std::int64_t>(before.size() - lineFeed - 1)};
    }

    int offsetOf(GridPosition position) const
    {
        const QStringList rows = view().shownText().split(QLatin1Char('\n'));
        const std::int64_t index = position.row - view().scroll().top();
        if (index < 0)
            return 0;
        if (index >= rows.size())
            return characterCount();
        qsizetype offset = 0;
        for (std::int64_t row = 0; row < index; ++row)
            offset += rows[row].size() + 1;
        return static_cast<int>(offset +
                                std::clamp<std::int64_t>(position.column, 0, rows[index].size()));
    }
};

QAccessibleInterface* gridInterface(const QString&, QObject* object)
{
    auto* view = dynamic_cast<TerminalGridView*>(object);
    return view ? new TerminalGridAccessible(view) : nullptr;
}

}  // namespace

void installGridAccessibility()
{
    // The toolkit knows a factory once, however often it is told of it.
    QAccessible::installFactory(gridInterface);
}

ReaderUpdate readerUpdate(const QString& before, const QString& after)
{
    const auto shorter = std::min(before.size(), after.size());
    const auto same = std::mismatch(before.begin(), before.begin() + shorter, after.begin()).first -
                      before.begin();
    const auto sameBehind =
        std::mismatch(before.rbegin(), before.rbegin() + (shorter - same), after.rbegin()).first -
        before.rbegin();
    return {static_cast<int>(same), before.mid(same, before.size() - same - sameBehind),
            after.mid(same, after.size() - same - sameBehind)};
}

void tellScreenReaders(TerminalGridView& view, QString& told)
{
    if (!QAccessible::isActive())
        return;
    const QString text = view.shownText();
    if (text != told) {
        const ReaderUpdate change = readerUpdate(told, text);
        QAccessibleTextUpdateEvent update(&view, change.position, change.removed, change.inserted);
        QAccessible::updateAccessibility(&update);
        told = text;
    }
    if (const auto offset = view.shownCursorOffset()) {
        QAccessibleTextCursorEvent cursor(&view, *offset);
        QAccessible::updateAccessibility(&cursor);
    }
}

}  // namespace tavrel
