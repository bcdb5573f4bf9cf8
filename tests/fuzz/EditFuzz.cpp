#include "editor/EditorPane.h"
#include "editor/MonospacedRowLayout.h"
#include "editor/SearchResultLines.h"
#include "editor/dispatch/CommandTable.h"
#include "editor/dispatch/DefaultKeyMap.h"
#include "platform/Calendar.h"
#include "platform/Clock.h"
#include "platform/ManualMainQueue.h"
#include "platform/Pasteboard.h"
#include "platform/PosixFileSystem.h"

#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <span>
#include <string>

// Any bytes as steps on one pane. Positions stay in the text, cursors in normal form, and undoing
// everything gives back the first text, redoing everything the last.

namespace {

using namespace tavrel;

void require(bool condition)
{
    if (!condition)
        std::abort();
}

class Bytes {
public:
    Bytes(const std::uint8_t* data, std::size_t size) : rest_(data, size) {}

    bool isEmpty() const { return rest_.empty(); }
    std::uint8_t next()
    {
        if (rest_.empty())
            return 0;
        const std::uint8_t byte = rest_.front();
        rest_ = rest_.subspan(1);
        return byte;
    }
    /// Up to 15 units, among them terminators, blanks, words and halves of pairs.
    std::u16string units()
    {
        static constexpr char16_t alphabet[] = {
            u'a', u'b', u'A',   u'_',   u'1',   u' ',   u'\t',  u'\n',  u'\r',     u'{',
            u'/', u'"', 0x2028, 0x00DF, 0x0301, 0xD83D, 0xDE00, 0x0130, u'\u00a0', u'.'};
        std::u16string text(next() % 16, 0);
        for (char16_t& unit : text)
            unit = alphabet[next() % std::size(alphabet)];
        return text;
    }

private:
    std::span<const std::uint8_t> rest_;
};

class View final : public EditorPaneView {
public:
    explicit View(const EditorPane& pane)
        : layout_([&pane] { return pane.text(); }, {.columnWidth = 7, .rowsPerPage = 3})
    {
    }
    void paneDidShowDocument() override {}
    void paneDidChangeSelection() override {}
    void paneDidChangeTabs() override {}
    void paneWantsVisible(TextRange) override {}
    ScrollOrigin scrollOrigin() const override { return {}; }
    void setScrollOrigin(const ScrollOrigin&) override {}
    const RowLayout& rowLayout() const override { return layout_; }

private:
    MonospacedRowLayout layout_;
};

void requireSound(EditorPane& pane)
{
    const std::size_t length = pane.text().length();
    for (const TextRange& range : pane.selectedRanges())
        require(range.end() <= length);
    const std::vector<std::size_t>& cursors = pane.secondaryCursorLocations();
    require(CursorLocations::normalised(cursors, length, pane.selectedRange()).offsets() ==
            cursors);
    if (const SelectedWordOccurrences* occurrences = pane.validOccurrences()) {
        for (const TextRange& range : occurrences->ranges)
            require(pane.text().text(range) == occurrences->word);
    }
}

EditorCommand command(Bytes& bytes)
{
    const CommandTableRow& row = commandTable[bytes.next() % commandTable.size()];
    EditorCommand command{std::string(row.name), {}};
    const auto number = static_cast<std::int8_t>(bytes.next());
    if (row.argument.kind != CommandArgument::Kind::none && number != 0)
        command.arguments.emplace(std::string(row.argument.name), CSONValue(std::int64_t{number}));
    return command;
}

/// What clicks do beyond moving the cursor.
void click(EditorPane& pane, std::size_t offset)
{
    if (const std::optional<std::u16string> link = pane.linkAt(offset))
        require(link->find(u"://") != std::u16string::npos);
    static_cast<void>(searchResultAt(pane.text(), offset));
    if (pane.beginColorPicking(offset)) {
        pane.pickColor(0.1, 0.2, 0.3);
        require(pane.text().text(pane.selectedRange()) == u"#1A334D");
        pane.endColorPicking();
    }
}

void perform(EditorPane& pane, Pasteboard& pasteboard, SimulatedClock& clock, Bytes& bytes)
{
    switch (bytes.next() % 8) {
    case 0:
        pane.insertText(bytes.units());
        break;
    case 1:
        pane.setSelectedRange({bytes.next(), bytes.next()});
        break;
    case 2:
        pane.toggleCursor(bytes.next());
        break;
    case 3:
        pane.storeCursors({bytes.next(), bytes.next(), bytes.next()});
        break;
    case 4:
        pasteboard.setContents({bytes.units(), bytes.next() % 2 == 0});
        break;
    case 5:
        clock.advance(std::chrono::milliseconds(10 * bytes.next()));
        break;
    default: {
        const EditorCommand chosen = command(bytes);
        if (chosen.name == "closeFile")  // The history would go with the document.
            click(pane, bytes.next());
        else
            pane.runCommand(chosen);
    }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t longestText = 100'000;  // Copying and pasting doubles it at each step.
    Bytes bytes(data, size);
    SimulatedClock clock;
    ManualMainQueue mainQueue(clock);
    PosixFileSystem fileSystem;
    MemoryPasteboard pasteboard;
    FixedCalendar calendar;
    EditorPane pane({clock, mainQueue, fileSystem, pasteboard, calendar});
    View view(pane);
    pane.setView(&view);
    const std::u16string first = bytes.units();
    pane.document().setText(TextSnapshot(first));
    while (!bytes.isEmpty() && pane.text().length() < longestText) {
        perform(pane, pasteboard, clock, bytes);
        requireSound(pane);
    }
    const UndoHistory& history = pane.document().history();
    while (!history.redoStack().empty())
        pane.redo();
    const std::u16string last = pane.text().text();
    const bool isWhole = history.undoStack().size() < UndoHistory::maximumGroupCount;
    while (!history.undoStack().empty())
        pane.undo();
    require(!isWhole || pane.text() == first);
    while (!history.redoStack().empty())
        pane.redo();
    require(pane.text() == last);
    return 0;
}
