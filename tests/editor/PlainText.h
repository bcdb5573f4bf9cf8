#pragma once

#include "editor/TextChange.h"
#include "editor/TextSnapshot.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace tavrel {

/// The same text as a storage holds, kept in the plainest way: one element for each unit.
struct PlainText {
    struct Unit {
        char16_t unit = 0;
        SyntaxToken token = SyntaxToken::foreground;
        std::string rawBytes;
    };
    std::vector<Unit> units;

    PlainText() = default;
    explicit PlainText(const TextSnapshot& text)
    {
        const TokenRuns tokens = text.tokens({0, text.length()});
        const std::u16string all = text.text();
        for (std::size_t i = 0; i < all.size(); ++i)
            units.push_back({all[i], tokens.tokenAt(i), text.rawBytesAt(i).value_or("")});
    }

    std::size_t length() const { return units.size(); }

    void replace(TextRange range, const TextSnapshot& replacement)
    {
        PlainText inserted(replacement);
        for (Unit& unit : inserted.units)
            unit.token = SyntaxToken::foreground;
        const auto from = units.begin() + static_cast<std::ptrdiff_t>(range.location);
        const auto at = units.erase(from, from + static_cast<std::ptrdiff_t>(range.length));
        units.insert(at, inserted.units.begin(), inserted.units.end());
    }

    std::u16string text() const
    {
        std::u16string all;
        for (const Unit& unit : units)
            all.push_back(unit.unit);
        return all;
    }

    TokenRuns tokens() const
    {
        TokenRuns runs;
        for (const Unit& unit : units)
            runs.append(1, unit.token);
        return runs;
    }
};

/// Where lines start, counted unit by unit.
inline std::vector<std::size_t> plainLineStarts(std::u16string_view text)
{
    std::vector<std::size_t> starts{0};
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        const bool isCrOfCrLf = unit == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n';
        const bool isBreak = unit == u'\n' || unit == u'\r' || unit == u'\u0085' ||
                             unit == u'\u2028' || unit == u'\u2029';
        if (isBreak && !isCrOfCrLf)
            starts.push_back(i + 1);
    }
    return starts;
}

inline std::vector<std::size_t> plainLfLineStarts(std::u16string_view text)
{
    std::vector<std::size_t> starts{0};
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == u'\n')
            starts.push_back(i + 1);
    }
    return starts;
}

inline std::size_t plainIndexAt(const std::vector<std::size_t>& starts, std::size_t location)
{
    const auto behind = std::upper_bound(starts.begin(), starts.end(), location);
    return static_cast<std::size_t>(behind - starts.begin()) - 1;
}

/// Checks all line functions at `location` and for the line `index`.
inline void expectLines(const TextSnapshot& text, std::u16string_view plain,
                        const std::vector<std::size_t>& starts,
                        const std::vector<std::size_t>& lfStarts, TextRange range,
                        std::size_t index)
{
    const auto startOf = [&](const std::vector<std::size_t>& all, std::size_t line) {
        return line < all.size() ? all[line] : plain.size();
    };
    ASSERT_EQ(text.lineCount(), starts.size());
    ASSERT_EQ(text.lfLineCount(), lfStarts.size());
    ASSERT_EQ(text.lineStart(index), startOf(starts, index)) << "line " << index;
    ASSERT_EQ(text.lfLineStart(index), startOf(lfStarts, index)) << "LF line " << index;
    const std::size_t line = plainIndexAt(starts, range.location);
    ASSERT_EQ(text.lineIndexAt(range.location), line) << "at " << range.location;
    ASSERT_EQ(text.lfLineIndexAt(range.location), plainIndexAt(lfStarts, range.location))
        << "at " << range.location;

    const std::size_t last = range.isEmpty() ? line : plainIndexAt(starts, range.end() - 1);
    const TextRange lines{starts[line], startOf(starts, last + 1) - starts[line]};
    ASSERT_EQ(text.lineRange(range), lines) << "at " << range.location << ", " << range.length;

    std::size_t contentEnd = startOf(starts, line + 1);
    if (line + 1 < starts.size())
        contentEnd -= contentEnd >= 2 && plain.substr(contentEnd - 2, 2) == u"\r\n" ? 2 : 1;
    ASSERT_EQ(text.lineContentEnd(range.location), contentEnd) << "at " << range.location;
}

/// Random numbers and texts; all follow from the seed.
class RandomTexts {
public:
    explicit RandomTexts(unsigned seed) : engine_(seed) {}

    /// From 0 to `last`.
    std::size_t number(std::size_t last)
    {
        return std::uniform_int_distribution<std::size_t>(0, last)(engine_);
    }
    TextRange range(std::size_t textLength, std::size_t longest)
    {
        const std::size_t location = number(textLength);
        return {location, number(std::min(longest, textLength - location))};
    }
    /// Many terminators of all kinds, narrow and wide units, halves of surrogate pairs.
    std::u16string units(std::size_t longest)
    {
        using namespace std::string_view_literals;
        static constexpr std::u16string_view alphabet =
            u"abc \n\n\n\r\r\u0085\u2028\u2029\u00e9\u00ff\u0416\u4e2d\ufffd\ufeff\0"
            u"defghijklmnopqrstuvwxyz"sv;
        std::u16string text(number(longest), 0);
        // Half of the texts are narrow, so that blocks of both widths meet.
        const bool isNarrow = number(1) == 0;
        for (char16_t& unit : text) {
            const std::size_t place = number(alphabet.size() + 1);
            if (place >= alphabet.size())
                unit = place == alphabet.size() ? u'\xD83D' : u'\xDE00';
            else
                unit = alphabet[place];
            if (isNarrow && unit > 0xFF)
                unit = u'n';
        }
        return text;
    }
    std::string bytes(std::size_t longest)
    {
        static const std::vector<std::string> parts{
            "a",        "\n",       "\r\n",         "\r",       "\xC3\xA9", "\xE2\x80\xA8",
            "\xFF",     "\xC3",     "\xE2\x80",     "\x80",     "\xF0\x9F", "\xF0\x9F\x98\x80",
            "\xED\xA0", "\xC0\xAF", "\xEF\xBF\xBD", "\xC2\x85", "some",     "\xF4\x90"};
        std::string text;
        for (std::size_t count = number(longest); count > 0; --count)
            text += parts[number(parts.size() - 1)];
        return text;
    }
    SyntaxToken token()
    {
        const auto token = static_cast<SyntaxToken>(number(4));
        return number(9) == 0 ? underlined(token) : token;
    }

private:
    std::mt19937 engine_;
};

}  // namespace tavrel
