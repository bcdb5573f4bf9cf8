#pragma once

#include "highlight/TokenRuns.h"
#include "platform/TextRange.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace tavrel {

/// One stretch of a document to paint in several passes, each over what was there.
///
/// Holds a token for each unit, so that a paint costs O(its length) wherever it lies.
class TokenCanvas {
public:
    /// `stretch` is a range of the document; `scanBase` is where in it the scanned text starts.
    TokenCanvas(TextRange stretch, std::size_t scanBase)
        : stretch_(stretch), scanBase_(scanBase), tokens_(stretch.length)
    {
    }

    /// Paints `range` of the scanned text, as far as it lies in the stretch.
    void paint(TextRange range, SyntaxToken token)
    {
        const std::size_t from = std::max(range.location + scanBase_, stretch_.location);
        const std::size_t to = std::min(range.end() + scanBase_, stretch_.end());
        for (std::size_t location = from; location < to; ++location)
            tokens_[location - stretch_.location] = token;
    }

    void appendTo(TokenRuns& runs) const
    {
        for (std::size_t start = 0; start < tokens_.size();) {
            std::size_t end = start;
            while (end < tokens_.size() && tokens_[end] == tokens_[start])
                ++end;
            runs.append(end - start, tokens_[start]);
            start = end;
        }
    }

private:
    TextRange stretch_;
    std::size_t scanBase_;
    std::vector<SyntaxToken> tokens_;
};

}  // namespace tavrel
