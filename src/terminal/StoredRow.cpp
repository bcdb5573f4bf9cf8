#include "terminal/StoredRow.h"

#include <algorithm>
#include <cstring>

namespace tavrel {
namespace {

template<class Value>
Value load(const std::uint8_t* bytes)
{
    Value value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

template<class Value>
std::uint8_t* store(std::uint8_t* bytes, Value value)
{
    std::memcpy(bytes, &value, sizeof value);
    return bytes + sizeof value;
}

constexpr std::size_t countBytes = sizeof(std::uint16_t);
constexpr std::size_t startBytes = sizeof(std::uint16_t);
constexpr std::size_t runBytes = startBytes + sizeof(TerminalStyle);

bool allDefault(std::span<const TerminalStyle> styles)
{
    // No early end: the loop over all is done several cells at a time.
    bool differs = false;
    for (const TerminalStyle style : styles)
        differs |= style != TerminalStyle();
    return !differs;
}

template<class Unit>
std::uint8_t* storeCharacters(std::span<const char32_t> characters, std::uint8_t* bytes)
{
    for (std::size_t i = 0; i < characters.size(); ++i) {
        const Unit unit = static_cast<Unit>(characters[i]);
        std::memcpy(bytes + i * sizeof unit, &unit, sizeof unit);
    }
    return bytes + characters.size() * sizeof(Unit);
}

template<class Unit>
void loadCharacters(const std::uint8_t* bytes, std::span<char32_t> characters)
{
    for (std::size_t i = 0; i < characters.size(); ++i)
        characters[i] = load<Unit>(bytes + i * sizeof(Unit));
}

std::uint8_t* storeRuns(std::span<const TerminalStyle> styles, std::uint8_t* bytes)
{
    // The starts stand before the styles, whose place follows from the number of runs. Where runs
    // end cannot be foretold, so each column is written, and stays only where it is a start.
    std::uint8_t* const starts = bytes + countBytes;
    std::size_t count = 1;
    store(starts, std::uint16_t{0});
    for (std::size_t i = 1; i < styles.size(); ++i) {
        store(starts + count * startBytes, static_cast<std::uint16_t>(i));
        count += styles[i] != styles[i - 1] ? 1 : 0;
    }
    store(bytes, static_cast<std::uint16_t>(count));
    std::uint8_t* to = starts + count * startBytes;
    for (std::size_t run = 0; run < count; ++run)
        to = store(to, styles[load<std::uint16_t>(starts + run * startBytes)]);
    return to;
}

}  // namespace

int StoredRow::runEnd(int column) const
{
    const int next = runAt(column) + 1;
    return next < runCount() ? std::min(runStart(next), length()) : length();
}

void StoredRow::restore(TerminalScreenRow& row, int columns) const
{
    row.assign(length(), columns);
    for (int column = 0; column < length();) {
        const int end = runEnd(column);
        const TerminalStyle style = runStyle(runAt(column));
        std::fill(row.styles().begin() + column, row.styles().begin() + end, style);
        column = end;
    }
    const std::span<char32_t> characters = row.characters();
    switch (header_.characterSize) {
    case 0:
        std::ranges::fill(characters, U' ');
        break;
    case 1:
        loadCharacters<std::uint8_t>(characterBytes(), characters);
        break;
    case 2:
        loadCharacters<std::uint16_t>(characterBytes(), characters);
        break;
    default:
        loadCharacters<std::uint32_t>(characterBytes(), characters);
    }
}

StoredRow::Source StoredRow::sourceOf(const TerminalScreenRow& row)
{
    std::size_t length = static_cast<std::size_t>(row.length());
    const std::span<const char32_t> characters = row.characters();
    const std::span<const TerminalStyle> styles = row.styles();
    if (row.fill() == TerminalStyle())
        while (length > 0 && characters[length - 1] == U' ' &&
               styles[length - 1] == TerminalStyle())
            --length;
    return {characters.first(length), styles.first(length)};
}

std::size_t StoredRow::mostBytes(const Source& source)
{
    return countBytes + source.characters.size() * (runBytes + sizeof(char32_t));
}

std::size_t StoredRow::encode(const Source& source, Header& header, std::uint8_t* bytes)
{
    header.length = static_cast<std::uint16_t>(source.characters.size());
    header.hasRuns = !allDefault(source.styles);
    std::uint8_t* to = header.hasRuns ? storeRuns(source.styles, bytes) : bytes;
    char32_t bits = 0;
    for (const char32_t character : source.characters)
        bits |= character;
    header.characterSize = bits < 0x100 ? 1 : bits < 0x10000 ? 2 : 4;
    switch (header.characterSize) {
    case 1:
        to = storeCharacters<std::uint8_t>(source.characters, to);
        break;
    case 2:
        to = storeCharacters<std::uint16_t>(source.characters, to);
        break;
    default:
        to = storeCharacters<std::uint32_t>(source.characters, to);
    }
    return static_cast<std::size_t>(to - bytes);
}

void StoredRow::encodeBlanks(int length, TerminalStyle style, Header& header, std::uint8_t* bytes)
{
    header.length = static_cast<std::uint16_t>(length);
    header.characterSize = 0;
    header.hasRuns = true;
    store(store(store(bytes, std::uint16_t{1}), std::uint16_t{0}), style);
}

int StoredRow::runCount() const
{
    return header_.hasRuns ? load<std::uint16_t>(bytes_) : 1;
}

int StoredRow::runStart(int run) const
{
    if (!header_.hasRuns)
        return 0;
    return load<std::uint16_t>(bytes_ + countBytes + static_cast<std::size_t>(run) * startBytes);
}

int StoredRow::runAt(int column) const
{
    // The last run that starts at or before the column; the first one starts at 0.
    int low = 0;
    int high = runCount();
    while (high - low > 1) {
        const int middle = low + (high - low) / 2;
        (runStart(middle) <= column ? low : high) = middle;
    }
    return low;
}

TerminalStyle StoredRow::runStyle(int run) const
{
    if (!header_.hasRuns)
        return TerminalStyle();
    return load<TerminalStyle>(bytes_ + countBytes +
                               static_cast<std::size_t>(runCount()) * startBytes +
                               static_cast<std::size_t>(run) * sizeof(TerminalStyle));
}

const std::uint8_t* StoredRow::characterBytes() const
{
    return bytes_ +
           (header_.hasRuns ? countBytes + static_cast<std::size_t>(runCount()) * runBytes : 0);
}

char32_t StoredRow::character(int column) const
{
    const auto at = static_cast<std::size_t>(column);
    switch (header_.characterSize) {
    case 0:
        return U' ';
    case 1:
        return characterBytes()[at];
    case 2:
        return load<std::uint16_t>(characterBytes() + at * 2);
    default:
        return load<std::uint32_t>(characterBytes() + at * 4);
    }
}

}  // namespace tavrel
