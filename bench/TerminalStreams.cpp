#include "TerminalStreams.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <random>
#include <string_view>

namespace tavrel::bench {
namespace {

using Random = std::mt19937;

constexpr std::array<std::string_view, 10> words{
    "the",  "over",      "fa\u00E7ade",      "na\u00EFve", "of",
    "with", "\u00FCber", "Dvo\u0159\u00E1k", "for",        "\u041C\u043E\u0441\u043A\u0432\u0430"};
constexpr std::array<std::string_view, 10> ideographs{"\u65E5", "\u672C", "\u8A9E", "\u5B57",
                                                      "\u7AEF", "\u672B", "\uD55C", "\uAD6D",
                                                      "\u3067", "\u6DF7"};
constexpr std::array<std::string_view, 10> boxes{"\u250C", "\u2500", "\u252C", "\u2510", "\u2502",
                                                 "\u2514", "\u2550", "\u2588", "\u2591", "\u256C"};

int below(Random& random, int n)
{
    return static_cast<int>(random() % static_cast<unsigned>(n));
}

template<class List>
auto pick(Random& random, const List& list)
{
    return list[random() % list.size()];
}

std::string number(int n)
{
    return std::to_string(n);
}

// Letters of all kinds, every fifth a space.
std::string text(Random& random, int length)
{
    std::string text;
    for (int i = 0; i < length; ++i)
        text.push_back(below(random, 5) == 0 ? ' ' : static_cast<char>('!' + below(random, 94)));
    return text;
}

std::string denseAscii(Random& random)
{
    return text(random, 80) + "\r\n";
}

std::string longLines(Random& random)
{
    return text(random, 2'000 + below(random, 18'000)) + "\r\n";
}

std::string utf8Mixed(Random& random)
{
    std::string line;
    const int kind = below(random, 4);
    for (int i = 0; i < (kind == 0 ? 10 : kind == 3 ? 18 : 38); ++i) {
        if (kind == 0 || (kind == 3 && i % 3 == 0))
            (line += pick(random, words)) += ' ';
        else if (kind == 1 || (kind == 3 && i % 3 == 1))
            line += pick(random, ideographs);
        else
            (line += pick(random, boxes)) += pick(random, boxes);
    }
    return line + "\r\n";
}

std::string color(Random& random, int base)
{
    switch (below(random, 3)) {
    case 0:
        return number(base + below(random, 8) + 60 * below(random, 2));
    case 1:
        return number(base + 8) + ";5;" + number(below(random, 256));
    default:
        return number(base + 8) + ";2;" + number(below(random, 256)) + ";" +
               number(below(random, 256)) + ";" + number(below(random, 256));
    }
}

std::string sgrHeavy(Random& random)
{
    constexpr std::array<std::string_view, 6> codes{"1", "3", "4", "7", "22", "24;27"};
    std::string line;
    for (int used = 0; used < 80;) {
        const int kind = below(random, 6);
        const int length = std::min(1 + below(random, 6), 80 - used);
        line += "\x1B[";
        if (kind < 4)
            line += color(random, kind < 3 ? 30 : 40);
        else
            line += kind == 4 ? "0" : pick(random, codes);
        line += "m" + text(random, length);
        used += length;
    }
    return line + "\x1B[m\r\n";
}

std::string place(Random& random)
{
    return "\x1B[" + number(1 + below(random, 24)) + ";" + number(1 + below(random, 80)) + "H";
}

std::string cursorMotion(Random& random)
{
    return place(random) + text(random, 1);
}

std::string scrollRegion(Random& random)
{
    const int top = 1 + below(random, 10);
    const int bottom = top + 2 + below(random, 22 - top);
    const bool down = below(random, 4) == 0;
    std::string bytes = "\x1B[" + number(top) + ";" + number(bottom) + "r\x1B[" +
                        number(down ? top : bottom) + ";1H";
    for (int i = 0; i < 30; ++i)
        bytes += text(random, 10 + below(random, 50)) + (down ? "\r\x1BM" : "\r\n");
    return bytes;
}

// A program that draws the whole screen twenty times, and a line of the shell behind it.
std::string alternateScreen(Random& random)
{
    std::string bytes = "\x1B[?1049h\x1B[?1h\x1B=";
    for (int frame = 0; frame < 20; ++frame) {
        bytes += "\x1B[?25l\x1B[H";
        for (int row = 1; row < 24; ++row)
            bytes += "\x1B[" + number(row) + ";1H\x1B[" + number(30 + below(random, 8)) + "m" +
                     number(10'000 + below(random, 80'000)) + "\x1B[39m " +
                     text(random, 20 + below(random, 54)) + "\x1B[K";
        bytes += "\x1B[24;1H\x1B[7m" + text(random, 80) + "\x1B[27m\x1B[?25h";
    }
    return bytes + "\x1B[?1l\x1B>\x1B[?1049l" + text(random, 60) + "\r\n";
}

std::string eraseHeavy(Random& random)
{
    constexpr std::string_view lineFinals = "X@P";
    std::string operation;
    switch (below(random, 4)) {
    case 0:
        operation = number(1 + below(random, 30)) + pick(random, lineFinals);
        break;
    case 1:
        operation = number(1 + below(random, 5)) + (below(random, 2) == 0 ? "L" : "M");
        break;
    case 2:
        operation = number(below(random, 3)) + "J";
        break;
    default:
        operation = number(below(random, 3)) + "K";
    }
    return place(random) + "\x1B[4" + number(below(random, 8)) + "m\x1B[" + operation + "\x1B[m" +
           text(random, 1 + below(random, 20));
}

}  // namespace

std::vector<TerminalStream> generatedStreams(std::size_t size)
{
    const std::vector<std::pair<std::string, std::function<std::string(Random&)>>> kinds{
        {"dense-ascii", denseAscii},     {"long-lines", longLines},
        {"utf8-mixed", utf8Mixed},       {"sgr-heavy", sgrHeavy},
        {"cursor-motion", cursorMotion}, {"scroll-region", scrollRegion},
        {"alt-screen", alternateScreen}, {"erase-heavy", eraseHeavy},
    };
    std::vector<TerminalStream> streams;
    for (const auto& [name, next] : kinds) {
        Random random(1);
        std::string bytes;
        while (bytes.size() < size)
            bytes += next(random);
        streams.push_back({name, std::move(bytes)});
    }
    return streams;
}

std::vector<TerminalStream> streamsOfFolder(const std::string& folder)
{
    std::vector<TerminalStream> streams;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        std::ifstream file(entry.path(), std::ios::binary);
        streams.push_back({entry.path().filename().string(),
                           std::string(std::istreambuf_iterator<char>(file), {})});
    }
    std::ranges::sort(streams, {}, &TerminalStream::name);
    return streams;
}

}  // namespace tavrel::bench
