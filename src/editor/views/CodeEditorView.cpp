#include "editor/views/CodeEditorView.h"

#include "editor/views/EditorAccessibility.h"

#include <QColorDialog>
#include <QDrag>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QPixmap>
#include <QSignalBlocker>

#include <algorithm>
#include <cmath>
#include <limits>

namespace tavrel {

namespace {

constexpr int rangeDelayMilliseconds = 100;

// Around the text of a field.
constexpr int fieldInsetX = 2;
constexpr int fieldInsetY = 3;

QString tabType()
{
    return QString::fromLatin1(editorTabDragType.data(),
                               static_cast<qsizetype>(editorTabDragType.size()));
}

int clampedToInt(std::size_t value)
{
    return static_cast<int>(
        std::min<std::size_t>(value, static_cast<std::size_t>(std::numeric_limits<int>::max())));
}

}  // namespace

CodeEditorView::CodeEditorView(EditorPane& pane, QWidget* parent,
                               const EditorAppearance& appearance)
    : QWidget(parent), pane_(pane), tabScrollView_(new EditorTabScrollView(appearance.theme, this)),
      textView_(new TavrelTextView(pane, nullptr, this, appearance)),
      lineNumberGutterView_(new EditorLineNumberGutterView(*textView_, this)),
      scrollBar_(new EditorScrollBar(textView_->theme(), this))
{
    // Before anything is named: with its name a widget gets the interface that it then keeps.
    installEditorAccessibility();
    setFocusProxy(textView_);
    tabScrollView_->setAccessibleName(QStringLiteral("Tabs"));
    lineNumberGutterView_->setAccessibleName(QStringLiteral("Line numbers"));
    scrollBar_->setAccessibleName(QStringLiteral("Scroll bar"));
    rangeTimer_.setSingleShot(true);
    rangeTimer_.setInterval(rangeDelayMilliseconds);
    connect(&rangeTimer_, &QTimer::timeout, this, [this] { updateRange(); });
    connect(scrollBar_, &QAbstractSlider::valueChanged, this,
            [this](int value) { scrollBarMoved(value); });
    tabScrollView_->didSelect = [this](int index) { selectTab(index); };
    tabScrollView_->didClose = [this](int index) {
        pane_.closeTab(static_cast<std::size_t>(index));
    };
    tabScrollView_->didStartDrag = [this](int index, QPoint grip) { dragTab(index, grip); };
    setAcceptDrops(!isFieldEditor());
    if (isFieldEditor()) {
        textView_->setFieldLayout(true);
        tabScrollView_->hide();
        lineNumberGutterView_->hide();
        scrollBar_->hide();
    }
    textView_->setDelegate(this);
    pane_.setView(this);
    paneDidChangeTabs();
}

CodeEditorView::~CodeEditorView()
{
    pane_.setView(nullptr);
    // The children go while this object still is whole.
    textView_->setDelegate(nullptr);
    delete lineNumberGutterView_;
    delete textView_;
}

void CodeEditorView::setAppearance(const EditorAppearance& appearance)
{
    textView_->setAppearance(appearance);
    scrollBar_->setTheme(appearance.theme);
    tabScrollView_->setTheme(appearance.theme);
    lineNumberGutterView_->update();
    arrange();
    updateRange();
}

int CodeEditorView::preferredWidth() const
{
    const double width = textView_->columnLimit() + 52.0 + EditorScrollBar::thickness;
    return static_cast<int>(std::ceil(width));
}

void CodeEditorView::resizeEvent(QResizeEvent*)
{
    arrange();
    updateRange();
}

void CodeEditorView::arrange()
{
    if (isFieldEditor()) {
        textView_->setGeometry(
            rect().adjusted(fieldInsetX, fieldInsetY, -fieldInsetX, -fieldInsetY));
        return;
    }
    const int top = std::min(EditorTabScrollView::barHeight, height());
    const int gutter = std::min(lineNumberGutterView_->preferredWidth(), width());
    const int bar = std::min(EditorScrollBar::thickness, width() - gutter);
    tabScrollView_->setGeometry(0, 0, width(), top);
    lineNumberGutterView_->setGeometry(0, top, gutter, height() - top);
    textView_->setGeometry(gutter, top, width() - gutter - bar, height() - top);
    scrollBar_->setGeometry(width() - bar, top, bar, height() - top);
}

// --- Tabs

void CodeEditorView::paneDidChangeTabs()
{
    if (isFieldEditor())
        return;
    EditorTabScrollView::Tabs tabs;
    for (const std::shared_ptr<EditorTab>& tab : pane_.tabs())
        tabs.titles.push_back(tabTitle(*tab->document));
    tabs.activeIndex = pane_.activeTabIndex();
    tabs.isLoneEmptyTab = pane_.tabs().size() == 1 && pane_.document().isEmpty();
    const QString title = QString::fromStdU16String(tabs.titles[tabs.activeIndex]);
    if (title != textView_->accessibleName())
        textView_->setAccessibleName(title);
    tabScrollView_->setTabs(std::move(tabs));
    if (didChangeTabs)
        didChangeTabs();
}

void CodeEditorView::selectTab(int index)
{
    textView_->setFocus(Qt::MouseFocusReason);
    pane_.selectTab(static_cast<std::size_t>(index));
}

// --- Dragging tabs

void CodeEditorView::dragTab(int index, QPoint grip)
{
    if (!tabDrag_)
        return;
    const std::string token = tabDrag_->begin(pane_, static_cast<std::size_t>(index));
    EditorTabDragView& tab = tabScrollView_->tabView(index);
    auto* carried = new QMimeData;
    auto* drag = new QDrag(this);
    drag->setMimeData(carried);
    drag->setPixmap(tab.grab());
    drag->setHotSpot(grip);
    carried->setData(tabType(), QByteArray::fromStdString(token));
    hiddenDragSourceTabView_ = &tab;
    tab.setHiddenForDrag(true);
    EditorTabDrag& tabDrag = *tabDrag_;
    const QPointer<CodeEditorView> self = this;
    drag->exec(Qt::MoveAction);
    tabDrag.end();
    if (self && self->hiddenDragSourceTabView_)
        self->hiddenDragSourceTabView_->setHiddenForDrag(false);
}

bool CodeEditorView::canTakeTab(const QDropEvent& event) const
{
    return tabDrag_ && event.mimeData()->hasFormat(tabType()) &&
           tabDrag_->canDrop(pane_, event.mimeData()->data(tabType()).toStdString());
}

void CodeEditorView::dragEnterEvent(QDragEnterEvent* event)
{
    dragMoveEvent(event);
}

void CodeEditorView::dragMoveEvent(QDragMoveEvent* event)
{
    if (!canTakeTab(*event)) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::MoveAction);
    event->accept();
}

void CodeEditorView::dropEvent(QDropEvent* event)
{
    if (!canTakeTab(*event)) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::MoveAction);
    event->accept();
    tabDrag_->drop(pane_, event->mimeData()->data(tabType()).toStdString());
    textView_->setFocus(Qt::MouseFocusReason);
}

// --- The pane

void CodeEditorView::paneDidShowDocument()
{
    textView_->showDocument();
    arrange();
    updateRange();
}

void CodeEditorView::paneDidChangeSelection()
{
    textView_->refreshDecorations();
}

void CodeEditorView::paneDidChangeGitLineDiff()
{
    lineNumberGutterView_->setLineDiff(pane_.gitLineDiff());
}

void CodeEditorView::paneWantsFocus()
{
    textView_->setFocus(Qt::OtherFocusReason);
}

bool CodeEditorView::paneHasFocus() const
{
    const QWidget* focused = window()->focusWidget();
    return focused && (focused == this || isAncestorOf(focused));
}

void CodeEditorView::paneWantsVisible(TextRange range)
{
    textView_->scrollToVisible(range);
}

void CodeEditorView::paneWantsCompletions(TextRange partial,
                                          const std::vector<std::u16string>& candidates)
{
    textView_->showCompletions(partial, candidates);
}

void CodeEditorView::setScrollOrigin(const ScrollOrigin& origin)
{
    textView_->setScrollOrigin(origin);
}

void CodeEditorView::textViewDidChangeRows()
{
    lineNumberGutterView_->refresh();
    if (lineNumberGutterView_->preferredWidth() != lineNumberGutterView_->width())
        arrange();
    // Another height is another page, which the thumb shows at once and not a moment later.
    if (scrollBar_->pageStep() != clampedToInt(textView_->rows().rowsPerPage())) {
        updateRange();
        return;
    }
    showPosition();
    if (!rangeTimer_.isActive())
        rangeTimer_.start();
}

void CodeEditorView::textViewDidScroll(int dy)
{
    lineNumberGutterView_->scrolled(dy);
    showPosition();
}

void CodeEditorView::textViewDidBecomeFirstResponder()
{
    pane_.didBecomeFirstResponder();
}

void CodeEditorView::textViewDidEndEditing()
{
    pane_.didEndEditing();
}

// --- The colour panel

QColorDialog* CodeEditorView::colorPanel() const
{
    return colorPanel_;
}

void CodeEditorView::paneWantsColorPanel(Color color)
{
    // The toolkit's own, so that it tells of every colour on the way and looks alike everywhere.
    if (!colorPanel_) {
        colorPanel_ = new QColorDialog(this);
        colorPanel_->setAttribute(Qt::WA_DeleteOnClose);
        colorPanel_->setOptions(QColorDialog::DontUseNativeDialog | QColorDialog::NoButtons);
        colorPanel_->setWindowTitle(QStringLiteral("Color"));
        colorPanel_->setModal(false);
        connect(colorPanel_, &QColorDialog::currentColorChanged, this,
                [this](const QColor& picked) {
                    const QColor standard = picked.toRgb();
                    pane_.pickColor(standard.redF(), standard.greenF(), standard.blueF());
                });
        connect(colorPanel_, &QDialog::finished, this, [this] { pane_.endColorPicking(); });
    }
    {
        const QSignalBlocker blocker(colorPanel_.data());  // The colour that is there is no choice.
        colorPanel_->setCurrentColor(QColor(color.red, color.green, color.blue));
    }
    colorPanel_->show();
    colorPanel_->raise();
}

void CodeEditorView::paneDidEndColorPicking()
{
    if (colorPanel_)
        colorPanel_->close();
}

void CodeEditorView::updateRange()
{
    const ViewRows& rows = textView_->rows();
    const std::size_t last = rows.estimate(textView_->scrolling().end().location);
    isShowingPosition_ = true;
    scrollBar_->setRange(0, clampedToInt(last));
    scrollBar_->setPageStep(clampedToInt(rows.rowsPerPage()));
    isShowingPosition_ = false;
    showPosition();
}

void CodeEditorView::showPosition()
{
    // A thumb that is held stays where the mouse has it.
    if (scrollBar_->isSliderDown())
        return;
    isShowingPosition_ = true;
    scrollBar_->setValue(clampedToInt(textView_->rows().estimate(scrollOrigin().location)));
    isShowingPosition_ = false;
}

void CodeEditorView::scrollBarMoved(int value)
{
    if (isShowingPosition_)
        return;
    // A step of the bar is a row; only a thumb that is dragged goes by the estimate.
    const int shown = clampedToInt(textView_->rows().estimate(scrollOrigin().location));
    const int step = std::max(scrollBar_->pageStep(), 1);
    if (!scrollBar_->isSliderDown() && std::abs(value - shown) <= step) {
        textView_->scrollBy((value - shown) * textView_->editorFont().rowHeight());
        return;
    }
    if (value == scrollBar_->maximum()) {
        textView_->setScrollOrigin(textView_->scrolling().end());
        return;
    }
    textView_->setScrollOrigin(
        {textView_->rows().locationOfEstimate(static_cast<std::size_t>(value)), 0});
}

}  // namespace tavrel
