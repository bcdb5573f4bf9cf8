// How fast the text storage loads, edits, answers and saves.

#include "editor/TextCursor.h"
#include "editor/TextDecoder.h"
#include "editor/TextEncoder.h"
#include "editor/TextStorage.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <random>

namespace {

using namespace tavrel;

constexpr std::size_t mega = 1'000'000;

// Lines of 0 to 79 letters, like source code.
std::string sourceBytes(std::size_t size, std::string_view terminator = "\n")
{
    std::mt19937 random(1);
    std::string bytes;
    bytes.reserve(size + 100);
    while (bytes.size() < size) {
        for (unsigned length = random() % 80; length > 0; --length)
            bytes.push_back(static_cast<char>('a' + random() % 26));
        bytes += terminator;
    }
    return bytes;
}

std::string randomBytes(std::size_t size)
{
    std::mt19937 random(1);
    std::string bytes(size, 0);
    for (char& byte : bytes)
        byte = static_cast<char>(random());
    return bytes;
}

const TextSnapshot& sourceText(std::size_t size)
{
    static const TextSnapshot ten = decodedText(sourceBytes(10 * mega));
    static const TextSnapshot hundred = decodedText(sourceBytes(100 * mega));
    return size == 10 * mega ? ten : hundred;
}

// `count` replacements of a unit by two, spread evenly.
std::vector<TextEdit> evenEdits(std::size_t textLength, std::size_t count)
{
    std::vector<TextEdit> edits;
    const TextSnapshot replacement(u"xy");
    for (std::size_t i = 0; i < count; ++i)
        edits.push_back({{textLength / count * i, 1}, replacement});
    return edits;
}

void copyToFreshMemory(benchmark::State& state)
{
    const std::string bytes = sourceBytes(static_cast<std::size_t>(state.range(0)) * mega);
    for (auto _ : state) {
        const std::string copy = bytes;
        benchmark::DoNotOptimize(copy.data());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
}
BENCHMARK(copyToFreshMemory)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);

void decode(benchmark::State& state, const std::string& bytes)
{
    std::size_t memory = 0;
    for (auto _ : state) {
        TextDecoder decoder;
        // As a file is read, so that the bytes come from the cache.
        constexpr std::size_t step = 256 * 1024;
        for (std::size_t done = 0; done < bytes.size(); done += step)
            decoder.feed(std::string_view(bytes).substr(done, step));
        const TextSnapshot text = decoder.finish();
        benchmark::DoNotOptimize(text.length());
        state.PauseTiming();
        memory = text.memoryBytes();
        state.ResumeTiming();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
    state.counters["memoryPerByte"] =
        static_cast<double>(memory) / static_cast<double>(bytes.size());
}

void decodeSource(benchmark::State& state)
{
    decode(state, sourceBytes(static_cast<std::size_t>(state.range(0)) * mega));
}
BENCHMARK(decodeSource)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);

void decodeCrLfSource(benchmark::State& state)
{
    decode(state, sourceBytes(10 * mega, "\r\n"));
}
BENCHMARK(decodeCrLfSource)->Unit(benchmark::kMillisecond);

void decodeMixedSource(benchmark::State& state)
{
    decode(state, sourceBytes(10 * mega, " \xD0\xB6\xE4\xB8\xAD\xF0\x9F\x98\x80\n"));
}
BENCHMARK(decodeMixedSource)->Unit(benchmark::kMillisecond);

void decodeRandomBytes(benchmark::State& state)
{
    decode(state, randomBytes(10 * mega));
}
BENCHMARK(decodeRandomBytes)->Unit(benchmark::kMillisecond);

void encode(benchmark::State& state)
{
    const TextSnapshot& text = sourceText(100 * mega);
    for (auto _ : state) {
        std::size_t size = 0;
        forEachUtf8Chunk(text, [&](std::string_view bytes) {
            size += bytes.size();
            benchmark::DoNotOptimize(bytes.data());
            return true;
        });
        benchmark::DoNotOptimize(size);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.length()));
}
BENCHMARK(encode)->Unit(benchmark::kMillisecond);

void encodeMixed(benchmark::State& state)
{
    const TextSnapshot text =
        decodedText(sourceBytes(10 * mega, " \xD0\xB6\xE4\xB8\xAD\xF0\x9F\x98\x80\n"));
    for (auto _ : state) {
        forEachUtf8Chunk(text, [&](std::string_view bytes) {
            benchmark::DoNotOptimize(bytes.data());
            return true;
        });
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.length()));
}
BENCHMARK(encodeMixed)->Unit(benchmark::kMillisecond);

void takeSnapshot(benchmark::State& state)
{
    TextStorage storage(sourceText(100 * mega));
    for (auto _ : state) {
        TextSnapshot snapshot = storage.snapshot();
        benchmark::DoNotOptimize(snapshot);
    }
}
BENCHMARK(takeSnapshot);

void lineStartAtRandom(benchmark::State& state)
{
    const TextSnapshot& text = sourceText(100 * mega);
    std::mt19937 random(2);
    for (auto _ : state)
        benchmark::DoNotOptimize(text.lineStart(random() % text.lineCount()));
}
BENCHMARK(lineStartAtRandom);

void lineStartOfOneLineLater(benchmark::State& state)
{
    const TextSnapshot& text = sourceText(100 * mega);
    std::size_t line = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(text.lineStart(++line % text.lineCount()));
}
BENCHMARK(lineStartOfOneLineLater);

void lineRangeAtRandom(benchmark::State& state)
{
    const TextSnapshot& text = sourceText(100 * mega);
    std::mt19937 random(2);
    for (auto _ : state)
        benchmark::DoNotOptimize(text.lineRange({random() % text.length(), 0}));
}
BENCHMARK(lineRangeAtRandom);

void lineRangeInOneLongLine(benchmark::State& state)
{
    const TextSnapshot text = decodedText(std::string(10 * mega, 'x'));
    std::mt19937 random(2);
    for (auto _ : state)
        benchmark::DoNotOptimize(text.lineRange({random() % text.length(), 0}));
}
BENCHMARK(lineRangeInOneLongLine);

void lineStartInCrLfText(benchmark::State& state)
{
    const TextSnapshot text = decodedText(sourceBytes(10 * mega, "\r\n"));
    std::mt19937 random(2);
    for (auto _ : state)
        benchmark::DoNotOptimize(text.lineStart(random() % text.lineCount()));
}
BENCHMARK(lineStartInCrLfText);

void typeInOnePlace(benchmark::State& state)
{
    TextStorage storage(sourceText(100 * mega));
    std::size_t location = storage.length() / 2;
    for (auto _ : state) {
        storage.replace({location++, 0}, u"x");
        benchmark::DoNotOptimize(storage.snapshot());
    }
}
BENCHMARK(typeInOnePlace);

void editAtRandom(benchmark::State& state)
{
    TextStorage storage(sourceText(100 * mega));
    std::mt19937 random(2);
    for (auto _ : state)
        storage.replace({random() % storage.length(), random() % 2}, u"x");
}
BENCHMARK(editAtRandom);

void applyBatch(benchmark::State& state)
{
    const TextSnapshot& text = sourceText(static_cast<std::size_t>(state.range(0)) * mega);
    const std::vector<TextEdit> edits =
        evenEdits(text.length(), static_cast<std::size_t>(state.range(1)));
    for (auto _ : state) {
        TextStorage storage(text);
        storage.apply(edits);
        benchmark::DoNotOptimize(storage.snapshot());
    }
}
BENCHMARK(applyBatch)
    ->Args({100, 1})
    ->Args({100, 40})
    ->Args({100, 10'000})
    ->Args({10, 123'000})
    ->Unit(benchmark::kMillisecond);

// As undo applies a group: each in the coordinates of the text at its moment.
void applyOneByOne(benchmark::State& state)
{
    const TextSnapshot& text = sourceText(10 * mega);
    const std::vector<TextEdit> edits = evenEdits(text.length(), 123'000);
    const bool backwards = state.range(0) == 1;
    for (auto _ : state) {
        TextStorage storage(text);
        const TextStorageBatch batch(storage);
        for (std::size_t i = 0; i < edits.size(); ++i) {
            const TextEdit& edit = edits[backwards ? edits.size() - 1 - i : i];
            TextRange range = edit.range;
            range.location += backwards ? 0 : i;
            storage.replace(range, edit.replacement);
        }
        benchmark::DoNotOptimize(storage.snapshot());
    }
}
BENCHMARK(applyOneByOne)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void copySlice(benchmark::State& state)
{
    const TextSnapshot& text = sourceText(100 * mega);
    std::mt19937 random(2);
    for (auto _ : state) {
        const std::size_t location = random() % (text.length() / 2);
        benchmark::DoNotOptimize(text.slice({location, text.length() / 2}));
    }
}
BENCHMARK(copySlice);

void readWithCursor(benchmark::State& state)
{
    const TextSnapshot& text = sourceText(10 * mega);
    for (auto _ : state) {
        TextCursor cursor(text);
        unsigned sum = 0;
        for (std::size_t i = 0; i < text.length(); ++i)
            sum += cursor.unitAt(i);
        benchmark::DoNotOptimize(sum);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.length()));
}
BENCHMARK(readWithCursor)->Unit(benchmark::kMillisecond);

void readWithCursorNext(benchmark::State& state)
{
    const TextSnapshot& text = sourceText(10 * mega);
    for (auto _ : state) {
        TextCursor cursor(text);
        unsigned sum = 0;
        while (!cursor.isAtEnd())
            sum += cursor.next();
        benchmark::DoNotOptimize(sum);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.length()));
}
BENCHMARK(readWithCursorNext)->Unit(benchmark::kMillisecond);

void paintALine(benchmark::State& state)
{
    TextStorage storage(sourceText(100 * mega));
    std::mt19937 random(2);
    TokenRuns runs;
    for (int i = 0; i < 12; ++i)
        runs.append(3, i % 2 == 0 ? SyntaxToken::keyword : SyntaxToken::foreground);
    for (auto _ : state)
        storage.setTokens(random() % storage.length(), runs);
}
BENCHMARK(paintALine);

}  // namespace
