#include "editor/dispatch/CommandDispatcher.h"

#include "editor/dispatch/KeyTranslator.h"

#include <optional>
#include <vector>

namespace tavrel {
namespace {

/// The command of one value that is no list, or nothing.
std::optional<EditorCommand> commandFromValue(const CSONValue& value)
{
    constexpr std::string_view nameMember = "#";
    if (const auto text = value.string())
        return EditorCommand{std::string(*text), {}};
    const CSONValue* name = value.find(nameMember);
    if (!name || !name->isString())
        return std::nullopt;
    EditorCommand command{std::string(*name->string()), {}};
    for (const CSONMember& member : value.members())
        if (member.name != nameMember)
            command.arguments.emplace_hint(command.arguments.end(), member.name, member.value);
    return command;
}

}  // namespace

void CommandDispatcher::load(std::span<const KeyMapEntry> entries)
{
    sequencePrefixes_.clear();
    commandsByKey_.clear();
    pendingSequence_.clear();
    for (const KeyMapEntry& entry : entries) {
        const std::vector<std::string> chords = KeyTranslator::sequenceSplit(entry.sequence);
        if (chords.empty())
            continue;
        auto commands = std::make_shared<const EditorCommandList>(commandsFromValue(entry.value));
        const auto bound =
            commandsByKey_
                .insert_or_assign(KeyTranslator::joinedSequence(chords), std::move(commands))
                .first;
        if (chords.size() > 1)
            sequencePrefixes_.insert(bound->first);
    }
}

bool CommandDispatcher::handleKeyEvent(const KeyEvent& event, CommandTarget& target)
{
    const std::optional<std::string> chord = KeyTranslator::chordForEvent(event);
    if (!chord)
        return false;
    if (pendingSequence_.empty())
        return follow(*chord, target) != Outcome::unbound;

    const std::string candidate = pendingSequence_ + "," + *chord;
    if (follow(candidate, target) != Outcome::unbound)
        return true;
    // The key breaks the sequence. It never reaches the text, whatever it means by itself.
    pendingSequence_.clear();
    if (follow(*chord, target) == Outcome::unbound)
        target.beep();
    return true;
}

CommandDispatcher::Outcome CommandDispatcher::follow(const std::string& sequence,
                                                     CommandTarget& target)
{
    const auto bound = commandsByKey_.find(sequence);
    if (bound != commandsByKey_.end()) {
        pendingSequence_.clear();
        const std::shared_ptr<const EditorCommandList> commands = bound->second;
        execute(*commands, target);
        return Outcome::executed;
    }
    if (isSequencePrefix(sequence)) {
        pendingSequence_ = sequence;
        return Outcome::pending;
    }
    return Outcome::unbound;
}

bool CommandDispatcher::isSequencePrefix(std::string_view sequence) const
{
    if (!KeyTranslator::endsWithWholeChord(sequence))
        return false;
    const std::string beginning = std::string(sequence) + ",";
    const auto next = sequencePrefixes_.lower_bound(beginning);
    return next != sequencePrefixes_.end() && next->starts_with(beginning);
}

EditorCommandList CommandDispatcher::commandsFromValue(const CSONValue& value)
{
    // The rests of the lists being walked, the innermost one last.
    std::vector<std::span<const CSONValue>> open{{&value, 1}};
    EditorCommandList commands;
    while (!open.empty()) {
        if (open.back().empty()) {
            open.pop_back();
            continue;
        }
        const CSONValue& next = open.back().front();
        open.back() = open.back().subspan(1);
        if (next.isArray())
            open.push_back(next.elements());
        else if (auto command = commandFromValue(next))
            commands.push_back(std::move(*command));
    }
    return commands;
}

void CommandDispatcher::execute(const EditorCommandList& commands, CommandTarget& target)
{
    for (const EditorCommand& command : commands)
        target.performCommand(command);
}

}  // namespace tavrel
