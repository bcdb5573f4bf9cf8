#pragma once

#include "highlight/ScannedText.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tavrel {

/// The operators of a language, laid out by their first character when the program is compiled.
///
/// The first entry of the list that stands at a location wins, so a list that wants "<<=" to beat
/// "<<" names it first.
class SymbolTable {
public:
    /// `symbols` are separated by one space, of at most 4 characters, at most 64 in number.
    constexpr explicit SymbolTable(std::string_view symbols)
    {
        std::array<Symbol, maximumCount> inOrder{};
        std::size_t count = 0;
        for (std::size_t start = 0; start < symbols.size();) {
            Symbol& symbol = inOrder[count++];
            for (; start < symbols.size() && symbols[start] != ' '; ++start)
                symbol.units[symbol.length++] = symbols[start];
            ++start;
        }
        std::size_t placed = 0;
        for (std::size_t first = 0; first < buckets_.size(); ++first) {
            buckets_[first].start = static_cast<std::uint8_t>(placed);
            for (std::size_t i = 0; i < count; ++i) {
                if (static_cast<std::size_t>(inOrder[i].units[0]) == first)
                    symbols_[placed++] = inOrder[i];
            }
            buckets_[first].end = static_cast<std::uint8_t>(placed);
        }
    }

    /// The length of the operator at `location`, whose unit is `unit`; 0 where there is none.
    std::size_t lengthAt(ScannedText& text, std::size_t location, char16_t unit) const
    {
        if (unit >= buckets_.size())
            return 0;
        const Bucket bucket = buckets_[unit];
        for (std::size_t i = bucket.start; i < bucket.end; ++i) {
            const Symbol& symbol = symbols_[i];
            std::size_t matched = 1;
            while (matched < symbol.length &&
                   text.unitAt(location + matched) == static_cast<char16_t>(symbol.units[matched]))
                ++matched;
            if (matched == symbol.length)
                return matched;
        }
        return 0;
    }

private:
    static constexpr std::size_t maximumCount = 64;
    struct Symbol {
        std::array<char, 4> units{};
        std::uint8_t length = 0;
    };
    struct Bucket {
        std::uint8_t start = 0;  // Into `symbols_`.
        std::uint8_t end = 0;
    };

    std::array<Symbol, maximumCount> symbols_{};
    std::array<Bucket, 128> buckets_{};
};

}  // namespace tavrel
