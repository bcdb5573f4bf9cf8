#pragma once

#include "highlight/TokenRuns.h"
#include "platform/TextRange.h"

#include <algorithm>
#include <cstddef>

namespace tavrel {

/// Paints what a scanner finds, from left to right, onto one stretch of a document.
///
/// Scanners give locations in the text they read; the painter adds `scanBase` and drops what lies
/// outside the stretch. What nobody paints is foreground. Each paint costs O(1).
class TokenPainter {
public:
    /// Appends to `runs`, which it borrows, those of `stretch`, a range of the document.
    TokenPainter(TokenRuns& runs, TextRange stretch, std::size_t scanBase)
        : runs_(runs), end_(stretch.end()), painted_(stretch.location), scanBase_(scanBase)
    {
    }

    /// `location` counts in the scanned text, and is not before the end of the last paint.
    void paint(std::size_t location, std::size_t end, SyntaxToken token)
    {
        const std::size_t from = std::max(location + scanBase_, painted_);
        const std::size_t to = std::min(end + scanBase_, end_);
        if (from >= to)
            return;
        runs_.append(from - painted_, SyntaxToken::foreground);
        runs_.append(to - from, token);
        painted_ = to;
    }

    /// Paints the rest of the stretch as foreground.
    void finish() { finishAt(end_); }

    /// Paints what lies before `end`, a location of the document, and is not painted yet.
    void finishAt(std::size_t end)
    {
        if (end <= painted_)
            return;
        runs_.append(end - painted_, SyntaxToken::foreground);
        painted_ = end;
    }

private:
    TokenRuns& runs_;
    std::size_t end_;      // Of the stretch, in the document.
    std::size_t painted_;  // Up to where it is painted, in the document.
    std::size_t scanBase_;
};

}  // namespace tavrel
