#include "editor/BlockTokens.h"

#include <algorithm>

namespace tavrel {

namespace {

// Calls `visit(length, token)` for the runs of the units from `from` to `to`.
template<class Visit>
void visitRuns(const BlockTokens* tokens, std::size_t from, std::size_t to, Visit visit)
{
    if (from >= to)
        return;
    if (!tokens) {
        visit(to - from, SyntaxToken::foreground);
        return;
    }
    const std::span<const BlockTokens::Run> runs = tokens->runs();
    auto run = std::upper_bound(
        runs.begin(), runs.end(), from,
        [](std::size_t offset, const BlockTokens::Run& other) { return offset < other.end(); });
    for (; from < to && run != runs.end(); ++run) {
        const std::size_t end = std::min(run->end(), to);
        visit(end - from, run->token());
        from = end;
    }
}

}  // namespace

void retain(const BlockTokens* tokens)
{
    tokens->references_.fetch_add(1, std::memory_order_relaxed);
}

void release(const BlockTokens* tokens)
{
    if (tokens->references_.fetch_sub(1, std::memory_order_acq_rel) == 1)
        delete tokens;
}

SyntaxToken BlockTokens::tokenAt(const BlockTokens* tokens, std::size_t offset)
{
    SyntaxToken found = SyntaxToken::foreground;
    visitRuns(tokens, offset, offset + 1, [&](std::size_t, SyntaxToken token) { found = token; });
    return found;
}

void BlockTokens::appendTo(TokenRuns& target, const BlockTokens* tokens, std::size_t from,
                           std::size_t to)
{
    visitRuns(tokens, from, to,
              [&](std::size_t length, SyntaxToken token) { target.append(length, token); });
}

void BlockTokens::Builder::append(std::size_t length, SyntaxToken token)
{
    if (length == 0)
        return;
    length_ += length;
    isPainted_ = isPainted_ || token != SyntaxToken::foreground;
    if (!runs_.empty() && runs_.back().token() == token)
        runs_.back() = Run(length_, token);
    else
        runs_.emplace_back(length_, token);
}

void BlockTokens::Builder::append(const BlockTokens* tokens, std::size_t from, std::size_t to)
{
    visitRuns(tokens, from, to,
              [&](std::size_t length, SyntaxToken token) { append(length, token); });
}

SharedRef<const BlockTokens> BlockTokens::Builder::take()
{
    SharedRef<const BlockTokens> tokens;
    if (isPainted_)
        tokens = SharedRef<const BlockTokens>::adopt(new BlockTokens(runs_));
    runs_.clear();
    length_ = 0;
    isPainted_ = false;
    return tokens;
}

}  // namespace tavrel
