#include "config/cson/JSONTreeReader.h"
#include "editor/EditorPane.h"
#include "editor/MonospacedRowLayout.h"
#include "editor/dispatch/DefaultKeyMap.h"
#include "editor/dispatch/KeyTranslator.h"
#include "platform/Calendar.h"
#include "platform/Clock.h"
#include "platform/ManualMainQueue.h"
#include "platform/Pasteboard.h"
#include "platform/PosixFileSystem.h"
#include "platform/Unicode.h"
#include "platform/Utf8.h"
#include "probe/Adaptors.h"
#include "probe/ChordEvents.h"
#include "probe/ProbeJson.h"
#include "probe/ProbeLanguage.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <memory>

namespace tavrel::probe {
namespace {

PasteboardContents pasteboardFromJson(const Json& contents)
{
    return {textMember(contents, "text"), booleanMember(contents, "wholeLines", false)};
}

Json jsonFromPasteboard(const std::optional<PasteboardContents>& contents)
{
    if (!contents)
        return nullptr;
    return {{"text", jsonFromText(contents->text)}, {"wholeLines", contents->isWholeLines}};
}

CSONValue valueFromJson(const Json& json)
{
    return readJSONTree(writeLine(json)).value_or(CSONValue());
}

std::size_t offsetFromJson(const Json& offset)
{
    if (!offset.is_number_integer())
        throw RequestError("an offset must be a whole number");
    return static_cast<std::size_t>(std::max<std::int64_t>(offset.get<std::int64_t>(), 0));
}

std::vector<std::size_t> offsetsFromJson(const Json& offsets)
{
    if (!offsets.is_array())
        throw RequestError("'cursors' must be a list");
    std::vector<std::size_t> result;
    for (const Json& offset : offsets)
        result.push_back(offsetFromJson(offset));
    return result;
}

/// The member "date", as in "2026-11-21T10:46:15"; absent, each part has its default.
FixedCalendar calendarMember(const Json& body)
{
    if (!member(body, "date"))
        return FixedCalendar();
    const std::string text = utf8Member(body, "date");
    CalendarDate date;
    int length = 0;
    const int count =
        std::sscanf(text.c_str(), "%4d-%2d-%2dT%2d:%2d:%2d%n", &date.year, &date.month, &date.day,
                    &date.hour, &date.minute, &date.second, &length);
    if (count != 6 || static_cast<std::size_t>(length) != text.size())
        throw RequestError("'date' must be YYYY-MM-DDTHH:MM:SS");
    date.weekday = weekdayOf(date.year, date.month, date.day);
    return FixedCalendar(date);
}

int settingMember(const Json& body, const char* name, int absent)
{
    return static_cast<int>(
        std::clamp<std::int64_t>(integerMember(body, name, absent), 1, 100'000));
}

/// One pane with the text of a request, and a world of its own around it.
class EditSession final : private EditorPaneView {
public:
    explicit EditSession(const Json& body)
        : calendar_(calendarMember(body)),
          pane_({clock_, mainQueue_, fileSystem_, pasteboard_, calendar_},
                {.tabWidth = settingMember(body, "tabWidth", 2),
                 .columnWidth = settingMember(body, "columnWidth", 80)}),
          layout_([this] { return pane_.text(); },
                  {.columnWidth = static_cast<std::size_t>(pane_.settings().columnWidth),
                   .tabWidth = static_cast<std::size_t>(pane_.settings().tabWidth)})
    {
        pane_.document().setText(TextSnapshot(textMember(body, "text")));
        pane_.activeTab().language = languageMember(body);
        pane_.setView(this);
        loadKeys(body);
        if (const Json* selection = member(body, "selection"))
            pane_.setSelectedRange(rangeFromJson(*selection));
        if (const Json* cursors = member(body, "cursors"))
            pane_.storeCursors(offsetsFromJson(*cursors));
        if (const Json* marker = member(body, "marker"))
            pane_.setMarker(offsetFromJson(*marker));
        if (const Json* pasteboard = member(body, "pasteboard"))
            pasteboard_.setContents(pasteboardFromJson(*pasteboard));
    }

    void perform(const Json& step)
    {
        if (member(step, "command"))
            pane_.runCommand(commandFromJson(step));
        else if (const Json* chord = member(step, "chord"))
            press(*chord);
        else if (const Json* typed = member(step, "type"))
            type(textFromJson(*typed));
        else if (const Json* inserted = member(step, "insert"))
            pane_.insertText(textFromJson(*inserted));
        else if (member(step, "wait"))
            wait(numberMember(step, "wait", 0));
        else if (const Json* selection = member(step, "select"))
            pane_.setSelectedRange(rangeFromJson(*selection));
        else if (const Json* cursors = member(step, "cursors"))
            pane_.storeCursors(offsetsFromJson(*cursors));
        else if (const Json* offset = member(step, "toggleCursor"))
            pane_.toggleCursor(offsetFromJson(*offset));
        else if (booleanMember(step, "save", false))
            pane_.didSave("untitled.txt", {}, u"saved");
        else if (const Json* pasteboard = member(step, "pasteboard"))
            pasteboard_.setContents(pasteboardFromJson(*pasteboard));
        else
            throw RequestError("a step of an unknown kind");
    }

    Json state()
    {
        Json occurrences;
        if (const SelectedWordOccurrences* valid = pane_.validOccurrences()) {
            occurrences = Json::array();
            for (const TextRange& range : valid->ranges)
                occurrences.push_back(jsonFromRange(range));
        }
        const std::optional<std::size_t> marker = pane_.activeTab().marker;
        const UndoHistory& history = pane_.document().history();
        return {{"text", jsonFromText(pane_.text().text())},
                {"selection", jsonFromRange(pane_.selectedRange())},
                {"cursors", pane_.secondaryCursorLocations()},
                {"occurrences", occurrences},
                {"marker", marker ? Json(*marker) : Json()},
                {"isModified", pane_.document().isModified},
                {"undoGroups", history.undoStack().size()},
                {"redoGroups", history.redoStack().size()},
                {"pasteboard", jsonFromPasteboard(pasteboard_.contents())},
                {"lastActionWasTyping", pane_.lastActionWasTyping()}};
    }

private:
    void loadKeys(const Json& body)
    {
        if (!member(body, "keys")) {
            pane_.commandDispatcher().load(defaultKeyMapEntries());
            return;
        }
        const auto entries = keyMapFromCSON(utf8Member(body, "keys"));
        if (!entries)
            throw RequestError(entries.error().message);
        pane_.commandDispatcher().load(*entries);
    }

    static EditorCommand commandFromJson(const Json& step)
    {
        EditorCommand command{utf8Member(step, "command"), {}};
        if (const Json* arguments = member(step, "arguments"))
            for (const auto& [name, value] : arguments->items())
                command.arguments.emplace(utf8FromJson(Json(name)), valueFromJson(value));
        return command;
    }

    void press(const Json& chord)
    {
        for (const std::string& single : KeyTranslator::sequenceSplit(utf8FromJson(chord)))
            handle(eventWithChord(utf16FromUtf8(single)));
    }

    void type(const std::u16string& typed)
    {
        for (std::size_t at = 0; at < typed.size();) {
            const std::size_t length = characterAt(typed, at).length;
            KeyEvent event;
            event.characters = typed.substr(at, length);
            handle(event);
            at += length;
        }
    }

    void handle(const KeyEvent& event)
    {
        if (pane_.keyDown(event))
            return;
        if (!event.characters.empty())
            pane_.insertText(event.characters);
        pane_.keyDidInput(event);
    }

    void wait(double seconds)
    {
        constexpr double most = 1e9;
        const double nanoseconds = std::round(std::clamp(seconds, 0.0, most) * 1e9);
        clock_.advance(std::chrono::nanoseconds(static_cast<std::int64_t>(nanoseconds)));
    }

    void paneDidShowDocument() override {}
    void paneDidChangeSelection() override {}
    void paneDidChangeTabs() override {}
    void paneWantsVisible(TextRange) override {}
    ScrollOrigin scrollOrigin() const override { return {}; }
    void setScrollOrigin(const ScrollOrigin&) override {}
    const RowLayout& rowLayout() const override { return layout_; }

    SimulatedClock clock_;
    ManualMainQueue mainQueue_{clock_};
    PosixFileSystem fileSystem_;
    MemoryPasteboard pasteboard_;
    FixedCalendar calendar_;
    EditorPane pane_;
    MonospacedRowLayout layout_;
};

}  // namespace

Json editAdaptor(ProbeRequest& request)
{
    const Json& body = request.body();
    const Json& steps = requiredMember(body, "steps");
    if (!steps.is_array())
        throw RequestError("'steps' must be a list");
    const bool traces = booleanMember(body, "trace", false);
    Json states = Json::array();
    const auto perform = [&](const std::unique_ptr<EditSession>& session) {
        states = Json::array();
        for (const Json& step : steps) {
            session->perform(step);
            if (traces)
                states.push_back(session->state());
        }
        return session.get();
    };
    const auto session = request.measured([&] { return std::make_unique<EditSession>(body); },
                                          [&](std::unique_ptr<EditSession>& made) {
                                              perform(made);
                                              return std::move(made);
                                          });
    Json answer = session->state();
    if (traces)
        answer["states"] = states;
    return answer;
}

}  // namespace tavrel::probe
