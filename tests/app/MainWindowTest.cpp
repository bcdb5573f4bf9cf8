#include "MainWindowFixture.h"

#include "app/FileLoader.h"
#include "config/LanguageModeTable.h"
#include "platform/qt/KeySequences.h"

#include <cmath>
#include <limits>
#include <sys/stat.h>

namespace tavrel {
namespace {

TEST_F(MainWindowTest, HasItsTitleAndSize)
{
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Tavrel Code"));
    EXPECT_EQ(window.size(), QSize(1280, 820));
    EXPECT_EQ(window.minimumSize(), QSize(860, 560));
    EXPECT_EQ(window.statusLine().text(), QStringLiteral("No File"));
    EXPECT_TRUE(window.editorView().textView().isFirstResponder());
}

TEST_F(MainWindowTest, MenusHoldTheItemsOfTheTable)
{
    for (const MenuItem& item : menuTable) {
        if (item.action == MenuAction::separator)
            continue;
        const QString title = QStringView(item.title).toString();
        QAction* found = action(qPrintable(title));
        ASSERT_TRUE(found) << qPrintable(title);
        EXPECT_EQ(found->shortcut(), keySequence(item.chord, CommandKey::ctrl));
    }
}

TEST_F(MainWindowTest, TheModesMenuOffersEveryLanguage)
{
    QAction* modes = action("Modes");
    ASSERT_TRUE(modes && modes->menu());
    EXPECT_EQ(modes->menu()->actions().size(), static_cast<qsizetype>(languageModeTable.size()));
    std::string wanted;
    window.wantsMode = [&wanted](std::string_view id) { wanted = id; };
    modes->menu()->actions().at(1)->trigger();
    EXPECT_EQ(wanted, "python");
}

TEST_F(MainWindowTest, SettingsAreWantedByMenuAndKey)
{
    int count = 0;
    window.wantsSettings = [&count] { ++count; };
    action("Settings...")->trigger();
    press(Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_EQ(count, 2);
}

TEST_F(MainWindowTest, PreferencesTakeEffectInTheOpenWindow)
{
    type("text");
    const double rowHeight = window.editorView().textView().editorFont().rowHeight();
    Preferences preferences;
    preferences.editorFontSize = 30;
    preferences.columnWidth = 20;
    preferences.tabWidth = 7;
    preferences.theme.background = {64, 0, 0};
    preferences.commandKey = CommandKey::super;
    preferences.keymap = {{"f9", CSONValue(std::string("selectAll"))}};
    window.applyPreferences(preferences);

    const TavrelTextView& view = window.editorView().textView();
    EXPECT_GT(view.editorFont().rowHeight(), rowHeight);
    EXPECT_NEAR(view.columnLimit(), 5 + 20 * view.editorFont().advance(), 0.01);
    EXPECT_EQ(window.pane().settings().tabWidth, 7);
    const QImage picture = window.editorView().textView().grab().toImage();
    EXPECT_EQ(picture.pixel(picture.width() - 2, picture.height() - 2), qRgb(64, 0, 0));
    EXPECT_EQ(action("Save")->shortcut(), QKeySequence(Qt::META | Qt::Key_S));
    press(Qt::Key_F9);
    EXPECT_EQ(window.pane().selectedRange(), (TextRange{0, 4}));
}

TEST_F(MainWindowTest, NumbersOfAnySizeAreHeldWithinWhatAWindowCanShow)
{
    for (const double size : {0.0, -1e300, 1e300, std::nan("")}) {
        Preferences preferences;
        preferences.editorFontSize = size;
        preferences.columnWidth = std::numeric_limits<std::int64_t>::max();
        preferences.tabWidth = std::numeric_limits<std::int64_t>::max();
        window.applyPreferences(preferences);
        EXPECT_LE(window.editorView().textView().editorFont().font().pixelSize(), 512);
        EXPECT_GE(window.editorView().textView().editorFont().font().pixelSize(), 1);
        press(Qt::Key_Tab);
        EXPECT_FALSE(window.editorView().textView().visibleRows().empty());
    }
}

TEST_F(MainWindowTest, EditItemsAreCommandsOfThePane)
{
    type("one");
    action("Select All")->trigger();
    EXPECT_EQ(window.pane().selectedRange(), (TextRange{0, 3}));
    action("Cut")->trigger();
    EXPECT_EQ(text(), u"");
    action("Paste")->trigger();
    clock.advance(std::chrono::seconds(5));  // Later than what would be one step of undo.
    action("Paste")->trigger();
    EXPECT_EQ(text(), u"oneone");
    action("Undo")->trigger();
    EXPECT_EQ(text(), u"one");
    action("Redo")->trigger();
    EXPECT_EQ(text(), u"oneone");
}

TEST_F(MainWindowTest, OpensAndSavesAFile)
{
    const std::filesystem::path path = file("a.txt", "first\n");
    dialogs_->files = {path};
    press(Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ(text(), u"first\n");
    type("x");
    EXPECT_TRUE(window.pane().document().isModified);
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_FALSE(window.pane().document().isModified);
    EXPECT_EQ(contentsOf(path), "xfirst\n");
    EXPECT_TRUE(window.statusLine().text().contains(QStringLiteral("saved")));
}

TEST_F(MainWindowTest, SaveAsAsksWhere)
{
    type("new");
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(dialogs_->proposed.filename(), "untitled.txt");
    EXPECT_TRUE(window.pane().document().isModified);
    dialogs_->location = std::filesystem::path(folder.path().toStdString()) / "b.txt";
    press(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(contentsOf(*dialogs_->location), "new");
}

TEST_F(MainWindowTest, WhatCannotBeOpenedIsOneLineInTheStatusLine)
{
    const std::filesystem::path base = folder.path().toStdString();
    const std::filesystem::path pipe = base / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const std::pair<std::filesystem::path, std::string> bad[] = {
        {base / "missing.txt", "Could not open missing.txt: No such file or directory"},
        {base, "Could not open " + base.filename().string() + ": Is a directory"},
        {"/dev/null", "Could not open null: Not a regular file"},
        {pipe, "Could not open pipe: Not a regular file"},
    };
    for (const auto& [path, message] : bad) {
        FileLoader loader(fileSystem, {path});
        std::optional<FileLoader::Loaded> loaded;
        loader.setNotify([this] { mainQueue.post([] {}); });
        mainQueue.runUntil([&] { return (loaded = loader.takeNext()).has_value(); });
        ASSERT_TRUE(loaded.has_value());
        EXPECT_TRUE(loader.isFinished());
        window.pane().showLoaded(loaded->path, std::move(loaded->result));
        EXPECT_EQ(window.statusLine().text().toStdString(), message);
        EXPECT_EQ(window.pane().tabs().size(), 1u);
        EXPECT_TRUE(window.isVisible());
    }
}

TEST_F(MainWindowTest, TheLoaderReadsInOrder)
{
    const std::vector<std::filesystem::path> paths{file("1", "one"), "/nonexistent",
                                                   file("2", "two")};
    FileLoader loader(fileSystem, paths);
    loader.setNotify([this] { mainQueue.post([] {}); });
    std::vector<FileLoader::Loaded> all;
    mainQueue.runUntil([&] {
        while (auto loaded = loader.takeNext())
            all.push_back(std::move(*loaded));
        return loader.isFinished();
    });
    ASSERT_EQ(all.size(), 3u);
    EXPECT_EQ(all[0].result->text.text(), u"one");
    EXPECT_FALSE(all[1].result.has_value());
    EXPECT_EQ(all[2].path, paths[2]);
}

TEST_F(MainWindowTest, ClosingAsksAboutAnUntitledText)
{
    type("precious");
    dialogs_->answer = 1;
    EXPECT_FALSE(window.close());
    EXPECT_TRUE(window.isVisible());
    ASSERT_EQ(dialogs_->alerts.size(), 1u);
    const EditorPaneAlert& alert = dialogs_->alerts[0];
    EXPECT_EQ(alert.message, u"Close Untitled");
    EXPECT_EQ(alert.information, u"This tab has unsaved changes.");
    EXPECT_EQ(alert.buttons, (std::vector<std::u16string>{u"Close", u"Cancel"}));
    EXPECT_EQ(text(), u"precious");
    dialogs_->answer = 0;
    EXPECT_TRUE(window.close());
}

TEST_F(MainWindowTest, ClosingSavesWhatHasAFile)
{
    const std::filesystem::path path = file("a.txt", "old");
    window.pane().openLocation(path);
    type("new ");
    EXPECT_TRUE(window.close());
    EXPECT_TRUE(dialogs_->alerts.empty());
    EXPECT_EQ(contentsOf(path), "new old");
}

TEST_F(MainWindowTest, ClosingAsksWhereSavingFails)
{
    const std::filesystem::path path = file("a.txt", "old");
    window.pane().openLocation(path);
    type("new ");
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    dialogs_->answer = 1;
    EXPECT_FALSE(window.close());
    ASSERT_EQ(dialogs_->alerts.size(), 1u);
    EXPECT_EQ(dialogs_->alerts[0].message, u"Close a.txt");
    dialogs_->answer = 0;
    EXPECT_TRUE(window.close());
}

TEST_F(MainWindowTest, NothingSavesWhatTheUserIsAskedAboutWhenTheWindowCloses)
{
    Preferences preferences = defaultPreferences();
    preferences.autoSaveOnFocusLoss = false;
    window.applyPreferences(preferences);
    const std::filesystem::path path = file("a.txt", "old");
    window.pane().openLocation(path);
    type("x");
    dialogs_->answer = 1;
    dialogs_->whileAsking = [this] {
        window.pane().autosave();
        window.pane().save();
    };
    EXPECT_FALSE(window.close());
    EXPECT_EQ(contentsOf(path), "old");
    window.pane().save();
    EXPECT_EQ(contentsOf(path), "xold");
}

TEST_F(MainWindowTest, ALoneAltAndF10LeaveTheMenuBarAlone)
{
    for (const Qt::Key key : {Qt::Key_Alt, Qt::Key_F10}) {
        QTest::keyPress(&window.editorView().textView(), key,
                        key == Qt::Key_Alt ? Qt::AltModifier : Qt::NoModifier);
        QTest::keyRelease(&window.editorView().textView(), key);
        EXPECT_FALSE(window.menuBar().activeAction());
        EXPECT_TRUE(window.editorView().textView().isFirstResponder());
    }
    type("x");
    EXPECT_EQ(text(), u"x");
}

TEST_F(MainWindowTest, TheStatusLineShowsOneLine)
{
    window.statusLine().setText(u"a\nb\u2028c");
    EXPECT_EQ(window.statusLine().text(), QStringLiteral("a b c"));
}

}  // namespace
}  // namespace tavrel
