#pragma once

#include "editor/SharedRef.h"
#include "highlight/TokenRuns.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tavrel {

class BlockTokens;
void retain(const BlockTokens* tokens);
void release(const BlockTokens* tokens);

/// The colouring of one block, four bytes a run; never changes. Where a block has none, all of it
/// is foreground, so this object holds at least one other token.
class BlockTokens {
public:
    /// A run and where it ends, in units from the start of the block.
    class Run {
    public:
        Run(std::size_t end, SyntaxToken token)
            : bits_(static_cast<std::uint32_t>(end << 8) | static_cast<std::uint8_t>(token))
        {
        }
        std::size_t end() const { return bits_ >> 8; }
        SyntaxToken token() const { return static_cast<SyntaxToken>(bits_ & 0xFF); }

    private:
        std::uint32_t bits_;
    };

    /// The runs cover the block; neighbours differ in their token.
    std::span<const Run> runs() const { return runs_; }

    /// The token of one unit of a block with these tokens, which may be null.
    static SyntaxToken tokenAt(const BlockTokens* tokens, std::size_t offset);

    /// Appends the tokens of the units from `from` to `to` to `target`.
    static void appendTo(TokenRuns& target, const BlockTokens* tokens, std::size_t from,
                         std::size_t to);

    /// The tokens of a block that is made unit by unit from left to right.
    class Builder {
    public:
        void append(std::size_t length, SyntaxToken token);
        /// The units from `from` to `to` of a block with these tokens.
        void append(const BlockTokens* tokens, std::size_t from, std::size_t to);
        /// Empty where all is foreground. The builder starts afresh.
        SharedRef<const BlockTokens> take();

    private:
        std::vector<Run> runs_;
        std::size_t length_ = 0;
        bool isPainted_ = false;  // Some run is not foreground.
    };

    std::size_t memoryBytes() const { return sizeof(*this) + runs_.capacity() * sizeof(Run); }

private:
    friend void retain(const BlockTokens* tokens);
    friend void release(const BlockTokens* tokens);
    explicit BlockTokens(std::span<const Run> runs) : runs_(runs.begin(), runs.end()) {}

    mutable std::atomic<std::uint32_t> references_{1};
    std::vector<Run> runs_;
};

}  // namespace tavrel
