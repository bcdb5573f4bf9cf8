#include "config/HexColor.h"
#include "probe/Adaptors.h"
#include "terminal/GridGeometry.h"
#include "terminal/GridSelection.h"
#include "terminal/KeyEncoder.h"
#include "terminal/PasteText.h"
#include "terminal/RowLinks.h"
#include "terminal/TerminalEmulator.h"
#include "terminal/TerminalPalette.h"

#include <algorithm>
#include <array>
#include <limits>
#include <memory>

namespace tavrel::probe {
namespace {

int intMember(const Json& body, std::string_view name)
{
    return static_cast<int>(std::clamp<std::int64_t>(integerMember(body, name),
                                                     std::numeric_limits<int>::min(),
                                                     std::numeric_limits<int>::max()));
}

std::u16string textMemberOrEmpty(const Json& body, std::string_view name)
{
    return member(body, name) ? textMember(body, name) : std::u16string();
}

Json encodeAnswer(ProbeRequest& request)
{
    const Json& event = requiredMember(request.body(), "event");
    KeyEvent key;
    key.keyCode = member(event, "keyCode") ? intMember(event, "keyCode") : -1;
    key.modifierFlags = static_cast<std::uint64_t>(integerMember(event, "modifierFlags", 0));
    key.characters = textMemberOrEmpty(event, "characters");
    key.charactersIgnoringModifiers = textMemberOrEmpty(event, "charactersIgnoringModifiers");
    const CursorKeys cursorKeys = booleanMember(request.body(), "applicationCursorKeys", false)
                                      ? CursorKeys::application
                                      : CursorKeys::normal;
    const auto bytes =
        request.measured([&] { return key; },
                         [&](const KeyEvent& pressed) { return encodedKey(pressed, cursorKeys); });
    return {{"hex", bytes ? hexFromBytes(*bytes) : Json()}};
}

Json pasteAnswer(ProbeRequest& request)
{
    const PasteMode mode =
        booleanMember(request.body(), "bracketed", false) ? PasteMode::bracketed : PasteMode::plain;
    return {{"hex", hexFromBytes(request.measured(
                        [&] { return textMember(request.body(), "text"); },
                        [&](const std::u16string& text) { return pastedBytes(text, mode); }))}};
}

Json gridSizeAnswer(ProbeRequest& request)
{
    const Json& body = request.body();
    const GridGeometry geometry{numberMember(body, "cellWidth", 7),
                                numberMember(body, "cellHeight", 15)};
    const double width = numberMember(body, "width", 0);
    const double height = numberMember(body, "height", 0);
    const TerminalSize size =
        request.measured([&] { return geometry; },
                         [&](const GridGeometry& cells) { return cells.gridSize(width, height); });
    return {{"columns", size.columns}, {"rows", size.rows}};
}

// A terminal of the request's size that has been fed its text.
std::unique_ptr<TerminalEmulator> fedEmulator(const Json& body)
{
    auto emulator =
        std::make_unique<TerminalEmulator>(intMember(body, "columns"), intMember(body, "rows"));
    emulator->feed(bytesMember(body, "feed"));
    return emulator;
}

Json jsonFromSelection(const std::optional<GridSelection>& selection)
{
    if (!selection)
        return nullptr;
    return {selection->start.row, selection->start.column, selection->end.row,
            selection->end.column};
}

GridSelection selectionFromJson(const Json& list)
{
    const bool isSelection =
        list.is_array() && list.size() == 4 &&
        std::ranges::all_of(list, [](const Json& number) { return number.is_number_integer(); });
    if (!isSelection)
        throw RequestError("'selection' must be four integers");
    return {{list[0].get<std::int64_t>(), list[1].get<std::int64_t>()},
            {list[2].get<std::int64_t>(), list[3].get<std::int64_t>()}};
}

Json selectAnswer(ProbeRequest& request)
{
    const Json* list = member(request.body(), "selection");
    if (!list)
        return {{"text", nullptr}};
    const GridSelection selection = selectionFromJson(*list);
    const auto text = request.measured([&] { return fedEmulator(request.body()); },
                                       [&](const std::unique_ptr<TerminalEmulator>& emulator) {
                                           return selectedText(*emulator, selection);
                                       });
    return {{"text", text ? jsonFromText(*text) : Json()}};
}

Json wordAnswer(ProbeRequest& request)
{
    const Json& body = request.body();
    const GridPosition position{integerMember(body, "row"), integerMember(body, "column")};
    std::u32string wordCharacters;
    for (const TerminalCell& cell : cellsOfText(textMemberOrEmpty(body, "wordCharacters")))
        wordCharacters.push_back(cell.character);
    const auto selection =
        request.measured([&] { return fedEmulator(body); },
                         [&](const std::unique_ptr<TerminalEmulator>& emulator) {
                             return wordSelection(*emulator, position, wordCharacters);
                         });
    return {{"selection", jsonFromSelection(selection)}};
}

Json linksAnswer(ProbeRequest& request)
{
    const std::u16string row = textMember(request.body(), "row");
    const std::vector<TextRange> links =
        request.measured([&] { return cellsOfText(row); },
                         [](const std::vector<TerminalCell>& cells) { return rowLinks(cells); });
    Json list = Json::array();
    for (const TextRange& link : links)
        list.push_back({link.location, link.length,
                        jsonFromText(std::u16string_view(row).substr(link.location, link.length))});
    return {{"links", list}};
}

std::vector<TerminalRgb> paletteFromJson(const Json* list)
{
    std::vector<TerminalRgb> colors;
    if (!list)
        return colors;
    if (!list->is_array())
        throw RequestError("'ansiPalette' must be a list");
    for (const Json& entry : *list) {
        if (entry.is_array() && entry.size() == 3) {
            colors.push_back(
                {entry[0].get<double>(), entry[1].get<double>(), entry[2].get<double>()});
            continue;
        }
        const auto color = parseHexColor(utf8FromJson(entry));
        if (!color)
            throw RequestError("'ansiPalette' must hold colours");
        colors.push_back({color->red / 255.0, color->green / 255.0, color->blue / 255.0});
    }
    return colors;
}

Json paletteAnswer(ProbeRequest& request)
{
    const std::vector<TerminalRgb> palette = paletteFromJson(member(request.body(), "ansiPalette"));
    const int index = intMember(request.body(), "index");
    const TerminalRgb color = request.measured(
        [&] { return index; }, [&](int number) { return paletteColor(number, palette); });
    return {{"rgb", {color.red, color.green, color.blue}}};
}

struct Operation {
    std::string_view name;
    Json (*answer)(ProbeRequest& request);
};

constexpr std::array operations{
    Operation{"encode", encodeAnswer},     Operation{"paste", pasteAnswer},
    Operation{"gridSize", gridSizeAnswer}, Operation{"select", selectAnswer},
    Operation{"word", wordAnswer},         Operation{"links", linksAnswer},
    Operation{"palette", paletteAnswer},
};

}  // namespace

Json termGridAdaptor(ProbeRequest& request)
{
    const std::string op = utf8Member(request.body(), "op");
    const auto* operation = std::ranges::find(operations, op, &Operation::name);
    if (operation == operations.end())
        throw RequestError("unknown 'op' '" + op + "'");
    return operation->answer(request);
}

}  // namespace tavrel::probe
