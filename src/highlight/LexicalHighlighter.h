#pragma once

#include "config/LanguageMode.h"
#include "highlight/PunctuationSet.h"
#include "highlight/Scanner.h"
#include "highlight/TextSource.h"
#include "highlight/TokenRuns.h"
#include "highlight/WordTable.h"
#include "platform/TextRange.h"

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace tavrel {

class GenericScan;

/// The tokens of one stretch of a document.
struct PaintedStretch {
    TextRange range;  // In the document.
    TokenRuns runs;   // As long as the range.
};

/// One run of `colorRuns`.
struct ColorRun {
    TextRange range;
    SyntaxToken token = SyntaxToken::foreground;
    bool operator==(const ColorRun&) const = default;
};

/// Colours text in one language by what its characters look like: no parse tree, and no state kept
/// between calls.
///
/// Made for a language, and replaced when that changes. Never changes itself, so any number of
/// threads may use one at once. Tokens stand for colours; the theme is applied when they are drawn.
class LexicalHighlighter {
public:
    explicit LexicalHighlighter(const LanguageMode& language);
    ~LexicalHighlighter();
    LexicalHighlighter(LexicalHighlighter&&) noexcept;
    LexicalHighlighter& operator=(LexicalHighlighter&&) noexcept;

    const LanguageMode& language() const { return language_; }

    /// The tokens for `clampRange`, or for the whole text, found by scanning `scanRange`, or the
    /// whole text. Both ranges are clamped to the text. A scanned slice is a text of its own:
    /// what began before it is not known, and nothing outside it is painted but as foreground.
    /// Costs O(what is scanned up to the end of what is painted).
    PaintedStretch highlight(const TextSource& text, std::optional<TextRange> clampRange = {},
                             std::optional<TextRange> scanRange = {}) const;

    /// Whether `scan` can go through a text of this language bit by bit.
    bool scansByPoints() const { return scanner_ != nullptr; }

    /// Goes on from a point that an earlier call gave back, or from the start of the text, to the
    /// first token boundary at or past `until`, and appends the tokens of that way to `runs`. Many
    /// short scans give the same tokens as one long one. Where `from` is at or past `until` or the
    /// end of the text it stays there. Only where `scansByPoints`.
    ScanPoint scan(const TextSource& text, ScanPoint from, std::size_t until,
                   TokenRuns& runs) const;

    /// The tokens of `stretch`, clamped to the text, found by scanning from a point that an earlier
    /// call gave back: those that a scan of the whole text finds there. What lies before the point
    /// is foreground. Only where `scansByPoints`. Costs O(from the point to the stretch's end).
    PaintedStretch highlightFrom(const TextSource& text, ScanPoint from, TextRange stretch) const;

    /// The tokens of a text that no view shows, in order. In the plain mode only the links, else
    /// runs that cover the text.
    std::vector<ColorRun> colorRuns(std::u16string_view text) const;

private:
    bool isPlain() const;
    void paintLinks(const TextSource& text, TextRange scanned, PaintedStretch& painted) const;

    LanguageMode language_;
    const Scanner* scanner_;                // Null in the plain mode and for the generic scan.
    std::unique_ptr<GenericScan> generic_;  // Only for a language without a scanner.
    WordTable words_;
    PunctuationSet punctuation_;
};

}  // namespace tavrel
