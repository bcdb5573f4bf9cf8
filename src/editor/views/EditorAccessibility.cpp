#include "editor/views/EditorAccessibility.h"

#include "editor/views/CodeEditorView.h"
#include "editor/views/TextViewAccessible.h"

#include <QAccessibleWidget>

#include <algorithm>

namespace tavrel {

namespace {

constexpr std::size_t longestAnnouncement = 4096;
constexpr std::size_t mostAnnouncements = 16;

class TabAccessible final : public QAccessibleWidget {
public:
    explicit TabAccessible(EditorTabDragView& tab)
        : QAccessibleWidget(&tab, QAccessible::PageTab), tab_(tab)
    {
    }

    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.selectable = true;
        state.selected = tab_.face().isActive;
        return state;
    }
    QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString& name) override
    {
        if (name == pressAction() && tab_.didSelect)
            tab_.didSelect(tab_.tabIndex());
    }

private:
    EditorTabDragView& tab_;
};

class ScrollBarAccessible final : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit ScrollBarAccessible(EditorScrollBar& bar)
        : QAccessibleWidget(&bar, QAccessible::ScrollBar), bar_(bar)
    {
    }

    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    QVariant currentValue() const override { return bar_.value(); }
    void setCurrentValue(const QVariant& value) override { bar_.setValue(value.toInt()); }
    QVariant maximumValue() const override { return bar_.maximum(); }
    QVariant minimumValue() const override { return bar_.minimum(); }
    QVariant minimumStepSize() const override { return bar_.singleStep(); }

private:
    EditorScrollBar& bar_;
};

QAccessibleInterface* makeAccessible(const QString&, QObject* object)
{
    if (auto* view = dynamic_cast<TavrelTextView*>(object))
        return new TextViewAccessible(*view);
    if (auto* tab = dynamic_cast<EditorTabDragView*>(object))
        return new TabAccessible(*tab);
    if (auto* tabs = dynamic_cast<EditorTabScrollView*>(object))
        return new QAccessibleWidget(tabs, QAccessible::PageTabList);
    if (auto* bar = dynamic_cast<EditorScrollBar*>(object))
        return new ScrollBarAccessible(*bar);
    return nullptr;
}

QString partOf(const TextSnapshot& text, TextRange range)
{
    range.length = std::min(range.length, longestAnnouncement);
    return QString::fromStdU16String(text.text(range));
}

}  // namespace

void installEditorAccessibility()
{
    QAccessible::installFactory(makeAccessible);
}

std::vector<TextAnnouncement> textAnnouncements(const TextSnapshot& before,
                                                const TextSnapshot& after,
                                                std::span<const TextChange> changes)
{
    std::vector<TextAnnouncement> announcements;
    std::size_t inserted = 0;
    std::size_t removed = 0;
    for (const TextChange& change : changes.first(std::min(changes.size(), mostAnnouncements))) {
        const std::size_t start = change.oldRange.location + inserted - removed;
        announcements.push_back({static_cast<int>(std::min<std::size_t>(start, 0x7FFFFFFF)),
                                 partOf(before, change.oldRange),
                                 partOf(after, {start, change.newLength})});
        inserted += change.newLength;
        removed += change.oldRange.length;
    }
    return announcements;
}

void announce(QWidget& view, std::span<const TextAnnouncement> announcements)
{
    for (const TextAnnouncement& each : announcements) {
        if (!each.removed.isEmpty()) {
            QAccessibleTextRemoveEvent event(&view, each.position, each.removed);
            QAccessible::updateAccessibility(&event);
        }
        if (!each.inserted.isEmpty()) {
            QAccessibleTextInsertEvent event(&view, each.position, each.inserted);
            QAccessible::updateAccessibility(&event);
        }
    }
}

}  // namespace tavrel
