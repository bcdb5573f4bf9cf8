#include "git/GitLineDiffer.h"

#include "GitTestFolder.h"
#include "platform/Clock.h"
#include "platform/ManualMainQueue.h"
#include "platform/PosixFileSystem.h"
#include "platform/PrivateFolder.h"
#include "platform/SerialQueue.h"
#include "platform/ThreadPool.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tavrel {
namespace {

namespace fs = std::filesystem;
using Kind = GitLineChangeKind;

constexpr std::string_view threeLines = "one\ntwo\nthree\n";
constexpr std::string_view secondChanged = "one\nTWO\nthree\n";

GitLineDiff modified(std::int64_t line)
{
    return {{{line, 1, Kind::modified}}, {}};
}

class GitLineDifferTest : public testing::Test {
protected:
    GitLineDifferTest() : environment_(Environment::ofThisProcess())
    {
        environment_.set("HOME", folder_.at("home"));
        environment_.remove("XDG_CONFIG_HOME");
        fs::create_directory(folder_.at("home"));
        fs::create_directory(folder_.at("temporary"));
        private_.emplace(PrivateFolder::create(fileSystem_, "", folder_.at("temporary")).value());
    }

    GitLineDiffer differ() { return differWith(GitTool::findProgram(environment_).value()); }
    GitLineDiffer differWith(const std::string& program)
    {
        return GitLineDiffer(GitTool(program, environment_), fileSystem_, *private_, work_, main_);
    }
    std::optional<GitLineDiff> compare(std::string_view file, std::string_view text)
    {
        return differ().compare(folder_.at(file), text);
    }

    /// A repository in the folder `at` with one committed file "a" of three lines.
    void makeRepository(const std::string& at)
    {
        folder_.write(at + "/a", threeLines);
        folder_.git(at, {"init", "--quiet"});
        folder_.git(at, {"add", "--all"});
        folder_.git(at, {"commit", "--quiet", "--message", "first"});
    }

    bool isPrivateFolderEmpty() const { return fs::is_empty(private_->path()); }

    GitTestFolder folder_;
    Environment environment_;
    PosixFileSystem fileSystem_;
    SimulatedClock clock_;
    ManualMainQueue main_{clock_};
    ThreadPool pool_{2};
    std::optional<PrivateFolder> private_;
    SerialQueue work_{pool_, "TavrelCode.GitLineDiff"};
};

TEST_F(GitLineDifferTest, ComparesWithTheLastCommitAlone)
{
    makeRepository("r");
    EXPECT_EQ(compare("r/a", threeLines), GitLineDiff{});
    EXPECT_EQ(compare("r/a", secondChanged), modified(2));
    folder_.write("r/a", secondChanged);
    folder_.git("r", {"add", "a"});
    EXPECT_EQ(compare("r/a", secondChanged), modified(2));
    folder_.git("r", {"commit", "--quiet", "--message", "second"});
    EXPECT_EQ(compare("r/a", secondChanged), GitLineDiff{});
    EXPECT_TRUE(isPrivateFolderEmpty());
}

TEST_F(GitLineDifferTest, ARepositoryWithoutACommitHasNewFilesOnly)
{
    folder_.write("r/a", threeLines);
    folder_.git("r", {"init", "--quiet"});
    EXPECT_EQ(compare("r/a", threeLines), GitLineDiff::allAdded(threeLines));
}

TEST_F(GitLineDifferTest, ARenamedFileIsNew)
{
    makeRepository("r");
    fs::rename(folder_.at("r/a"), folder_.at("r/b"));
    EXPECT_EQ(compare("r/b", threeLines), GitLineDiff::allAdded(threeLines));
}

TEST_F(GitLineDifferTest, AFileOutsideAnyRepositoryHasNoAnswer)
{
    folder_.write("plain/a", threeLines);
    EXPECT_EQ(compare("plain/a", threeLines), std::nullopt);
    EXPECT_EQ(compare("none/a", threeLines), std::nullopt);
}

TEST_F(GitLineDifferTest, WithoutGitThereIsNoAnswer)
{
    makeRepository("r");
    EXPECT_EQ(differWith("/no/such/git").compare(folder_.at("r/a"), secondChanged), std::nullopt);
    EXPECT_EQ(differWith("git").compare(folder_.at("r/a"), secondChanged), std::nullopt);
}

TEST_F(GitLineDifferTest, WithoutThePrivateFolderThereIsNoAnswer)
{
    makeRepository("r");
    fs::remove_all(private_->path());
    EXPECT_EQ(compare("r/a", secondChanged), std::nullopt);
    EXPECT_EQ(compare("r/a", threeLines), GitLineDiff{});
}

TEST_F(GitLineDifferTest, AFailingDiffHasNoAnswerAndLeavesNothingBehind)
{
    makeRepository("r");
    folder_.writeProgram("git", "#!/bin/sh\n"
                                "case \"$*\" in *--no-index*) exit 2;; esac\n"
                                "exec /usr/bin/git \"$@\"\n");
    EXPECT_EQ(differWith(folder_.at("git")).compare(folder_.at("r/a"), secondChanged),
              std::nullopt);
    EXPECT_TRUE(isPrivateFolderEmpty());
}

TEST_F(GitLineDifferTest, AProjectOpenedThroughALinkHasMarks)
{
    makeRepository("real/r");
    fs::create_symlink("real", folder_.at("link"));
    EXPECT_EQ(compare("link/r/a", secondChanged), modified(2));
    fs::create_symlink("../real/r/a", folder_.at("home/a"));
    EXPECT_EQ(compare("home/a", secondChanged), modified(2));
}

TEST_F(GitLineDifferTest, PathsOfAnyBytesHaveMarks)
{
    for (const char* name : {"line\nfeed\n", "blank ", "\xFF\xFE", "-dash", "*", "'\"$(x)"}) {
        makeRepository(name);
        EXPECT_EQ(compare(std::string(name) + "/a", secondChanged), modified(2)) << name;
    }
}

TEST_F(GitLineDifferTest, ASubmoduleIsARepositoryOfItsOwn)
{
    makeRepository("r");
    makeRepository("r/inner");
    EXPECT_EQ(compare("r/inner/a", secondChanged), modified(2));
}

TEST_F(GitLineDifferTest, AWorkTreeOfAnotherFolderHasMarks)
{
    makeRepository("r");
    folder_.git("r", {"worktree", "add", "--quiet", folder_.at("tree")});
    EXPECT_EQ(compare("tree/a", secondChanged), modified(2));
}

TEST_F(GitLineDifferTest, ABlobThatIsNotUtf8CountsAsEmpty)
{
    folder_.write("r/a", "\xFF\n");
    folder_.git("r", {"init", "--quiet"});
    folder_.git("r", {"add", "--all"});
    folder_.git("r", {"commit", "--quiet", "--message", "first"});
    EXPECT_EQ(compare("r/a", "x\ny\n"), (GitLineDiff{{{1, 2, Kind::added}}, {}}));
    EXPECT_EQ(compare("r/a", ""), GitLineDiff{});
}

TEST_F(GitLineDifferTest, TheUsersOwnSettingsDoNotChangeTheMarks)
{
    makeRepository("r");
    folder_.writeProgram("viewer", "#!/bin/sh\necho nothing to see\n");
    folder_.write("home/.gitconfig", "[diff]\nexternal = " + folder_.at("viewer") +
                                         "\nnoprefix = true\ninterHunkContext = 50\n"
                                         "colorMoved = zebra\n[color]\nui = always\n");
    environment_.set("GIT_EXTERNAL_DIFF", folder_.at("viewer"));
    environment_.set("GIT_DIFF_OPTS", "--unified=9");
    environment_.set("GIT_CONFIG_COUNT", "1");
    environment_.set("GIT_CONFIG_KEY_0", "diff.context");
    environment_.set("GIT_CONFIG_VALUE_0", "7");
    const GitLineDiff both{{{1, 1, Kind::modified}, {3, 1, Kind::modified}}, {}};
    EXPECT_EQ(compare("r/a", "ONE\ntwo\nTHREE\n"), both);
}

TEST_F(GitLineDifferTest, TheEnvironmentCannotNameAnotherRepository)
{
    makeRepository("r");
    makeRepository("other");
    environment_.set("GIT_DIR", folder_.at("other/.git"));
    environment_.set("GIT_WORK_TREE", folder_.at("other"));
    environment_.set("GIT_INDEX_FILE", folder_.at("other/.git/index"));
    environment_.set("GIT_OBJECT_DIRECTORY", folder_.at("other/.git/none"));
    EXPECT_EQ(compare("r/a", secondChanged), modified(2));
}

TEST_F(GitLineDifferTest, LargeTextsHaveMarks)
{
    std::string text;
    for (int line = 0; line < 100'000; ++line)
        text += "line number " + std::to_string(line) + "\n";
    folder_.write("r/a", text);
    folder_.git("r", {"init", "--quiet"});
    folder_.git("r", {"add", "--all"});
    folder_.git("r", {"commit", "--quiet", "--message", "first"});
    EXPECT_EQ(compare("r/a", text + "more"), (GitLineDiff{{{100'001, 1, Kind::added}}, {}}));
}

TEST_F(GitLineDifferTest, AnswersArriveOnTheMainQueueInTheOrderOfTheQuestions)
{
    makeRepository("r");
    GitLineDiffer asked = differ();
    std::vector<std::optional<GitLineDiff>> answers;
    const auto remember = [&](std::optional<GitLineDiff> diff) {
        answers.push_back(std::move(diff));
    };
    asked.compute(
        folder_.at("r/a"), [] { return std::string(secondChanged); }, remember);
    asked.compute(
        folder_.at("home/a"), [] { return std::string(); }, remember);
    asked.compute(
        folder_.at("r/a"), [] { return std::string(threeLines); }, remember);
    EXPECT_TRUE(answers.empty());
    ASSERT_TRUE(main_.runUntil([&] { return answers.size() == 3; }));
    EXPECT_EQ(answers[0], modified(2));
    EXPECT_EQ(answers[1], std::nullopt);
    EXPECT_EQ(answers[2], GitLineDiff{});
}

TEST_F(GitLineDifferTest, NoTextIsMadeForAFileOutsideAnyRepository)
{
    makeRepository("r");
    GitLineDiffer asked = differ();
    int texts = 0;
    int answers = 0;
    const auto text = [&texts] {
        ++texts;
        return std::string(threeLines);
    };
    asked.compute(folder_.at("home/a"), text, [&](auto) { ++answers; });
    ASSERT_TRUE(main_.runUntil([&] { return answers == 1; }));
    EXPECT_EQ(texts, 0);
    asked.compute(folder_.at("r/a"), text, [&](auto) { ++answers; });
    ASSERT_TRUE(main_.runUntil([&] { return answers == 2; }));
    EXPECT_EQ(texts, 1);
}

TEST(GitTool, FindsTheProgramInFullPathsAlone)
{
    Environment environment;
    const auto found = GitTool::findProgram(environment);
    if (fs::exists("/usr/bin/git")) {
        EXPECT_EQ(found, "/usr/bin/git");
        return;
    }
    EXPECT_EQ(found, std::nullopt);
    const GitTestFolder folder;
    folder.writeProgram("bin/git", "#!/bin/sh\n");
    environment.set("PATH", "bin::/none:" + folder.at("bin"));
    EXPECT_EQ(GitTool::findProgram(environment), folder.at("bin/git"));
}

TEST(GitTool, TheEnvironmentForbidsWhatCouldHangOrStartAProgram)
{
    Environment given;
    given.set("GIT_DIR", "/x");
    given.set("GIT_SSH_COMMAND", "/x");
    given.set("GIT_CONFIG_COUNT", "1");
    given.set("GIT_CONFIG_KEY_0", "safe.directory");
    given.set("GIT_CONFIG_VALUE_0", "*");
    given.set("KEPT", "1");
    const GitTool tool("/usr/bin/git", given);
    const Environment& environment = tool.environment();
    for (const char* name : {"GIT_DIR", "GIT_WORK_TREE", "GIT_INDEX_FILE", "GIT_SSH_COMMAND"})
        EXPECT_EQ(environment.value(name), std::nullopt) << name;
    EXPECT_EQ(environment.value("KEPT"), "1");
    EXPECT_EQ(environment.value("GIT_OPTIONAL_LOCKS"), "0");
    EXPECT_EQ(environment.value("GIT_TERMINAL_PROMPT"), "0");
    EXPECT_EQ(environment.value("GIT_NO_LAZY_FETCH"), "1");
    EXPECT_EQ(environment.value("GIT_ALLOW_PROTOCOL"), "none");
    EXPECT_EQ(environment.value("GIT_CONFIG_COUNT"), "4");
    EXPECT_EQ(environment.value("GIT_CONFIG_KEY_0"), "safe.directory");
    EXPECT_EQ(environment.value("GIT_CONFIG_KEY_1"), "core.fsmonitor");
    EXPECT_EQ(environment.value("GIT_CONFIG_VALUE_1"), "false");
    EXPECT_EQ(environment.value("GIT_CONFIG_KEY_2"), "core.hooksPath");
    EXPECT_EQ(environment.value("GIT_CONFIG_VALUE_2"), "/dev/null");
    Environment nonsense;
    nonsense.set("GIT_CONFIG_COUNT", "-7");
    EXPECT_EQ(GitTool("/usr/bin/git", nonsense).environment().value("GIT_CONFIG_COUNT"), "3");
}

}  // namespace
}  // namespace tavrel
