#pragma once

#include "../config/ConfigTestSupport.h"
#include "platform/ManualMainQueue.h"
#include "terminal/TerminalEmulator.h"
#include "terminal/TerminalViewController.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace tavrel {

/// A view that draws nothing and counts.
class CountingPanelView final : public TerminalPanelView {
public:
    void panelDidShow(TerminalEmulator& emulator) override
    {
        shown = &emulator;
        ++shows;
    }
    void clearSelection() override { ++clearedSelections; }
    void panelDidChangeRows() override
    {
        ++rowChanges;
        if (onRows)
            onRows();
    }
    bool isFollowingOutput() const override { return following; }
    void followOutput() override { following = true; }
    std::optional<TerminalSize> fittingSize() const override { return size; }
    bool isInWindow() const override { return inWindow; }
    void takeFocus() override { ++focuses; }
    void panelDidChangeTabs() override { ++tabChanges; }
    void panelDidChangePreferences(const Preferences&) override { ++preferenceChanges; }

    std::function<void()> onRows;
    TerminalEmulator* shown = nullptr;
    int shows = 0;
    int clearedSelections = 0;
    int rowChanges = 0;
    int focuses = 0;
    int tabChanges = 0;
    int preferenceChanges = 0;
    bool following = true;
    bool inWindow = true;
    std::optional<TerminalSize> size;
};

/// A workspace that answers as it was told to.
class AnsweringDelegate final : public TerminalDelegate {
public:
    void terminalTabsDidChange(TerminalViewController&) override { ++tabChanges; }
    void terminalWantsEditorFocus(TerminalViewController&, std::size_t index) override
    {
        focusedEditors.push_back(index);
    }
    void terminalDidRingBell(TerminalViewController&) override { ++bells; }
    bool terminalWantsAnswer(TerminalViewController&, const TerminalQuestion& question) override
    {
        questions.push_back(question);
        return answer;
    }
    std::optional<std::u16string> terminalWantsText(TerminalViewController&,
                                                    const TerminalQuestion& question,
                                                    const std::u16string& text) override
    {
        questions.push_back(question);
        offeredText = text;
        return textAnswer;
    }

    int tabChanges = 0;
    int bells = 0;
    std::vector<std::size_t> focusedEditors;
    std::vector<TerminalQuestion> questions;
    std::u16string offeredText;
    bool answer = false;
    std::optional<std::u16string> textAnswer;
};

/// A terminal panel whose shell is a script of the test, on a main queue cranked by hand.
class TerminalPanelTest : public testing::Test {
protected:
    TerminalPanelTest() { services.environment.set("PATH", "/usr/bin:/bin"); }
    ~TerminalPanelTest() override
    {
        if (controller) {
            controller->setView(nullptr);
            controller->setDelegate(nullptr);
        }
    }

    /// The shell is a program that runs `script` with /bin/sh.
    void useShell(const std::string& script)
    {
        const auto path = home.home.write("shell", "#!/bin/sh\n" + script + "\n");
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        services.loginShell = path.string();
    }
    /// The shell is the system's own, which shows a prompt and waits for commands.
    void useRealShell()
    {
        services.loginShell = "/bin/sh";
        services.environment.set("ENV", home.home.write("rc", "PS1='prompt> '\n").string());
    }

    TerminalViewController& panel()
    {
        if (!controller) {
            controller.emplace(services);
            controller->setDelegate(&delegate);
            controller->setView(&view);
        }
        return *controller;
    }
    /// The panel with its first shell running.
    TerminalViewController& shownPanel()
    {
        panel().startActiveSession();
        return *controller;
    }
    TerminalEmulator& emulator() { return *panel().activeEmulator(); }

    /// The rows of a screen without the blanks at their ends, joined by "\n", without the empty
    /// rows at the end; the history first.
    static std::string textOf(const TerminalEmulator& emulator)
    {
        std::string text;
        std::string ends;
        for (std::int64_t index = 0; index < emulator.historyLength() + emulator.rows(); ++index) {
            std::string row;
            for (const char32_t c : emulator.row(index).characters())
                row += c < 0x80 ? static_cast<char>(c) : '?';
            row.resize(row.find_last_not_of(' ') + 1);
            if (!row.empty()) {
                text += ends + row;
                ends.clear();
            }
            ends += '\n';
        }
        return text;
    }
    std::string text() { return textOf(emulator()); }

    bool runUntil(const std::function<bool()>& done) { return queue.runUntil(done); }
    /// Runs the main queue until the active screen shows `wanted`.
    bool waitForText(std::string_view wanted)
    {
        return runUntil([&] { return text().find(wanted) != std::string::npos; });
    }
    /// Waits for a file of the home folder to hold at least `wanted`.
    bool waitForFile(const std::string& name, std::string_view wanted)
    {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (fileText(name).find(wanted) == std::string::npos) {
            if (std::chrono::steady_clock::now() > deadline)
                return false;
            queue.run();
            std::this_thread::yield();
        }
        return true;
    }
    std::string fileText(const std::string& name) const { return test::contents(home.home / name); }

    test::ConfigTestHome home;
    SimulatedClock clock;
    ManualMainQueue queue{clock};
    TerminalServices services{queue, home.store, {}, home.home.path()};
    CountingPanelView view;
    AnsweringDelegate delegate;
    std::optional<TerminalViewController> controller;
};

}  // namespace tavrel
