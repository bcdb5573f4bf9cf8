#include "app/OpenFileWatch.h"

#include "MainWindowFixture.h"

namespace tavrel {
namespace {

class FakeFolderWatch final : public FolderWatch {
public:
    FakeFolderWatch(FolderWatchDelegate& told, FakeFolderWatch*& self) : delegate(told)
    {
        self = this;
    }
    void setFolders(const std::vector<std::filesystem::path>& wanted) override { folders = wanted; }

    FolderWatchDelegate& delegate;
    std::vector<std::filesystem::path> folders;
};

class OpenFileWatchTest : public MainWindowTest {
protected:
    OpenFileWatchTest()
    {
        window.startWatchingFiles(mainQueue, [this](FolderWatchDelegate& delegate) {
            return std::make_unique<FakeFolderWatch>(delegate, watch);
        });
    }

    FakeFolderWatch* watch = nullptr;
};

TEST_F(OpenFileWatchTest, FollowsTheFoldersOfOpenFiles)
{
    EXPECT_TRUE(watch->folders.empty());
    const std::filesystem::path path = file("a.txt", "text");
    window.pane().openLocation(path);
    EXPECT_EQ(watch->folders, std::vector{path.parent_path()});
    window.pane().removeTab(0);
    EXPECT_TRUE(watch->folders.empty());
}

TEST_F(OpenFileWatchTest, FollowsALinkToWhereItLeads)
{
    const std::filesystem::path base = folder.path().toStdString();
    std::filesystem::create_directory(base / "far");
    std::ofstream(base / "far" / "real.txt") << "text";
    std::filesystem::create_symlink(base / "far" / "real.txt", base / "link.txt");
    window.pane().openLocation(base / "link.txt");
    const auto real = std::filesystem::canonical(base / "far");
    EXPECT_EQ(watch->folders, (std::vector{base, real}));
}

TEST_F(OpenFileWatchTest, FollowsAFileOfTheSameNameInAnotherFolder)
{
    const std::filesystem::path base = folder.path().toStdString();
    for (const char* name : {"far", "near"})
        std::filesystem::create_directory(base / name);
    window.pane().openLocation(file("a.txt", "text"));
    dialogs_->location = base / "far" / "a.txt";
    window.pane().saveAs();
    EXPECT_EQ(watch->folders, std::vector{base / "far"});
    std::filesystem::rename(base / "far" / "a.txt", base / "near" / "a.txt");
    window.pane().files().fileWasRenamed(base / "far" / "a.txt", base / "near" / "a.txt");
    EXPECT_EQ(watch->folders, std::vector{base / "near"});
    const auto other = std::make_shared<EditorDocument>(base / "a.txt");
    window.pane().replaceTabs({window.pane().makeTab(other)}, 0);
    EXPECT_EQ(watch->folders, std::vector{base});
}

TEST_F(OpenFileWatchTest, FollowsALinkThatIsLedElsewhere)
{
    const std::filesystem::path base = folder.path().toStdString();
    for (const char* name : {"far", "near"}) {
        std::filesystem::create_directory(base / name);
        std::ofstream(base / name / "real.txt") << name;
    }
    std::filesystem::create_symlink(base / "far" / "real.txt", base / "link.txt");
    window.pane().openLocation(base / "link.txt");
    std::filesystem::remove(base / "link.txt");
    std::filesystem::create_symlink(base / "near" / "real.txt", base / "link.txt");
    watch->delegate.folderDidChange(base);
    mainQueue.advance(1);
    EXPECT_EQ(text(), u"near");
    EXPECT_EQ(watch->folders, (std::vector{base, std::filesystem::canonical(base / "near")}));
}

TEST_F(OpenFileWatchTest, NewsAreLookedAtOnceTheyHaveSettled)
{
    window.pane().openLocation(file("a.txt", "old"));
    file("a.txt", "changed");
    watch->delegate.folderDidChange(folder.path().toStdString());
    EXPECT_EQ(text(), u"old");
    file("a.txt", "changed again");
    watch->delegate.folderDidChange(folder.path().toStdString());
    mainQueue.advance(0.099);
    EXPECT_EQ(text(), u"old");
    mainQueue.advance(0.001);
    EXPECT_EQ(text(), u"changed again");
}

TEST_F(OpenFileWatchTest, NewsWaitUntilNoDialogIsOpen)
{
    Preferences preferences = defaultPreferences();
    preferences.autoSaveOnFocusLoss = false;
    window.applyPreferences(preferences);
    window.resize(1500, 820);
    QCoreApplication::processEvents();
    EditorPane& other = window.columns().pane(1);
    window.pane().openLocation(file("a.txt", "old"));
    type("x");
    other.openLocation(file("b.txt", "old"));
    other.insertText(u"x");
    int depth = 0;
    dialogs_->answer = 1;
    dialogs_->whileAsking = [&] {
        EXPECT_EQ(depth++, 0) << "a question over another one";
        file("b.txt", "changed");
        watch->delegate.folderDidChange(folder.path().toStdString());
        mainQueue.advance(1);
        --depth;
    };
    window.close();
    EXPECT_EQ(dialogs_->alerts.size(), 1u);
    EXPECT_EQ(other.text().text(), u"xold");
    dialogs_->whileAsking = nullptr;
    mainQueue.advance(1);
    EXPECT_EQ(dialogs_->alerts.size(), 2u);
    EXPECT_EQ(other.text().text(), u"changed");
}

TEST_F(OpenFileWatchTest, SaysWhenTheSystemHasNoWatchesLeft)
{
    watch->delegate.folderWatchDidRunOut();
    EXPECT_TRUE(window.statusLine().text().contains(QStringLiteral("not watched")));
}

}  // namespace
}  // namespace tavrel
