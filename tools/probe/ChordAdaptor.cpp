#include "config/cson/TavrelCSONBackend.h"
#include "editor/dispatch/CommandDispatcher.h"
#include "editor/dispatch/KeyTranslator.h"
#include "probe/Adaptors.h"
#include "probe/ChordEvents.h"
#include "probe/CsonJson.h"

#include <algorithm>
#include <limits>

namespace tavrel::probe {
namespace {

KeyEvent eventFromJson(const Json& event)
{
    KeyEvent result;
    result.keyCode = static_cast<int>(std::clamp<std::int64_t>(
        integerMember(event, "keyCode", -1), -1, std::numeric_limits<int>::max()));
    result.modifierFlags = static_cast<std::uint64_t>(integerMember(event, "modifierFlags", 0));
    if (member(event, "charactersIgnoringModifiers"))
        result.charactersIgnoringModifiers = textMember(event, "charactersIgnoringModifiers");
    return result;
}

Json jsonFromCommands(const EditorCommandList& commands)
{
    Json list = Json::array();
    for (const EditorCommand& command : commands) {
        Json arguments = Json::object();
        for (const auto& [name, value] : command.arguments)
            arguments[jsonFromUtf8(name).get_ref<const std::string&>()] = jsonFromValue(value);
        list.push_back({{"name", jsonFromUtf8(command.name)}, {"arguments", arguments}});
    }
    return list;
}

Json jsonFromShortcut(const std::optional<MenuShortcut>& shortcut)
{
    if (!shortcut)
        return nullptr;
    return {{"key", jsonFromText(shortcut->key)}, {"mask", shortcut->mask}};
}

// A pane that keeps a record of what it is asked to do.
class RecordingTarget final : public CommandTarget {
public:
    void performCommand(const EditorCommand& command) override { ran.push_back(command.name); }
    void beep() override { ++beeps; }

    std::vector<std::string> ran;
    int beeps = 0;
};

struct DispatchStep {
    bool consumed;
    std::string pending;
    RecordingTarget target;
};

std::vector<DispatchStep> dispatch(const std::vector<KeyMapEntry>& entries,
                                   const std::vector<KeyEvent>& events)
{
    CommandDispatcher dispatcher;
    dispatcher.load(entries);
    std::vector<DispatchStep> steps;
    for (const KeyEvent& event : events) {
        RecordingTarget target;
        const bool consumed = dispatcher.handleKeyEvent(event, target);
        steps.push_back({consumed, dispatcher.pendingSequence(), std::move(target)});
    }
    return steps;
}

Json jsonFromSteps(const std::vector<DispatchStep>& steps)
{
    Json list = Json::array();
    for (const DispatchStep& step : steps) {
        Json ran = Json::array();
        for (const std::string& name : step.target.ran)
            ran.push_back(jsonFromUtf8(name));
        list.push_back({{"consumed", step.consumed},
                        {"pending", jsonFromUtf8(step.pending)},
                        {"ran", ran},
                        {"beeps", step.target.beeps}});
    }
    return list;
}

Json dispatchAnswer(ProbeRequest& request)
{
    const auto entries = keyMapFromCSON(utf8Member(request.body(), "keys"));
    if (!entries)
        return jsonFromError(entries.error());
    const Json& chords = requiredMember(request.body(), "chords");
    if (!chords.is_array())
        throw RequestError("'chords' must be a list");
    std::vector<KeyEvent> events;
    for (const Json& chord : chords)
        events.push_back(chord.is_object() ? eventFromJson(chord)
                                           : eventWithChord(textFromJson(chord)));
    return {{"steps", jsonFromSteps(request.measured([&] { return *entries; },
                                                     [&](const std::vector<KeyMapEntry>& map) {
                                                         return dispatch(map, events);
                                                     }))}};
}

Json commandsAnswer(ProbeRequest& request)
{
    const auto value = TavrelCSONBackend::parseCSON(utf8Member(request.body(), "commands"));
    if (!value)
        return jsonFromError(value.error());
    return {{"commands", jsonFromCommands(request.measured([&] { return *value; },
                                                           CommandDispatcher::commandsFromValue))}};
}

}  // namespace

Json chordAdaptor(ProbeRequest& request)
{
    const Json& body = request.body();
    if (const Json* event = member(body, "event")) {
        const auto chord =
            request.measured([&] { return eventFromJson(*event); }, KeyTranslator::chordForEvent);
        return {{"chord", chord ? jsonFromUtf8(*chord) : Json()}};
    }
    const auto text = [&](const char* name) {
        return [text = utf8Member(body, name)] { return text; };
    };
    if (member(body, "canonical"))
        return {{"chord",
                 jsonFromUtf8(request.measured(text("canonical"), KeyTranslator::canonicalChord))}};
    if (member(body, "split")) {
        Json chords = Json::array();
        for (const std::string& chord :
             request.measured(text("split"), KeyTranslator::sequenceSplit))
            chords.push_back(jsonFromUtf8(chord));
        return {{"chords", chords}};
    }
    if (member(body, "menu"))
        return {{"shortcut",
                 jsonFromShortcut(request.measured(text("menu"), KeyTranslator::menuShortcut))}};
    if (member(body, "commands"))
        return commandsAnswer(request);
    if (member(body, "keys"))
        return dispatchAnswer(request);
    throw RequestError("one of 'event', 'canonical', 'split', 'menu', 'commands' and 'keys' "
                       "must be there");
}

}  // namespace tavrel::probe
