#include "editor/LineBreaks.h"

#include <type_traits>

namespace tavrel {

namespace {

// A count of 64 units fits the counter of each vector lane, and the loop over them unrolls fully.
constexpr std::size_t stepUnits = 64;

struct IsLf {
    template<class Unit>
    bool operator()(Unit unit, Unit) const
    {
        return unit == '\n';
    }
};

struct IsOtherBreak {
    template<class Unit>
    bool operator()(Unit unit, Unit) const
    {
        if constexpr (sizeof(Unit) == 1)
            return (unit == '\r') | (unit == 0x85);
        else
            return (unit == '\r') | (unit == 0x85) | ((unit & 0xFFFE) == 0x2028);
    }
};

struct IsBreak {
    template<class Unit>
    bool operator()(Unit unit, Unit before) const
    {
        return ((unit == '\n') & (before != '\r')) | IsOtherBreak()(unit, before);
    }
};

// How many of `stepUnits` units satisfy `test`; the unit before the first is readable.
template<class Unit, class Test>
std::size_t countStep(const Unit* units, Test test)
{
    using Counter = std::conditional_t<sizeof(Unit) == 1, std::uint8_t, std::uint16_t>;
    Counter found = 0;
    for (std::size_t i = 0; i < stepUnits; ++i)
        found = static_cast<Counter>(found + test(units[i], *(units + i - 1)));
    return found;
}

template<class Unit, class Test>
std::size_t countWhere(const Unit* units, std::size_t count, Unit before, Test test)
{
    if (count == 0)
        return 0;
    std::size_t found = test(units[0], before);
    std::size_t i = 1;
    for (; count - i >= stepUnits; i += stepUnits)
        found += countStep(units + i, test);
    for (; i < count; ++i)
        found += test(units[i], units[i - 1]);
    return found;
}

template<class Unit, class Test>
std::size_t findWhere(const Unit* units, std::size_t count, std::size_t number, Unit before,
                      Test test)
{
    if (count == 0)
        return 0;
    std::size_t found = test(units[0], before);
    if (found == number)
        return 0;
    std::size_t i = 1;
    for (; count - i >= stepUnits; i += stepUnits) {
        const std::size_t step = countStep(units + i, test);
        if (found + step >= number)
            break;
        found += step;
    }
    for (; i < count; ++i) {
        found += test(units[i], units[i - 1]);
        if (found == number)
            return i;
    }
    return count;
}

// LFs and other breaks in one walk: this runs over every byte of a file that is read.
template<class Unit>
LineCounts countBoth(const Unit* units, std::size_t count)
{
    using Counter = std::conditional_t<sizeof(Unit) == 1, std::uint8_t, std::uint16_t>;
    LineCounts counts;
    std::size_t others = 0;
    std::size_t i = 0;
    for (; count - i >= stepUnits; i += stepUnits) {
        Counter lfs = 0;
        Counter other = 0;
        for (std::size_t k = 0; k < stepUnits; ++k) {
            lfs = static_cast<Counter>(lfs + IsLf()(units[i + k], Unit(0)));
            other = static_cast<Counter>(other + IsOtherBreak()(units[i + k], Unit(0)));
        }
        counts.lfs += lfs;
        others += other;
    }
    for (; i < count; ++i) {
        counts.lfs += IsLf()(units[i], Unit(0));
        others += IsOtherBreak()(units[i], Unit(0));
    }
    counts.hasOnlyLfs = others == 0;
    counts.breaks = others == 0 ? counts.lfs : countWhere(units, count, Unit(0), IsBreak());
    return counts;
}

}  // namespace

LineCounts countLines(const std::uint8_t* units, std::size_t count)
{
    return countBoth(units, count);
}

LineCounts countLines(const char16_t* units, std::size_t count)
{
    return countBoth(units, count);
}

std::size_t countLfs(const std::uint8_t* units, std::size_t count)
{
    return countWhere<std::uint8_t>(units, count, 0, IsLf());
}

std::size_t countLfs(const char16_t* units, std::size_t count)
{
    return countWhere<char16_t>(units, count, 0, IsLf());
}

std::size_t countBreaks(const std::uint8_t* units, std::size_t count, bool afterCr)
{
    return countWhere<std::uint8_t>(units, count, afterCr ? '\r' : 0, IsBreak());
}

std::size_t countBreaks(const char16_t* units, std::size_t count, bool afterCr)
{
    return countWhere<char16_t>(units, count, afterCr ? u'\r' : u'\0', IsBreak());
}

std::size_t findLf(const std::uint8_t* units, std::size_t count, std::size_t number)
{
    return findWhere<std::uint8_t>(units, count, number, 0, IsLf());
}

std::size_t findLf(const char16_t* units, std::size_t count, std::size_t number)
{
    return findWhere<char16_t>(units, count, number, 0, IsLf());
}

std::size_t findBreak(const std::uint8_t* units, std::size_t count, std::size_t number,
                      bool afterCr)
{
    return findWhere<std::uint8_t>(units, count, number, afterCr ? '\r' : 0, IsBreak());
}

std::size_t findBreak(const char16_t* units, std::size_t count, std::size_t number, bool afterCr)
{
    return findWhere<char16_t>(units, count, number, afterCr ? u'\r' : u'\0', IsBreak());
}

}  // namespace tavrel
