#include "editor/TextChange.h"

#include <algorithm>
#include <utility>

namespace tavrel {

std::vector<TextChange> composedChanges(std::span<const TextChange> first,
                                        std::span<const TextChange> then)
{
    std::vector<TextChange> result;
    auto a = first.begin();
    auto b = then.begin();
    std::size_t grown = 0;  // The middle location of `*a` is its old one and `grown`, modulo 2^64.
    while (a != first.end() || b != then.end()) {
        // A cluster of changes that touch or overlap in the middle text, from `start` to `end`.
        const auto middleStart = [&] { return a->oldRange.location + grown; };
        std::size_t start = 0;
        if (b == then.end() || (a != first.end() && middleStart() <= b->oldRange.location))
            start = middleStart();
        else
            start = b->oldRange.location;
        const std::size_t oldStart = start - grown;
        const std::size_t grownBefore = grown;
        std::size_t end = start;
        std::size_t grownThen = 0;
        for (;;) {
            if (a != first.end() && middleStart() <= end) {
                end = std::max(end, middleStart() + a->newLength);
                grown += a->newLength - a->oldRange.length;
                ++a;
            } else if (b != then.end() && b->oldRange.location <= end) {
                end = std::max(end, b->oldRange.end());
                grownThen += b->newLength - b->oldRange.length;
                ++b;
            } else {
                break;
            }
        }
        const TextChange change{{oldStart, end - start - (grown - grownBefore)},
                                end - start + grownThen};
        if (change.oldRange.length > 0 || change.newLength > 0)
            result.push_back(change);
    }
    return result;
}

void TextChangeComposer::add(std::vector<TextChange> changes)
{
    if (changes.empty())
        return;
    const std::size_t weight = changes.size();
    levels_.push_back({std::move(changes), weight});
    while (levels_.size() > 1 && levels_[levels_.size() - 2].weight < 2 * levels_.back().weight)
        composeLast();
}

std::vector<TextChange> TextChangeComposer::take()
{
    while (levels_.size() > 1)
        composeLast();
    if (levels_.empty())
        return {};
    std::vector<TextChange> changes = std::move(levels_.front().changes);
    levels_.clear();
    return changes;
}

void TextChangeComposer::composeLast()
{
    const Level last = std::move(levels_.back());
    levels_.pop_back();
    levels_.back().changes = composedChanges(levels_.back().changes, last.changes);
    levels_.back().weight += last.weight;
}

}  // namespace tavrel
