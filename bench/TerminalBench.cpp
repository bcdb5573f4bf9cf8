// How fast the terminal's emulator reads what programs write, and what its history costs.
//
// Each stream is read by the emulator at 80 by 24 with 10,000 rows of history, and beside it by a
// bare loop that decodes it and writes a cell for each character. The streams are made here; those
// of a folder are read instead when TAVREL_TERMINAL_STREAMS names one.

#include "TerminalStreams.h"
#include "terminal/TerminalEmulator.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>

namespace {

using namespace tavrel;

constexpr int columns = 80;
constexpr int rows = 24;
constexpr std::size_t pieceSize = 65'536;  // What one read of the pty brings along at most.

void setRate(benchmark::State& state, const std::string& bytes)
{
    state.counters["MB/s"] = benchmark::Counter(static_cast<double>(bytes.size()) / 1e6,
                                                benchmark::Counter::kIsIterationInvariantRate);
}

void readByEmulator(benchmark::State& state, const std::string& bytes)
{
    TerminalEmulator emulator(columns, rows);
    for (auto _ : state) {
        for (std::size_t done = 0; done < bytes.size(); done += pieceSize)
            emulator.feed(std::string_view(bytes).substr(done, pieceSize));
        benchmark::DoNotOptimize(emulator.cursorX());
    }
    setRate(state, bytes);
}

// Text, escapes, control sequences without their meaning, and a cell of eight bytes for each
// character, in rows that are wiped at a line feed: the least that a terminal has to do.
class CellLoop {
public:
    CellLoop() : rows_(rowCount) {}

    void read(const std::string& bytes)
    {
        for (const char byte : bytes)
            take(static_cast<unsigned char>(byte));
        benchmark::DoNotOptimize(rows_[y_][0]);
    }

private:
    enum class State { text, escape, sequence, string };
    static constexpr std::size_t rowCount = 10'000 + rows;

    void take(unsigned char byte)
    {
        switch (state_) {
        case State::text:
            takeText(byte);
            break;
        case State::escape:
            state_ = byte == '[' ? State::sequence : byte == ']' ? State::string : State::text;
            break;
        case State::sequence:
            if (byte < 0x20 || byte > 0x3F) {
                pen_ = std::uint64_t{byte} << 32;
                state_ = State::text;
            }
            break;
        case State::string:
            if (byte == 7)
                state_ = State::text;
            break;
        }
    }

    void takeText(unsigned char byte)
    {
        if (byte < 0x20) {
            if (byte == 0x1B)
                state_ = State::escape;
            else if (byte == '\r')
                x_ = 0;
            else if (byte == '\n')
                nextRow();
            return;
        }
        if (byte < 0x80) {
            character_ = byte;
            more_ = 0;
        } else if (byte < 0xC0) {
            character_ = character_ << 6 | (byte & 0x3Fu);
            --more_;
        } else {
            more_ = byte < 0xE0 ? 1 : byte < 0xF0 ? 2 : 3;
            character_ = byte & (0x3Fu >> more_);
        }
        if (more_ > 0)
            return;
        if (x_ == columns) {
            x_ = 0;
            nextRow();
        }
        rows_[y_][x_++] = pen_ | character_;
    }

    void nextRow()
    {
        y_ = y_ + 1 == rowCount ? 0 : y_ + 1;
        rows_[y_].fill(pen_ | U' ');
    }

    std::vector<std::array<std::uint64_t, columns>> rows_;
    State state_ = State::text;
    std::size_t x_ = 0;
    std::size_t y_ = 0;
    std::uint64_t pen_ = 0;
    std::uint32_t character_ = 0;
    int more_ = 0;
};

void readByCellLoop(benchmark::State& state, const std::string& bytes)
{
    CellLoop loop;
    for (auto _ : state)
        loop.read(bytes);
    setRate(state, bytes);
}

// A wide terminal with a history of `count` rows: of letters in one colour, or with a direct colour
// of its own for each cell, than which nothing takes more memory.
enum class Filling { letters, colors };

void fillHistory(TerminalEmulator& emulator, std::int64_t count, Filling filling)
{
    emulator.setScrollbackLimit(static_cast<std::size_t>(count));
    std::string line;
    for (int x = 0; x < emulator.columns(); ++x) {
        if (filling == Filling::colors)
            line += "\x1B[38;2;1;2;" + std::to_string(x % 256) + "m\xF0\x9F\x98\x80";
        else
            line += static_cast<char>('a' + x % 26);
    }
    line += "\r\n";
    for (std::int64_t y = 0; y < count + emulator.rows(); ++y)
        emulator.feed(line);
}

void fillWideHistory(benchmark::State& state, Filling filling)
{
    std::size_t bytes = 0;
    for (auto _ : state) {
        TerminalEmulator emulator(200, 50);
        fillHistory(emulator, state.range(0), filling);
        bytes = emulator.scrollbackBytes();
    }
    state.counters["MB"] = static_cast<double>(bytes) / 1e6;
}
BENCHMARK_CAPTURE(fillWideHistory, letters, Filling::letters)
    ->Arg(10'000)
    ->Arg(1'000'000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(fillWideHistory, colors, Filling::colors)
    ->Arg(10'000)
    ->Unit(benchmark::kMillisecond);

void resizeWideHistory(benchmark::State& state, Filling filling)
{
    TerminalEmulator emulator(200, 50);
    fillHistory(emulator, state.range(0), filling);
    int width = 200;
    for (auto _ : state) {
        --width;
        emulator.resize(width, 40 + width % 20);
    }
}
BENCHMARK_CAPTURE(resizeWideHistory, letters, Filling::letters)
    ->Arg(10'000)
    ->Arg(1'000'000)
    ->Iterations(50)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(resizeWideHistory, colors, Filling::colors)
    ->Arg(10'000)
    ->Iterations(50)
    ->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv)
{
    const char* folder = std::getenv("TAVREL_TERMINAL_STREAMS");
    const auto streams =
        folder ? bench::streamsOfFolder(folder) : bench::generatedStreams(4'000'000);
    for (const bench::TerminalStream& stream : streams) {
        const auto add = [&](const char* kind, auto work) {
            benchmark::RegisterBenchmark(
                (kind + stream.name).c_str(),
                [&stream, work](benchmark::State& state) { work(state, stream.bytes); })
                ->Unit(benchmark::kMillisecond);
        };
        add("emulator/", readByEmulator);
        add("cells/", readByCellLoop);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
