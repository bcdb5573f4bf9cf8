#pragma once

#include "highlight/SyntaxToken.h"
#include "platform/TextRange.h"

#include <cstddef>
#include <span>
#include <vector>

namespace tavrel {

/// The colouring of one stretch of text: which token paints which code units.
///
/// A value. Locations are UTF-16 code units from the start of the stretch. The runs cover it
/// without gaps, and neighbours differ in their token, so equal colourings compare equal.
class TokenRuns {
public:
    /// Eight bytes: source code has a run for every two or three units.
    struct Run {
        std::size_t length : 56 = 0;  // Code units, never 0.
        SyntaxToken token : 8 = SyntaxToken::foreground;
        bool operator==(const Run&) const = default;
    };

    /// A stretch of `length` code units, all of them `SyntaxToken::foreground`.
    explicit TokenRuns(std::size_t length = 0);

    /// Length of the stretch in code units.
    std::size_t length() const { return length_; }

    /// The token at `location`; at or past the end it is `SyntaxToken::foreground`. O(runs).
    SyntaxToken tokenAt(std::size_t location) const;

    /// In order. The view is valid until this object changes.
    std::span<const Run> runs() const { return runs_; }

    /// Paints `range`, clamped to the stretch, over what was there. Costs O(runs from `range` to
    /// the end), so painting from left to right costs O(1) each time.
    void paint(TextRange range, SyntaxToken token);

    /// Makes the stretch longer by `length` units of `token`. Inline, because a scanner does
    /// little else between two tokens.
    void append(std::size_t length, SyntaxToken token)
    {
        if (length == 0)
            return;
        length_ += length;
        if (!runs_.empty() && runs_.back().token == token)
            runs_.back().length += length;
        else
            runs_.push_back({length, token});
    }

    /// Makes room for `count` more runs.
    void reserve(std::size_t count) { runs_.reserve(runs_.size() + count); }

    /// Makes the stretch empty, and keeps the memory of its runs for the next one.
    void clear()
    {
        runs_.clear();
        length_ = 0;
    }

    bool operator==(const TokenRuns&) const = default;

private:
    std::vector<Run> runs_;
    std::size_t length_ = 0;  // The sum of the runs' lengths.
};

}  // namespace tavrel
