#include "config/BuiltInResources.h"
#include "config/cson/TavrelCSONBackend.h"
#include "editor/DocumentColoring.h"
#include "platform/Clock.h"
#include "platform/ManualMainQueue.h"
#include "platform/ManualWorkQueue.h"

#include <benchmark/benchmark.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <random>
#include <string>

// What the main thread pays for colours in a C++ file of 100 MB: at a key press and when another
// part of it comes into view. And how long the work beside it takes to know the file throughout.

namespace tavrel {
namespace {

constexpr std::size_t fileLength = 100'000'000;
constexpr std::size_t page = 4000;

TextSnapshot sourceText()
{
    std::ifstream file(TAVREL_SAMPLES_FOLDER "/cpp.cpp", std::ios::binary);
    const std::string sample(std::istreambuf_iterator<char>(file), {});
    std::u16string text;
    text.reserve(fileLength + sample.size());
    while (text.size() < fileLength)
        text.append(sample.begin(), sample.end());
    return TextSnapshot(text);
}

std::shared_ptr<const LanguageMode> cppMode()
{
    const auto text = BuiltInResources().textAt("Languages/cpp.cson");
    const auto value = TavrelCSONBackend::parseCSON(text.value_or("{}"));
    const auto mode = value ? LanguageMode::fromValue(*value) : std::nullopt;
    return std::make_shared<const LanguageMode>(mode.value_or(LanguageMode::plain()));
}

struct BenchDocument {
    explicit BenchDocument(std::shared_ptr<const LanguageMode> mode = cppMode())
    {
        static const TextSnapshot text = sourceText();
        storage.emplace(text);
        coloring.emplace(*storage);
        coloring->setLanguage(std::move(mode), mainQueue, &workQueue);
        coloring->show(this, {0, page});
    }

    void settle()
    {
        do
            mainQueue.advance(1);
        while (workQueue.runOne());
    }

    SimulatedClock clock;
    ManualMainQueue mainQueue{clock};
    ManualWorkQueue workQueue;
    std::optional<TextStorage> storage;
    std::optional<DocumentColoring> coloring;
};

void firstLook(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state) {
        BenchDocument document;
        benchmark::DoNotOptimize(document.storage->tokenRevision());
    }
}
BENCHMARK(firstLook)->Unit(benchmark::kMicrosecond);

void knownThroughout(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state) {
        BenchDocument document;
        document.settle();
        if (!document.coloring->isKnownThroughout())
            state.SkipWithError("the file is not known throughout");
    }
}
BENCHMARK(knownThroughout)->Unit(benchmark::kMillisecond);

// The argument: whether the file is known throughout by then.
void scrolledToAnywhere(benchmark::State& state)
{
    BenchDocument document;
    if (state.range(0) != 0)
        document.settle();
    std::mt19937 random(1);
    for ([[maybe_unused]] auto _ : state)
        document.coloring->show(&document, {random() % (fileLength - page), page});
}
BENCHMARK(scrolledToAnywhere)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

void pagedDown(benchmark::State& state)
{
    BenchDocument document;
    document.settle();
    std::size_t location = 0;
    for ([[maybe_unused]] auto _ : state) {
        location = (location + page / 2) % (fileLength - page);
        document.coloring->show(&document, {location, page});
    }
}
BENCHMARK(pagedDown)->Unit(benchmark::kMicrosecond);

void typeAt(benchmark::State& state, std::u16string_view typed,
            std::shared_ptr<const LanguageMode> mode = cppMode())
{
    BenchDocument document(std::move(mode));
    document.settle();
    const std::size_t location = fileLength / 100 * static_cast<std::size_t>(state.range(0));
    const TextRange shown{location - std::min<std::size_t>(location, page / 2), page};
    document.coloring->show(&document, shown);
    for ([[maybe_unused]] auto _ : state) {
        std::size_t at = location;  // Always in sight.
        for (const char16_t unit : typed) {
            document.storage->replace({at++, 0}, std::u16string_view(&unit, 1));
            document.coloring->show(&document, shown);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(typed.size()));
}

// Words and signs; the argument is the place in hundredths of the file.
void typedKey(benchmark::State& state)
{
    typeAt(state, u"x");
}
BENCHMARK(typedKey)->Arg(0)->Arg(50)->Arg(99)->Unit(benchmark::kMicrosecond);

// In a text without a language, where links are looked for.
void typedKeyInPlainText(benchmark::State& state)
{
    typeAt(state, u"x", std::make_shared<const LanguageMode>(LanguageMode::plain()));
}
BENCHMARK(typedKeyInPlainText)->Arg(50)->Unit(benchmark::kMicrosecond);

// A comment begins and ends with every second key, and what is behind it changes with it.
void typedComment(benchmark::State& state)
{
    typeAt(state, u"/**/");
}
BENCHMARK(typedComment)->Arg(0)->Arg(50)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tavrel
