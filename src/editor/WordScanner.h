#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tavrel {

/// What a unit is to the words that completion knows: ASCII letters, digits and "_".
enum class CompletionUnit : std::uint8_t { other, digit, letter };

constexpr std::array<CompletionUnit, 256> completionUnits = [] {
    std::array<CompletionUnit, 256> units{};
    for (std::size_t unit = '0'; unit <= '9'; ++unit)
        units[unit] = CompletionUnit::digit;
    for (std::size_t unit = 'A'; unit <= 'Z'; ++unit)
        units[unit] = units[unit - 'A' + 'a'] = CompletionUnit::letter;
    units['_'] = CompletionUnit::letter;
    return units;
}();

constexpr CompletionUnit completionUnit(char16_t unit)
{
    return unit < 256 ? completionUnits[unit] : CompletionUnit::other;
}

/// Finds the words of a text that comes in pieces: runs of at least three ASCII letters, digits and
/// "_" that do not begin with a digit. Calls `Visit` with each as a `std::string_view`.
template<typename Visit>
class WordScanner {
public:
    static constexpr std::size_t shortestWord = 3;

    explicit WordScanner(Visit visit) : visit_(visit) {}

    /// Takes the next piece, of one byte a unit or two.
    template<typename Unit>
    void scan(const Unit* units, std::size_t count)
    {
        const Unit* const end = units + count;
        const Unit* unit = units;
        if (!open_.empty())
            unit = continueWord(unit, end);
        while (unit != end) {
            while (unit != end && completionUnit(*unit) != CompletionUnit::letter)
                ++unit;
            const Unit* const start = unit;
            while (unit != end && completionUnit(*unit) != CompletionUnit::other)
                ++unit;
            if (unit == end)
                open_.assign(start, end);
            else if (static_cast<std::size_t>(unit - start) >= shortestWord)
                visitWord(start, unit);
        }
    }

    /// The text is over.
    void finish() { closeWord(); }

private:
    template<typename Unit>
    const Unit* continueWord(const Unit* unit, const Unit* end)
    {
        const Unit* const start = unit;
        while (unit != end && completionUnit(*unit) != CompletionUnit::other)
            ++unit;
        open_.append(start, unit);
        if (unit != end)
            closeWord();
        return unit;
    }

    void closeWord()
    {
        if (open_.size() >= shortestWord)
            visit_(std::string_view(open_));
        open_.clear();
    }

    void visitWord(const std::uint8_t* start, const std::uint8_t* end)
    {
        visit_({reinterpret_cast<const char*>(start), static_cast<std::size_t>(end - start)});
    }
    void visitWord(const char16_t* start, const char16_t* end)
    {
        word_.assign(start, end);
        visit_(std::string_view(word_));
    }

    Visit visit_;
    std::string open_;  // A word that the piece at hand may go on with.
    std::string word_;
};

}  // namespace tavrel
