#include "editor/MultiCursorEdit.h"

#include <algorithm>

namespace tavrel {

ResolvedMultiCursorEdit emptyEditAt(std::size_t location, bool isPrimary)
{
    return {{{location, 0}, {}, location}, isPrimary};
}

std::vector<ResolvedMultiCursorEdit> resolvedEdits(std::vector<MultiCursorEdit> edits,
                                                   std::size_t primaryLocation)
{
    std::vector<ResolvedMultiCursorEdit> resolved;
    resolved.reserve(edits.size());
    for (MultiCursorEdit& edit : edits) {
        const bool isPrimary = edit.range.end() == primaryLocation;
        resolved.push_back({std::move(edit), isPrimary});
    }
    return resolved;
}

std::vector<ResolvedMultiCursorEdit> applicableEdits(std::vector<ResolvedMultiCursorEdit> edits,
                                                     std::size_t textLength)
{
    for (ResolvedMultiCursorEdit& edit : edits)
        edit.range = clampedRange(edit.range, textLength);
    std::stable_sort(edits.begin(), edits.end(),
                     [](const auto& a, const auto& b) { return a.range < b.range; });
    std::vector<ResolvedMultiCursorEdit> kept;
    kept.reserve(edits.size());
    for (ResolvedMultiCursorEdit& edit : edits) {
        if (kept.empty() || edit.range.location >= kept.back().range.end())
            kept.push_back(std::move(edit));
    }
    return kept;
}

}  // namespace tavrel
