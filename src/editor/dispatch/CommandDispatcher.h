#pragma once

#include "editor/dispatch/EditorCommand.h"
#include "editor/dispatch/KeyMapEntry.h"
#include "platform/KeyEvent.h"

#include <map>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <string_view>

namespace tavrel {

/// What a dispatcher needs of the editor pane that it serves.
class CommandTarget {
public:
    virtual ~CommandTarget() = default;

    /// Runs the command; one that the pane does not know does nothing. May load the dispatcher
    /// anew, or destroy it, but must leave the target itself alive until the dispatcher returns.
    virtual void performCommand(const EditorCommand& command) = 0;

    /// A key broke a sequence and means nothing by itself.
    virtual void beep() = 0;
};

/// The key map of one editor pane, and the sequence of chords that is being typed.
///
/// A sequence that has begun waits for its next key without end. Main thread only.
class CommandDispatcher {
public:
    CommandDispatcher() = default;
    CommandDispatcher(const CommandDispatcher&) = delete;
    CommandDispatcher& operator=(const CommandDispatcher&) = delete;

    /// Replaces the key map and forgets a sequence under way. Of two entries for one sequence the
    /// later one counts. An entry without a chord is skipped; one whose value holds no command
    /// makes its keys do nothing. Costs O(n log n) in the length of the entries.
    void load(std::span<const KeyMapEntry> entries);

    /// Whether the press was consumed; otherwise it belongs to text input. Costs O(log n).
    bool handleKeyEvent(const KeyEvent& event, CommandTarget& target);

    /// The commands that the value of a key stands for: a map with a text under "#", a text, or a
    /// list of such values, lists in lists included. Anything else is no command.
    static EditorCommandList commandsFromValue(const CSONValue& value);

    /// Runs the commands in order. None stops the ones behind it.
    static void execute(const EditorCommandList& commands, CommandTarget& target);

    /// The chords typed so far of a sequence, joined by ","; empty when none is under way.
    const std::string& pendingSequence() const { return pendingSequence_; }

private:
    enum class Outcome {
        unbound,
        executed,
        pending,
    };
    /// Runs what is bound to `sequence`, or waits for more where it begins a longer one. Nothing of
    /// this object may be touched after `Outcome::executed`.
    Outcome follow(const std::string& sequence, CommandTarget& target);
    bool isSequencePrefix(std::string_view sequence) const;

    /// By canonical sequence. A list is shared, since a running command may replace the map.
    std::map<std::string, std::shared_ptr<const EditorCommandList>, std::less<>> commandsByKey_;

    /// The keys of `commandsByKey_` of two chords or more. Each stands for all its beginnings,
    /// which would take memory by the square of its length if each were held by itself.
    std::set<std::string_view> sequencePrefixes_;

    std::string pendingSequence_;
};

}  // namespace tavrel
