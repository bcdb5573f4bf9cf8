#pragma once

#include "editor/EditorPane.h"
#include "editor/MonospacedRowLayout.h"
#include "editor/dispatch/DefaultKeyMap.h"
#include "platform/Calendar.h"
#include "platform/FileTestSupport.h"
#include "platform/ManualMainQueue.h"
#include "platform/Pasteboard.h"

#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tavrel {

/// A view without pixels that counts what it is told.
class FakePaneView final : public EditorPaneView {
public:
    explicit FakePaneView(const EditorPane& pane) : layout_([&pane] { return pane.text(); }, {}) {}

    void paneWillLeaveTab() override
    {
        if (whileLeaving)
            whileLeaving();
    }
    void paneDidShowDocument() override { ++shownDocuments; }
    void paneDidChangeSelection() override { ++selectionChanges; }
    void paneDidChangeTabs() override { ++tabChanges; }
    void paneWantsVisible(TextRange range) override { visible = range; }
    ScrollOrigin scrollOrigin() const override { return origin; }
    void setScrollOrigin(const ScrollOrigin& wanted) override { origin = wanted; }
    void paneWantsCompletions(TextRange range, const std::vector<std::u16string>& words) override
    {
        partial = range;
        candidates = words;
    }
    const RowLayout& rowLayout() const override { return layout_; }
    void paneDidChangeGitLineDiff() override { ++markChanges; }
    void paneWantsFocus() override { hasFocus = true; }
    bool paneHasFocus() const override { return hasFocus; }
    void paneWantsColorPanel(Color color) override { panelColor = color; }
    void paneDidEndColorPicking() override { panelColor.reset(); }
    double rowHeight() const override { return 10; }

    std::function<void()> whileLeaving;  // May be empty.
    int markChanges = 0;
    bool hasFocus = false;
    std::optional<Color> panelColor;
    int shownDocuments = 0;
    int selectionChanges = 0;
    int tabChanges = 0;
    TextRange visible;
    ScrollOrigin origin;
    TextRange partial;
    std::vector<std::u16string> candidates;

private:
    MonospacedRowLayout layout_;
};

/// An owner that notes what the pane says, and answers with what a test has laid out.
class FakePaneDelegate final : public EditorPaneDelegate {
public:
    void editorPaneDidSetStatus(EditorPane&, std::u16string_view text) override
    {
        status = std::u16string(text);
    }
    void editorPaneDidBeep(EditorPane&) override { ++beeps; }
    std::optional<std::filesystem::path>
    editorPaneWantsSaveLocation(EditorPane&, const std::filesystem::path& proposed) override
    {
        proposedLocation = proposed;
        if (whileAsked)
            std::exchange(whileAsked, nullptr)();
        return saveLocation;
    }
    void editorPaneDidMeetCommand(EditorPane&, const EditorCommand& command) override
    {
        commands.push_back(command.name);
    }

    std::size_t editorPaneWantsAnswer(EditorPane&, const EditorPaneAlert& alert) override
    {
        alerts.push_back(alert);
        if (whileAsked)
            std::exchange(whileAsked, nullptr)();
        return answer.value_or(alert.escapeButton);
    }
    std::vector<EditorPane*> editorPaneWantsEditors(EditorPane&) override { return editors; }
    void editorPaneDidBecomeActive(EditorPane&) override { ++activations; }

    std::vector<EditorPaneAlert> alerts;
    std::optional<std::size_t> answer;  // Absent: Escape.
    std::function<void()> whileAsked;   // Runs once, before the answer.
    std::vector<EditorPane*> editors;
    int activations = 0;
    std::u16string status;
    int beeps = 0;
    std::filesystem::path proposedLocation;
    std::optional<std::filesystem::path> saveLocation;
    std::vector<std::string> commands;
};

/// What panes share: time, queue, files and pasteboard, all in the hands of the test.
struct PaneWorld {
    SimulatedClock clock;
    ManualMainQueue mainQueue{clock};
    test::FailingFileSystem fileSystem;
    MemoryPasteboard pasteboard;
    FixedCalendar calendar;

    GitLineDiffer* gitLineDiffer = nullptr;
    std::function<std::shared_ptr<const LanguageMode>(const std::optional<std::filesystem::path>&)>
        languageModeForURL;

    EditorPaneServices services()
    {
        return {.clock = clock,
                .mainQueue = mainQueue,
                .fileSystem = fileSystem,
                .pasteboard = pasteboard,
                .calendar = calendar,
                .languageModeForURL = languageModeForURL,
                .gitLineDiffer = gitLineDiffer};
    }
    void wait(double seconds)
    {
        clock.advance(std::chrono::nanoseconds(static_cast<std::int64_t>(seconds * 1e9)));
    }
};

/// A pane with a view and an owner of its own.
struct TestPane {
    explicit TestPane(PaneWorld& world) : pane(world.services()), view(pane)
    {
        pane.setView(&view);
        pane.setDelegate(&delegate);
        pane.commandDispatcher().load(defaultKeyMapEntries());
    }

    void run(const char* name) { pane.runCommand({name, {}}); }
    void type(std::u16string_view text)
    {
        for (const char16_t unit : text)
            pane.insertText({&unit, 1});
    }
    std::u16string text() const { return pane.text().text(); }

    EditorPane pane;
    FakePaneView view;
    FakePaneDelegate delegate;
};

/// A world with one pane, in whose empty tab the text stands unmodified.
struct OnePane : PaneWorld, TestPane {
    explicit OnePane(std::u16string_view text = {}) : TestPane(static_cast<PaneWorld&>(*this))
    {
        pane.document().setText(TextSnapshot(text));
    }
    /// What other panes share with this one.
    PaneWorld& world() { return *this; }
};

/// A pane, and a folder with files for it.
class PaneFilesTest : public testing::Test, public OnePane {
protected:
    /// Writes the file, shows it, and answers its path.
    std::filesystem::path open(std::string_view name, std::string_view bytes)
    {
        const std::filesystem::path path = folder.write(name, bytes);
        pane.openLocation(path);
        return path;
    }
    /// The same, with an "x" typed before the text.
    std::filesystem::path openAndType(std::string_view name, std::string_view bytes)
    {
        std::filesystem::path path = open(name, bytes);
        type(u"x");
        return path;
    }
    /// Another program writes the file a second after it was last written.
    void writeOutside(std::string_view name, std::string_view bytes)
    {
        test::moveDate(folder.write(name, bytes), ++outsideWrites * 1'000'000'000);
    }
    void failAlways(std::string_view call, int code)
    {
        fileSystem.failure = {.call = 0, .code = code, .isLasting = true, .only = call};
    }

    EditorDocument& document() { return pane.document(); }

    test::TestFolder folder;
    std::int64_t outsideWrites = 0;
};

}  // namespace tavrel
