#include "probe/Adaptors.h"
#include "terminal/TerminalEmulator.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>
#include <variant>

namespace tavrel::probe {
namespace {

struct Size {
    int columns;
    int rows;
};
struct Feed {
    std::string bytes;
};
struct Message {
    std::u16string text;
};
struct Limit {
    std::size_t rows;
};
using Step = std::variant<Feed, Message, Size, Limit>;

int limitedInt(std::int64_t value)
{
    return static_cast<int>(std::clamp<std::int64_t>(value, -1'000'000, 1'000'000));
}

Limit limitMember(const Json& object)
{
    return {static_cast<std::size_t>(
        std::max<std::int64_t>(integerMember(object, "scrollbackLimit"), 0))};
}

Size sizeFromJson(const Json& size)
{
    if (!size.is_array() || size.size() != 2 || !size[0].is_number_integer() ||
        !size[1].is_number_integer())
        throw RequestError("'resize' must be [columns, rows]");
    return {limitedInt(size[0].get<std::int64_t>()), limitedInt(size[1].get<std::int64_t>())};
}

Step stepFromJson(const Json& step)
{
    if (member(step, "feed") || member(step, "feedHex"))
        return Feed{bytesMember(step, "feed")};
    if (const Json* text = member(step, "feedText"))
        return Message{textFromJson(*text)};
    if (const Json* size = member(step, "resize"))
        return sizeFromJson(*size);
    if (member(step, "scrollbackLimit"))
        return limitMember(step);
    throw RequestError("a step of an unknown kind");
}

std::vector<Step> stepsMember(const Json& body)
{
    const Json& steps = requiredMember(body, "steps");
    if (!steps.is_array())
        throw RequestError("'steps' must be a list");
    std::vector<Step> result;
    for (const Json& step : steps)
        result.push_back(stepFromJson(step));
    return result;
}

/// An emulator, and what it has told.
struct Session {
    Session(Size size, std::optional<Limit> limit) : emulator(size.columns, size.rows)
    {
        if (limit)
            emulator.setScrollbackLimit(limit->rows);
        emulator.onUpdate = [this] { ++updates; };
        emulator.onBell = [this] { ++bells; };
        emulator.onResponse = [this](std::string_view reply) { replies += reply; };
    }

    void perform(const Feed& step) { emulator.feed(step.bytes); }
    void perform(const Message& step) { emulator.feedText(step.text); }
    void perform(const Size& step) { emulator.resize(step.columns, step.rows); }
    void perform(const Limit& step)
    {
        emulator.setScrollbackLimit(step.rows);
        emulator.applyScrollbackLimit();
    }

    TerminalEmulator emulator;
    std::int64_t updates = 0;
    std::int64_t bells = 0;
    std::string replies;
};

Json jsonFromCharacters(std::u32string_view characters)
{
    std::u16string text;
    for (const char32_t character : characters) {
        if (character >= 0x10000) {
            text.push_back(static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10)));
            text.push_back(static_cast<char16_t>(0xDC00 + (character & 0x3FF)));
        } else {
            text.push_back(static_cast<char16_t>(character));
        }
    }
    return jsonFromText(text);
}

Json jsonFromColor(TerminalColor color)
{
    switch (color.kind()) {
    case TerminalColor::Kind::defaultForeground:
        return "foreground";
    case TerminalColor::Kind::defaultBackground:
        return "background";
    case TerminalColor::Kind::palette:
        return color.index();
    case TerminalColor::Kind::rgb:
        break;
    }
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "#%02X%02X%02X", color.red(), color.green(),
                  color.blue());
    return text.data();
}

Json jsonFromCells(const TerminalRow& row)
{
    std::vector<TerminalCell> cells(static_cast<std::size_t>(row.columns()));
    row.copyCells(cells);
    Json json = Json::array();
    for (const TerminalCell& cell : cells)
        json.push_back({jsonFromCharacters({&cell.character, 1}), jsonFromColor(cell.foreground),
                        jsonFromColor(cell.background), cell.flags.rawValue});
    return json;
}

const char* nameOf(TerminalEmulator::ParserState state)
{
    using State = TerminalEmulator::ParserState;
    switch (state) {
    case State::ground:
        return "ground";
    case State::escape:
        return "escape";
    case State::csi:
        return "csi";
    case State::osc:
        return "osc";
    case State::oscEscape:
        return "oscEscape";
    case State::consumeUntilST:
        return "consumeUntilST";
    case State::consumeUntilSTEscape:
        return "consumeUntilSTEscape";
    case State::escapeIntermediate:
        break;
    }
    return "escapeIntermediate";
}

Json jsonFromSession(const Session& session, bool withCells)
{
    const TerminalEmulator& emulator = session.emulator;
    Json screen = Json::array();
    Json cells = Json::array();
    for (int y = 0; y < emulator.rows(); ++y) {
        screen.push_back(jsonFromCharacters(emulator.screenRow(y).characters()));
        if (withCells)
            cells.push_back(jsonFromCells(emulator.screenRow(y)));
    }
    Json scrollback = Json::array();
    for (std::size_t i = 0; i < emulator.scrollbackLength(); ++i)
        scrollback.push_back(jsonFromCharacters(emulator.scrollbackRow(i).characters()));
    Json json = {{"columns", emulator.columns()},
                 {"rows", emulator.rows()},
                 {"screen", std::move(screen)},
                 {"scrollback", std::move(scrollback)},
                 {"cursor", {emulator.cursorX(), emulator.cursorY()}},
                 {"cursorVisible", emulator.cursorVisible()},
                 {"usingAlternateScreen", emulator.usingAlternateScreen()},
                 {"applicationCursorKeys", emulator.applicationCursorKeys()},
                 {"bracketedPaste", emulator.bracketedPaste()},
                 {"autowrap", emulator.autowrap()},
                 {"originMode", emulator.originMode()},
                 {"insertMode", emulator.insertMode()},
                 {"pendingWrap", emulator.pendingWrap()},
                 {"scrollTop", emulator.scrollTop()},
                 {"scrollBottom", emulator.scrollBottom()},
                 {"tabStops", emulator.tabStops()},
                 {"parserState", nameOf(emulator.parserState())},
                 {"pen",
                  {jsonFromColor(emulator.currentForeground()),
                   jsonFromColor(emulator.currentBackground()), emulator.currentFlags().rawValue}},
                 {"repliesHex", hexFromBytes(session.replies)},
                 {"bells", session.bells},
                 {"updates", session.updates}};
    if (withCells)
        json["cells"] = std::move(cells);
    return json;
}

}  // namespace

Json termAdaptor(ProbeRequest& request)
{
    const Json& body = request.body();
    const Size size{limitedInt(integerMember(body, "columns")),
                    limitedInt(integerMember(body, "rows"))};
    std::optional<Limit> limit;
    if (member(body, "scrollbackLimit"))
        limit = limitMember(body);
    const std::vector<Step> steps = stepsMember(body);
    const bool withCells = booleanMember(body, "cells", false);
    const auto session =
        request.measured([&] { return std::make_unique<Session>(size, limit); },
                         [&](std::unique_ptr<Session>& made) {
                             for (const Step& step : steps)
                                 std::visit([&](const auto& what) { made->perform(what); }, step);
                             return std::move(made);
                         });
    return jsonFromSession(*session, withCells);
}

}  // namespace tavrel::probe
