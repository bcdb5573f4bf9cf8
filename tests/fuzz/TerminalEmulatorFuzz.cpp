// Any bytes in any pieces, any sizes and limits: the emulator and a plain one that takes character
// after character go through them side by side.

#include "../terminal/PlainTerminal.h"

#include <cstdlib>
#include <iostream>

using namespace tavrel;

namespace {

void require(bool holds, const std::string& what)
{
    if (holds)
        return;
    std::cerr << "broken: " << what << '\n';
    std::abort();
}

void checkInvariants(const TerminalEmulator& emulator)
{
    require(emulator.columns() >= 2 && emulator.rows() >= 2, "least size");
    require(emulator.cursorX() >= 0 && emulator.cursorX() < emulator.columns(), "cursor column");
    require(emulator.cursorY() >= 0 && emulator.cursorY() < emulator.rows(), "cursor row");
    require(emulator.scrollTop() >= 0 && emulator.scrollTop() < emulator.scrollBottom() &&
                emulator.scrollBottom() < emulator.rows(),
            "scroll region");
    require(emulator.scrollbackLength() <= emulator.scrollbackLimit(), "history's limit");
    const std::int64_t end = emulator.historyLength() + emulator.rows();
    for (const std::int64_t index : {std::int64_t{-1}, std::int64_t{0}, end - 1, end})
        require(emulator.row(index).columns() == emulator.columns(), "width of a row");
    const TerminalRow behind = emulator.row(end);
    require(behind.runAt(0).end == emulator.columns() && behind.cell(0) == TerminalCell(),
            "row behind the last");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // A step is a byte that says what and how much, and what it takes.
    std::string_view input(reinterpret_cast<const char*>(data), std::min<std::size_t>(size, 4'000));
    const auto number = [&]() -> int {
        if (input.empty())
            return 0;
        const auto byte = static_cast<std::uint8_t>(input[0]);
        input.remove_prefix(1);
        return byte;
    };
    const int columns = number() % 40;
    const int rows = number() % 12;
    TerminalEmulator emulator(columns, rows);
    PlainTerminal plain(columns, rows);
    emulator.setScrollbackLimit(20);
    plain.scrollbackLimit = 20;
    std::size_t updates = 0;
    std::size_t bells = 0;
    std::string replies;
    emulator.onUpdate = [&] { ++updates; };
    emulator.onBell = [&] { ++bells; };
    emulator.onResponse = [&](std::string_view reply) { replies += reply; };
    while (!input.empty()) {
        const int what = number();
        updates = 0;
        if (what < 240) {
            const std::string_view bytes = input.substr(0, static_cast<std::size_t>(what));
            input.remove_prefix(bytes.size());
            emulator.feed(bytes);
            plain.feed(bytes);
            require(updates == 1, "one update for each piece");
        } else if (what < 252) {
            const int newColumns = number() % 40;
            const int newRows = number() % 12;
            emulator.resize(newColumns, newRows);
            plain.resize(newColumns, newRows);
            require(updates <= 1, "at most one update for a resize");
        } else {
            plain.scrollbackLimit = static_cast<std::size_t>(number() % 30);
            const bool drops = plain.scrollback.size() > plain.scrollbackLimit;
            emulator.setScrollbackLimit(plain.scrollbackLimit);
            emulator.applyScrollbackLimit();
            plain.applyScrollbackLimit();
            require(updates == (drops ? 1 : 0), "an update where rows are dropped");
        }
        checkInvariants(emulator);
        const auto differs = difference(emulator, plain);
        require(!differs, differs.value_or(""));
    }
    require(bells == plain.bells, "bells");
    require(replies == plain.replies, "replies");
    return 0;
}
