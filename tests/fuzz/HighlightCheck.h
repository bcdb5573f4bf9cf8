#pragma once

#include "highlight/LexicalHighlighter.h"

#include <cstdint>
#include <cstdlib>
#include <string>

namespace tavrel {

inline void require(bool holds)
{
    if (!holds)
        std::abort();
}

/// The bytes as a text: every two of them are a unit where `wide` says so, else every one.
inline std::u16string unitsOf(const std::uint8_t* data, std::size_t size, bool wide)
{
    std::u16string text;
    for (std::size_t i = 0; i + wide < size; i += 1 + wide)
        text.push_back(static_cast<char16_t>(wide ? data[i] << 8 | data[i + 1] : data[i]));
    return text;
}

inline void requireCover(const PaintedStretch& painted, TextRange range)
{
    require(painted.range == range);
    std::size_t length = 0;
    for (const TokenRuns::Run& run : painted.runs.runs()) {
        require(run.length > 0);
        length += run.length;
    }
    require(length == range.length && painted.runs.length() == range.length);
}

/// Any text in any language: the runs cover the stretch and never leave it, and short scans get on
/// and give the same runs as one long one. The first bytes choose what is done.
inline void checkHighlighter(const LexicalHighlighter& highlighter, const std::uint8_t* data,
                             std::size_t size)
{
    if (size < 4)
        return;
    const std::u16string text = unitsOf(data + 4, size - 4, data[0] % 8 == 0);
    const PlainTextSource source(text);
    const PaintedStretch whole = highlighter.highlight(source);
    requireCover(whole, {0, text.size()});

    const TextRange clamp = clampedRange({data[1], data[2]}, text.size());
    if (!clamp.isEmpty()) {
        requireCover(highlighter.highlight(source, clamp), clamp);
        requireCover(highlighter.highlight(source, clamp, TextRange{data[2], data[1]}), clamp);
    }
    if (!highlighter.scansByPoints())
        return;
    TokenRuns runs;
    for (ScanPoint point; point.location < text.size();) {
        const ScanPoint next = highlighter.scan(source, point, point.location + 1 + data[3], runs);
        require(next.location > point.location && runs.length() == next.location);
        point = next;
    }
    require(runs == whole.runs);
}

/// A mode with words that stand in the text by chance.
inline LanguageMode smallMode(std::string id)
{
    LanguageMode mode;
    mode.id = std::move(id);
    mode.keywords = {"if", "class", "a", "return", "averyveryverylongkeyword"};
    mode.types = {"int", "b"};
    mode.lineComments = {"#", "--"};
    mode.blockComments = {{"/*", "*/"}, {"--[[", "]]"}};
    mode.stringDelimiters = {"\"", "'", "`", "$"};
    mode.punctuation = "{}[]();:,.+-*/%=<>!&|^~?";
    return mode;
}

}  // namespace tavrel
