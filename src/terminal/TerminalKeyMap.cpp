#include "terminal/TerminalKeyMap.h"

#include "editor/dispatch/CommandDispatcher.h"
#include "editor/dispatch/KeyTranslator.h"

#include <vector>

namespace tavrel {

TerminalKeyMap::TerminalKeyMap(std::span<const KeyMapEntry> entries)
{
    for (const KeyMapEntry& entry : entries) {
        const std::vector<std::string> chords = KeyTranslator::sequenceSplit(entry.sequence);
        if (chords.size() == 1)
            commandsByChord_.insert_or_assign(chords.front(),
                                              CommandDispatcher::commandsFromValue(entry.value));
    }
}

const EditorCommandList* TerminalKeyMap::commandsFor(std::string_view chord) const
{
    const auto found = commandsByChord_.find(chord);
    return found == commandsByChord_.end() ? nullptr : &found->second;
}

}  // namespace tavrel
