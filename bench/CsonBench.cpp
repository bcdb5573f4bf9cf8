#include "config/cson/TavrelCSONBackend.h"

#include <benchmark/benchmark.h>
#include <cstring>
#include <string>

// Bytes per second of the CSON reader on three kinds of text, beside a copy of the same bytes.

namespace {

using tavrel::TavrelCSONBackend;

constexpr std::size_t megabyte = 1'000'000;

std::string repeated(const std::string& piece)
{
    std::string text = "[\n";
    while (text.size() < 4 * megabyte)
        text += piece;
    return text + "]\n";
}

// What people write: bindings, settings, comments.
const std::string& keyMap()
{
    static const std::string text = repeated(R"({
    # The keys of the text view. Commands run in order.
    "cmd+shift+left": [{moveCursor offset: -1 unit: line select: true}, {page scroll: false}]
    "ctrl+x ctrl+s": {saveDocument}  // As elsewhere.
    font: {name: "DejaVu Sans Mono", size: 13.5, ligatures: false}
    columnWidth: 100, tabWidth: 4
    theme: {colors: {foreground: "D8DEE9", background: "2E3440", keyword: "81A1C1", accent: none}}
}
)");
    return text;
}

// What a project file holds: paths and the text of unsaved documents.
const std::string& longStrings()
{
    static const std::string text = repeated(
        R"({"path": "/home/person/projects/editor/src/terminal/TerminalEmulator.cpp", unsavedText: "int main()
{
    return print(\"Unsaved text goes over several lines and holds quotes.\");
}
" selectionLocation: 1234 selectionLength: 0 scrollY: 512.25}
)");
    return text;
}

const std::string& numbers()
{
    static const std::string text = repeated("[0 1 -2 3.25 40000 -5e3 6 7 8 9]\n");
    return text;
}

void normalize(benchmark::State& state, const std::string& text)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(TavrelCSONBackend::normalizedJSONFromCSON(text));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

void parse(benchmark::State& state, const std::string& text)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(TavrelCSONBackend::parseCSON(text));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

void copy(benchmark::State& state, const std::string& text)
{
    std::string target(text.size(), ' ');
    for (auto _ : state) {
        std::memcpy(target.data(), text.data(), text.size());
        benchmark::DoNotOptimize(target.data());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

BENCHMARK_CAPTURE(normalize, keyMap, keyMap());
BENCHMARK_CAPTURE(normalize, longStrings, longStrings());
BENCHMARK_CAPTURE(normalize, numbers, numbers());
BENCHMARK_CAPTURE(parse, keyMap, keyMap())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(parse, longStrings, longStrings())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(parse, numbers, numbers())->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(copy, floor, keyMap());

}  // namespace
