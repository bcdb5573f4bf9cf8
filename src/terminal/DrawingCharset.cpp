#include "terminal/DrawingCharset.h"

#include <array>
#include <cstddef>

namespace tavrel {
namespace {

struct Entry {
    char key;
    char32_t character;
};

// clang-format off
constexpr std::array entries{
    Entry{'j', U'\u2518'}, Entry{'k', U'\u2510'}, Entry{'l', U'\u250C'}, Entry{'m', U'\u2514'},
    Entry{'n', U'\u253C'}, Entry{'q', U'\u2500'}, Entry{'t', U'\u251C'}, Entry{'u', U'\u2524'},
    Entry{'v', U'\u2534'}, Entry{'w', U'\u252C'}, Entry{'x', U'\u2502'}, Entry{'|', U'\u2260'},
    Entry{'a', U'\u2592'}, Entry{'`', U'\u25C6'}, Entry{'f', U'\u00B0'}, Entry{'g', U'\u00B1'},
    Entry{'~', U'\u00B7'}, Entry{'o', U'\u23BA'}, Entry{'s', U'\u23BD'}, Entry{'0', U'\u2588'},
    Entry{'y', U'\u2264'}, Entry{'z', U'\u2265'}, Entry{'{', U'\u03C0'}, Entry{'}', U'\u00A3'},
};
// clang-format on

constexpr auto byCharacter = [] {
    std::array<char32_t, 128> table{};
    for (std::size_t i = 0; i < table.size(); ++i)
        table[i] = static_cast<char32_t>(i);
    for (const Entry& entry : entries)
        table[static_cast<std::size_t>(entry.key)] = entry.character;
    return table;
}();

}  // namespace

char32_t drawingCharacter(char32_t character)
{
    return character < byCharacter.size() ? byCharacter[character] : character;
}

}  // namespace tavrel
