// What the text view costs beside the display: keys, pages and whole pictures, drawn into memory.

#include "editor/dispatch/DefaultKeyMap.h"
#include "editor/views/CodeEditorView.h"
#include "platform/Calendar.h"
#include "platform/Clock.h"
#include "platform/ManualMainQueue.h"
#include "platform/Pasteboard.h"
#include "platform/PosixFileSystem.h"

#include <QApplication>
#include <QKeyEvent>

#include <benchmark/benchmark.h>

#include <string>

namespace tavrel {
namespace {

std::u16string code(std::size_t length)
{
    std::u16string text;
    while (text.size() < length)
        text += u"    const auto value = lookup(table, index + 1);  // A line like many others.\n";
    return text;
}

std::u16string oneLine(std::size_t length)
{
    std::u16string text = code(length);
    for (char16_t& unit : text) {
        if (unit == u'\n')
            unit = u' ';
    }
    return text;
}

std::u16string ideographs(std::size_t length)
{
    std::u16string text;
    while (text.size() < length)
        text += std::u16string(60, u'\u4E2D') + u"\n";
    return text;
}

class Shown {
public:
    explicit Shown(const std::u16string& text)
        : pane({clock, mainQueue, fileSystem, pasteboard, calendar}), view(pane)
    {
        pane.commandDispatcher().load(defaultKeyMapEntries());
        pane.document().textStorage().replace({0, 0}, text);
        view.resize(1280, 780);
        view.show();
        view.setFocus();
        pane.setSelectedRange({text.size() / 2, 0});
        pane.scrollToVisible({text.size() / 2, 0});
        QCoreApplication::processEvents();
    }

    void press(int key, const QString& typed = {})
    {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, typed);
        QCoreApplication::sendEvent(&view.textView(), &event);
        QCoreApplication::sendPostedEvents();  // The drawing.
    }

    SimulatedClock clock;
    ManualMainQueue mainQueue{clock};
    PosixFileSystem fileSystem;
    MemoryPasteboard pasteboard;
    FixedCalendar calendar;
    EditorPane pane;
    CodeEditorView view;
};

void typeLetter(benchmark::State& state, const std::u16string& text)
{
    Shown shown(text);
    for (auto _ : state)
        shown.press(Qt::Key_A, QStringLiteral("a"));
}

void pageDown(benchmark::State& state, const std::u16string& text)
{
    Shown shown(text);
    for (auto _ : state) {
        shown.press(Qt::Key_PageDown);
        if (shown.pane.selectedRange().location + 10000 > text.size())
            shown.pane.setSelectedRange({0, 0});
    }
}

void moveCursor(benchmark::State& state, const std::u16string& text)
{
    Shown shown(text);
    bool isRight = false;
    for (auto _ : state) {
        isRight = !isRight;
        shown.press(isRight ? Qt::Key_Right : Qt::Key_Left);
    }
}

void redrawWindow(benchmark::State& state, const std::u16string& text)
{
    Shown shown(text);
    shown.view.resize(1280, 820);
    GitLineDiff diff;
    for (std::int64_t line = 1; line < 200'000; line += 3)
        diff.changedLines.push_back({line, 1, GitLineChangeKind::modified});
    shown.pane.document().gitLineDiff = diff;
    shown.pane.document().postDidChangeGitLineDiff();
    QCoreApplication::processEvents();
    for (auto _ : state) {
        shown.view.update();
        shown.view.textView().update();
        shown.view.lineNumberGutterView().update();
        shown.view.tabScrollView().update();
        shown.view.scrollBar().update();
        QCoreApplication::sendPostedEvents();
    }
}

BENCHMARK_CAPTURE(typeLetter, code10MB, code(10'000'000));
BENCHMARK_CAPTURE(typeLetter, oneLine10MB, oneLine(10'000'000));
BENCHMARK_CAPTURE(typeLetter, ideographs3M, ideographs(3'000'000));
BENCHMARK_CAPTURE(moveCursor, code10MB, code(10'000'000));
BENCHMARK_CAPTURE(redrawWindow, code10MB, code(10'000'000));
BENCHMARK_CAPTURE(redrawWindow, ideographs3M, ideographs(3'000'000));
BENCHMARK_CAPTURE(pageDown, code10MB, code(10'000'000));
BENCHMARK_CAPTURE(pageDown, oneLine10MB, oneLine(10'000'000));
BENCHMARK_CAPTURE(pageDown, ideographs3M, ideographs(3'000'000));

}  // namespace
}  // namespace tavrel

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
