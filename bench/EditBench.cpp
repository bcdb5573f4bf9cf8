#include "editor/BufferWords.h"
#include "editor/Completion.h"
#include "editor/EditorPane.h"
#include "editor/SortCommands.h"
#include "platform/Calendar.h"
#include "platform/Clock.h"
#include "platform/ManualMainQueue.h"
#include "platform/Pasteboard.h"
#include "platform/PosixFileSystem.h"

#include <benchmark/benchmark.h>
#include <optional>
#include <random>
#include <string>

// The engine's share of the key presses that cost the most: many cursors, many occurrences, many
// lines, completion in a large text. Drawing is measured from outside.

namespace tavrel {
namespace {

constexpr std::size_t tenMegabytes = 10'000'000;

/// Lines of words as in source code, `length` units at least. Every 100 units or so stands
/// "needle".
std::u16string sourceText(std::size_t length)
{
    std::mt19937 random(1);
    std::u16string text;
    text.reserve(length + 200);
    while (text.size() < length) {
        text += u"    ";
        for (int word = 0; word < 10; ++word) {
            text += word == 5 ? std::u16string(u"needle") : std::u16string(u"name");
            if (word != 5) {
                for (unsigned number = random() % 5000; number > 0; number /= 10)
                    text.push_back(static_cast<char16_t>(u'0' + number % 10));
            }
            text += u" (;"[random() % 3];
        }
        text.push_back(u'\n');
    }
    return text;
}

/// A pane and all that it needs, with a text in it.
struct BenchPane {
    explicit BenchPane(std::u16string_view text)
        : pane({clock, mainQueue, fileSystem, pasteboard, calendar})
    {
        pane.document().setText(TextSnapshot(text));
    }

    void run(const char* name) { pane.runCommand({name, {}}); }
    void putCursors(std::size_t count)
    {
        const std::size_t length = pane.text().length();
        std::vector<std::size_t> cursors;
        for (std::size_t cursor = 0; cursor < count; ++cursor)
            cursors.push_back(cursor * (length / count) + 1);
        pane.setSelectedRange({cursors.front(), 0});
        pane.storeCursors(std::move(cursors));
    }

    SimulatedClock clock;
    ManualMainQueue mainQueue{clock};
    PosixFileSystem fileSystem;
    MemoryPasteboard pasteboard;
    FixedCalendar calendar;
    EditorPane pane;
};

void typeAtCursors(benchmark::State& state)
{
    BenchPane bench(sourceText(tenMegabytes));
    bench.putCursors(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        bench.pane.insertText(u"x");
        state.PauseTiming();
        bench.clock.advance(std::chrono::seconds(2));
        state.ResumeTiming();
    }
}
BENCHMARK(typeAtCursors)->Arg(1)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

void eraseAtCursors(benchmark::State& state)
{
    BenchPane bench(sourceText(tenMegabytes));
    bench.putCursors(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        bench.clock.advance(std::chrono::seconds(2));
        bench.pane.insertText(u"x");
        state.ResumeTiming();
        bench.run("erase");
    }
}
BENCHMARK(eraseAtCursors)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

void undoAndRedoAtCursors(benchmark::State& state)
{
    BenchPane bench(sourceText(tenMegabytes));
    bench.putCursors(static_cast<std::size_t>(state.range(0)));
    bench.pane.insertText(u"x");
    for (auto _ : state) {
        bench.pane.undo();
        bench.pane.redo();
    }
}
BENCHMARK(undoAndRedoAtCursors)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

void moveCursors(benchmark::State& state)
{
    BenchPane bench(sourceText(tenMegabytes));
    bench.putCursors(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state)
        bench.run("skipWord");
}
BENCHMARK(moveCursors)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

void selectWordAll(benchmark::State& state)
{
    BenchPane bench(sourceText(tenMegabytes));
    const std::size_t word = bench.pane.text().text({0, 1000}).find(u"needle");
    for (auto _ : state) {
        bench.pane.setSelectedRange({word, 0});
        bench.run("selectWordAll");
    }
    state.counters["hits"] = static_cast<double>(bench.pane.selectedRanges().size());
}
BENCHMARK(selectWordAll)->Unit(benchmark::kMillisecond);

void selectWordWithAllTaken(benchmark::State& state)
{
    BenchPane bench(sourceText(tenMegabytes));
    bench.pane.setSelectedRange({bench.pane.text().text({0, 1000}).find(u"needle"), 0});
    bench.run("selectWordAll");
    for (auto _ : state)
        bench.run("selectWord");
}
BENCHMARK(selectWordWithAllTaken)->Unit(benchmark::kMillisecond);

void typeAtOccurrences(benchmark::State& state)
{
    const std::u16string text = sourceText(tenMegabytes);
    const std::size_t word = text.find(u"needle");
    std::optional<BenchPane> bench;
    for (auto _ : state) {
        state.PauseTiming();
        bench.emplace(text);
        bench->pane.setSelectedRange({word, 0});
        bench->run("selectWordAll");
        state.ResumeTiming();
        bench->pane.insertText(u"x");
    }
}
BENCHMARK(typeAtOccurrences)->Unit(benchmark::kMillisecond)->Iterations(10);

void sortLines(benchmark::State& state)
{
    std::mt19937 random(1);
    std::u16string text;
    for (std::int64_t line = 0; line < state.range(0); ++line) {
        for (int unit = 0; unit < 20; ++unit)
            text.push_back(static_cast<char16_t>(u'a' + random() % 26));
        text.push_back(u'\n');
    }
    BenchPane bench(text);
    for (auto _ : state) {
        bench.run("selectAll");
        bench.run("sortLines");
        state.PauseTiming();
        bench.pane.undo();
        state.ResumeTiming();
    }
}
BENCHMARK(sortLines)->Arg(1'000'000)->Unit(benchmark::kMillisecond);

void commentEveryLine(benchmark::State& state)
{
    BenchPane bench(sourceText(tenMegabytes));
    for (auto _ : state) {
        bench.run("selectAll");
        bench.run("comment");
        state.PauseTiming();
        bench.pane.undo();
        state.ResumeTiming();
    }
}
BENCHMARK(commentEveryLine)->Unit(benchmark::kMillisecond);

void lineEndOfALongLine(benchmark::State& state)
{
    BenchPane bench(std::u16string(tenMegabytes, u'x'));
    for (auto _ : state) {
        bench.run("lineEnd");
        bench.run("lineBegin");
    }
}
BENCHMARK(lineEndOfALongLine);

void firstCompletion(benchmark::State& state)
{
    const TextSnapshot text(sourceText(tenMegabytes));
    for (auto _ : state) {
        BufferWords words;
        words.update(text);
        benchmark::DoNotOptimize(completionCandidates(
            u"na", {.bufferWords = words.words(), .keywords = {}, .types = {}}));
    }
}
BENCHMARK(firstCompletion)->Unit(benchmark::kMillisecond);

void completionAfterAnEdit(benchmark::State& state)
{
    BenchPane bench(sourceText(tenMegabytes));
    const std::size_t middle = tenMegabytes / 2;
    bench.pane.setSelectedRange({middle, 0});
    bench.pane.insertText(u" na ");
    bench.pane.completionCandidates({middle + 1, 2});
    for (auto _ : state) {
        state.PauseTiming();
        bench.pane.setSelectedRange({middle - 100, 0});
        bench.pane.insertText(u"y");
        bench.run("erase");
        state.ResumeTiming();
        benchmark::DoNotOptimize(bench.pane.completionCandidates({middle + 1, 2}));
    }
}
BENCHMARK(completionAfterAnEdit)->Unit(benchmark::kMillisecond);

/// What a reload costs beyond reading the file: one line in the middle is another.
void setAlmostEqualText(benchmark::State& state)
{
    const std::u16string text = sourceText(static_cast<std::size_t>(state.range(0)));
    std::u16string changed = text;
    changed[text.size() / 2] ^= 1;
    BenchPane bench(text);
    const TextSnapshot texts[2] = {TextSnapshot(changed), TextSnapshot(text)};
    std::size_t next = 0;
    for (auto _ : state)
        bench.pane.document().setText(texts[next++ % 2]);
}
BENCHMARK(setAlmostEqualText)
    ->Arg(tenMegabytes)
    ->Arg(10 * tenMegabytes)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tavrel
