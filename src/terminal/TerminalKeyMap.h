#pragma once

#include "editor/dispatch/EditorCommand.h"
#include "editor/dispatch/KeyMapEntry.h"

#include <map>
#include <span>
#include <string>
#include <string_view>

namespace tavrel {

/// The entries of the key map that are a single chord, which are the ones a terminal looks at.
class TerminalKeyMap {
public:
    TerminalKeyMap() = default;
    /// Of two entries for one chord the later one counts. Costs O(n log n).
    explicit TerminalKeyMap(std::span<const KeyMapEntry> entries);

    /// What a canonical chord is bound to, or null for one that no entry binds. Valid as long as
    /// this object.
    const EditorCommandList* commandsFor(std::string_view chord) const;

private:
    std::map<std::string, EditorCommandList, std::less<>> commandsByChord_;
};

}  // namespace tavrel
