// How fast text is coloured: each scanner over 10 MB of source, the generic scan, and the slice
// around a key press; beside them a loop that does nothing but look up each unit in a table.

#include "config/BuiltInResources.h"
#include "config/LanguageMode.h"
#include "config/cson/TavrelCSONBackend.h"
#include "editor/SnapshotSource.h"
#include "editor/TextDecoder.h"
#include "highlight/CharacterClass.h"
#include "highlight/LexicalHighlighter.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace {

using namespace tavrel;

constexpr std::size_t textSize = 10'000'000;

LanguageMode modeWithId(const std::string& id)
{
    const auto modeText = BuiltInResources().textAt("Languages/" + id + ".cson");
    const auto value = modeText ? TavrelCSONBackend::parseCSON(*modeText)
                                : TavrelCSONBackend::parseCSON("{id: \"" + id + "\"}");
    return *LanguageMode::fromValue(*value);
}

/// The sample of a language, again and again up to 10 MB.
std::string sample(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    const std::string once{std::istreambuf_iterator<char>(file), {}};
    std::string bytes;
    while (bytes.size() < textSize)
        bytes += once;
    return bytes;
}

void tableLoop(benchmark::State& state, const std::string& bytes)
{
    for (auto _ : state) {
        std::size_t words = 0;
        CharacterClasses previous = 0;
        for (const char byte : bytes) {
            const CharacterClasses classes = classesOf(static_cast<unsigned char>(byte));
            words += (classes & wordClasses) && !(previous & wordClasses);
            previous = classes;
        }
        benchmark::DoNotOptimize(words);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
}

/// The whole text as a program colours it off the main thread: slice after slice from point to
/// point, with the runs of one slice in memory.
void sliceBySlice(benchmark::State& state, const LexicalHighlighter& highlighter,
                  const TextSnapshot& text)
{
    constexpr std::size_t sliceLength = 65'536;
    const SnapshotSource source(text);
    for (auto _ : state) {
        TokenRuns runs;
        for (ScanPoint point; point.location < text.length();) {
            runs.clear();
            point = highlighter.scan(source, point, point.location + sliceLength, runs);
            benchmark::DoNotOptimize(runs.runs().data());
        }
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.length()));
}

/// Everything in one call, with the runs of the whole text.
void atOnce(benchmark::State& state, const LexicalHighlighter& highlighter,
            const TextSnapshot& text)
{
    const SnapshotSource source(text);
    for (auto _ : state)
        benchmark::DoNotOptimize(highlighter.highlight(source).runs.length());
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.length()));
}

/// What a key press in the middle of the text costs: 16 Ki units before the line and 2 Ki behind.
void keyPress(benchmark::State& state, const LexicalHighlighter& highlighter,
              const TextSnapshot& text)
{
    const TextRange line = text.lineRange({text.length() / 2, 0});
    const std::size_t from = text.lineRange({line.location - 16'384, 0}).location;
    const std::size_t to = text.lineRange({line.end() + 2'048, 0}).end();
    const SnapshotSource source(text);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            highlighter.highlight(source, line, TextRange{from, to - from}).runs.length());
}

void registerSample(const std::filesystem::path& path)
{
    const std::string id = path.stem().string();
    const auto* highlighter = new LexicalHighlighter(modeWithId(id));  // Live with the program.
    const auto* bytes = new std::string(sample(path));
    const auto* text = new TextSnapshot(decodedText(*bytes));
    const auto add = [&](const std::string& name, auto run) {
        benchmark::RegisterBenchmark((name + "/" + id).c_str(), [=](benchmark::State& state) {
            run(state);
        })->Unit(benchmark::kMicrosecond);
    };
    if (id == "cpp") {
        add("tableLoop", [=](benchmark::State& state) { tableLoop(state, *bytes); });
        add("atOnce", [=](benchmark::State& state) { atOnce(state, *highlighter, *text); });
        const auto* generic = new LexicalHighlighter([] {
            LanguageMode mode = modeWithId("cpp");
            mode.id = "unknown";
            return mode;
        }());
        add("generic", [=](benchmark::State& state) { atOnce(state, *generic, *text); });
    }
    add("sliceBySlice", [=](benchmark::State& state) { sliceBySlice(state, *highlighter, *text); });
    add("keyPress", [=](benchmark::State& state) { keyPress(state, *highlighter, *text); });
}

}  // namespace

int main(int argc, char** argv)
{
    for (const auto& entry : std::filesystem::directory_iterator(TAVREL_SAMPLES_FOLDER)) {
        if (entry.path().extension() != ".tokens")
            registerSample(entry.path());
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
