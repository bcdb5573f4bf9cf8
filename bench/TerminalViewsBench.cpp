// Drawing a terminal, off the screen: pictures of everything, and of what one line of output
// changes.

#include "platform/Pasteboard.h"
#include "terminal/TerminalEmulator.h"
#include "terminal/views/TerminalGridView.h"

#include <QApplication>
#include <QImage>

#include <benchmark/benchmark.h>

#include <string>

namespace {

using namespace tavrel;

enum Content { blank, plain, source, colourful, everyCell, accented, boxes };

std::string cellOf(Content content, int row, int column)
{
    const std::string letter(1, static_cast<char>('!' + (row * 7 + column * 3) % 90));
    switch (content) {
    case blank:
        return " ";
    case plain:
        return letter;
    case source:  // Words of eight letters in one of six colours.
        return (column % 8 == 0 ? "\x1b[" + std::to_string(31 + (column / 8 + row) % 6) + "m"
                                : "") +
               (column % 8 == 7 ? " " : letter);
    case colourful:  // Every fourth cell has other colours.
        return (column % 4 == 0 ? "\x1b[38;5;" + std::to_string((row * 5 + column) % 256) +
                                      ";48;5;" + std::to_string((row + column * 3) % 256) + "m"
                                : "") +
               letter;
    case everyCell:  // Direct colours, no two alike.
        return "\x1b[38;2;" + std::to_string(row * 4 % 256) + ";" + std::to_string(column % 256) +
               ";90;48;2;" + std::to_string(column % 256) + ";20;" + std::to_string(row * 3 % 256) +
               "m" + letter;
    case accented:
        return column % 2 == 0 ? "\xC3\xA9" : "\xD0\x96";
    case boxes:
        return column % 2 == 0 ? "\xE2\x94\x82" : "\xE2\x94\x80";
    }
    return " ";
}

void fill(TerminalEmulator& emulator, Content content)
{
    std::string bytes;
    for (int row = 0; row < emulator.rows(); ++row) {
        bytes += "\x1b[" + std::to_string(row + 1) + ";1H";
        for (int column = 0; column < emulator.columns(); ++column)
            bytes += cellOf(content, row, column);
    }
    emulator.feed(bytes);
}

class Grid {
public:
    explicit Grid(const benchmark::State& state)
        : emulator(static_cast<int>(state.range(0)), static_cast<int>(state.range(1))),
          view(pasteboard, nullptr)
    {
        view.resize(static_cast<int>(8 + emulator.columns() * view.cellWidth()),
                    static_cast<int>(4 + emulator.rows() * view.cellHeight()));
        view.setEmulator(&emulator);
        view.show();
        QCoreApplication::processEvents();
    }
    ~Grid() { view.setEmulator(nullptr); }

    MemoryPasteboard pasteboard;
    TerminalEmulator emulator;
    TerminalGridView view;
};

void drawEverything(benchmark::State& state, Content content)
{
    Grid grid(state);
    fill(grid.emulator, content);
    grid.view.refresh();
    QImage picture(grid.view.size(), QImage::Format_RGB32);
    for (auto _ : state)
        grid.view.render(&picture);
}

void drawScrolledLine(benchmark::State& state)
{
    Grid grid(state);
    fill(grid.emulator, source);
    grid.view.refresh();
    QCoreApplication::processEvents();
    int number = 0;
    for (auto _ : state) {
        const std::string text = "line " + std::to_string(++number);
        grid.emulator.feed(text + std::string(" of what a compiler says about a file of code\r\n"));
        grid.view.refresh();
        QCoreApplication::processEvents();
    }
}

void drawTypedLetter(benchmark::State& state)
{
    Grid grid(state);
    fill(grid.emulator, source);
    grid.view.refresh();
    QCoreApplication::processEvents();
    bool isOdd = false;
    for (auto _ : state) {
        grid.emulator.feed((isOdd = !isOdd) ? "x\b" : "y\b");
        grid.view.refresh();
        QCoreApplication::processEvents();
    }
}

void compareRowsOnly(benchmark::State& state)
{
    Grid grid(state);
    fill(grid.emulator, source);
    for (auto _ : state)
        grid.view.refresh();
}

#define SIZES ->Args({80, 24})->Args({200, 60})->Unit(benchmark::kMicrosecond)

BENCHMARK_CAPTURE(drawEverything, blank, blank) SIZES;
BENCHMARK_CAPTURE(drawEverything, plain, plain) SIZES;
BENCHMARK_CAPTURE(drawEverything, source, source) SIZES;
BENCHMARK_CAPTURE(drawEverything, colourful, colourful) SIZES;
BENCHMARK_CAPTURE(drawEverything, everyCell, everyCell) SIZES;
BENCHMARK_CAPTURE(drawEverything, accented, accented) SIZES;
BENCHMARK_CAPTURE(drawEverything, boxes, boxes) SIZES;
BENCHMARK(drawScrolledLine) SIZES;
BENCHMARK(drawTypedLetter) SIZES;
BENCHMARK(compareRowsOnly) SIZES;

}  // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
