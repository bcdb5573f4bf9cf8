#pragma once

#include "app/MainWindow.h"
#include "app/StatusLine.h"
#include "editor/dispatch/DefaultKeyMap.h"
#include "editor/views/CodeEditorView.h"
#include "platform/Calendar.h"
#include "platform/Clock.h"
#include "platform/ManualMainQueue.h"
#include "platform/Pasteboard.h"
#include "platform/PosixFileSystem.h"

#include <QApplication>
#include <QMenu>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace tavrel {

/// Answers as it was told, and remembers what it was asked.
class ScriptedDialogs final : public ModalDialogs {
public:
    std::size_t ask(const EditorPaneAlert& alert) override
    {
        alerts.push_back(alert);
        if (whileAsking)
            whileAsking();
        return answer;
    }
    std::optional<std::u16string> askForText(const EditorPaneAlert& alert,
                                             std::u16string_view) override
    {
        alerts.push_back(alert);
        return text;
    }
    std::vector<std::filesystem::path> filesToOpen(const std::filesystem::path&) override
    {
        return files;
    }
    std::optional<std::filesystem::path>
    saveLocation(const std::filesystem::path& proposal) override
    {
        proposed = proposal;
        return location;
    }

    std::size_t answer = 0;
    std::optional<std::u16string> text;
    std::function<void()> whileAsking;  // May be empty.
    std::vector<std::filesystem::path> files;
    std::optional<std::filesystem::path> location;
    std::filesystem::path proposed;
    std::vector<EditorPaneAlert> alerts;
};

/// A shown window with files of its own.
class MainWindowTest : public testing::Test {
protected:
    MainWindowTest()
    {
        auto dialogs = std::make_unique<ScriptedDialogs>();
        dialogs_ = dialogs.get();
        window.setModalDialogs(std::move(dialogs));
        window.show();
        QApplication::setActiveWindow(&window);
        QCoreApplication::processEvents();
    }

    static Preferences defaultPreferences()
    {
        Preferences preferences;
        preferences.keymap = defaultKeyMapEntries();
        return preferences;
    }
    std::filesystem::path file(const char* name, const std::string& contents)
    {
        const std::filesystem::path path =
            std::filesystem::path(folder.path().toStdString()) / name;
        std::ofstream(path, std::ios::binary) << contents;
        return path;
    }
    static std::string contentsOf(const std::filesystem::path& path)
    {
        std::ostringstream contents;
        contents << std::ifstream(path, std::ios::binary).rdbuf();
        return contents.str();
    }
    void type(const char* text)
    {
        QTest::keyClicks(&window.editorView().textView(), QLatin1String(text));
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(&window.editorView().textView(), key, modifiers);
    }
    QAction* action(const char* title)
    {
        for (QAction* menu : window.menuBar().actions()) {
            for (QAction* each : menu->menu()->actions()) {
                if (each->text() == QLatin1String(title))
                    return each;
            }
        }
        return nullptr;
    }
    std::u16string text() { return window.pane().text().text(); }

    QTemporaryDir folder;
    SimulatedClock clock;
    ManualMainQueue mainQueue{clock};
    PosixFileSystem fileSystem;
    MemoryPasteboard pasteboard;
    FixedCalendar calendar;
    MainWindow window{
        {clock, mainQueue, fileSystem, pasteboard, calendar}, WindowSize{}, defaultPreferences()};
    ScriptedDialogs* dialogs_;
};

}  // namespace tavrel
