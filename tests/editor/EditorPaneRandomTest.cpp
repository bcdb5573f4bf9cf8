#include "PaneFixture.h"
#include "PlainText.h"

#include "editor/dispatch/CommandTable.h"

#include <gtest/gtest.h>

namespace tavrel {
namespace {

/// Drives two panes on one document by chance, and checks after every step what always holds.
class RandomSession {
public:
    explicit RandomSession(unsigned seed) : random_(seed)
    {
        for (const CommandTableRow& row : commandTable) {
            if (row.name != "closeFile")  // The history goes with the document.
                commands_.push_back(&row);
        }
        first_.pane.document().setText(TextSnapshot(random_.units(60), 1 + random_.number(8)));
        initial_ = first_.text();
        second_.pane.showDocument(first_.pane.tabs().front()->document);
    }

    void run()
    {
        for (std::size_t step = 5 + random_.number(25); step > 0; --step) {
            perform();
            ASSERT_NO_FATAL_FAILURE(expectSound());
        }
        redoAll();
        const std::u16string last = first_.text();
        undoAll();
        ASSERT_EQ(first_.text(), initial_);
        redoAll();
        ASSERT_EQ(first_.text(), last);
        undoAll();
        ASSERT_EQ(first_.text(), initial_);
        ASSERT_FALSE(first_.pane.document().isModified);
    }

private:
    std::size_t offset() { return random_.number(first_.pane.text().length() + 3); }

    void perform()
    {
        const std::size_t kind = random_.number(99);
        EditorPane& pane = random_.number(3) == 0 ? second_.pane : first_.pane;
        world_.wait(static_cast<double>(random_.number(12)) / 10);
        if (kind < 15)
            pane.insertText(random_.units(4));
        else if (kind < 22)
            pane.setSelectedRange({offset(), random_.number(8)});
        else if (kind < 30)
            pane.storeCursors({offset(), offset(), offset()});
        else if (kind < 38)
            pane.toggleCursor(offset());
        else if (kind < 42)
            world_.pasteboard.setContents({random_.units(9), random_.number(1) == 0});
        else if (kind < 46)
            pane.setMarker(offset());
        else
            pane.runCommand(command());
    }

    EditorCommand command()
    {
        const CommandTableRow& row = *commands_[random_.number(commands_.size() - 1)];
        EditorCommand command{std::string(row.name), {}};
        if (row.argument.kind != CommandArgument::Kind::none && random_.number(3) > 0)
            command.arguments.emplace(std::string(row.argument.name), argument());
        return command;
    }

    CSONValue argument()
    {
        const std::int64_t number = static_cast<std::int64_t>(random_.number(8)) - 3;
        return random_.number(1) == 0 ? CSONValue(number) : CSONValue(number > 0);
    }

    void expectSound()
    {
        const std::size_t length = first_.pane.text().length();
        for (EditorPane* pane : {&first_.pane, &second_.pane}) {
            for (const TextRange& range : pane->selectedRanges())
                ASSERT_LE(range.end(), length);
            const std::vector<std::size_t>& cursors = pane->secondaryCursorLocations();
            const auto normal =
                CursorLocations::normalised(cursors, length, pane->selectedRange()).offsets();
            ASSERT_EQ(cursors, normal);
        }
        if (const SelectedWordOccurrences* occurrences = first_.pane.validOccurrences()) {
            for (const TextRange& range : occurrences->ranges)
                ASSERT_EQ(first_.pane.text().text(range), occurrences->word);
        }
    }

    void undoAll()
    {
        while (!first_.pane.document().history().undoStack().empty()) {
            first_.run("undo");
            ASSERT_NO_FATAL_FAILURE(expectSound());
        }
    }
    void redoAll()
    {
        while (!first_.pane.document().history().redoStack().empty()) {
            first_.run("redo");
            ASSERT_NO_FATAL_FAILURE(expectSound());
        }
    }

    RandomTexts random_;
    PaneWorld world_;
    TestPane first_{world_};
    TestPane second_{world_};
    std::vector<const CommandTableRow*> commands_;
    std::u16string initial_;
};

TEST(EditorPaneRandom, UndoLeadsToTheFirstTextAndRedoToTheLast)
{
    for (unsigned seed = 0; seed < 3000; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomSession session(seed);
        ASSERT_NO_FATAL_FAILURE(session.run());
    }
}

}  // namespace
}  // namespace tavrel
