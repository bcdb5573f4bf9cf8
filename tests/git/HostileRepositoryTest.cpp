#include "GitTestFolder.h"
#include "git/FileWalk.h"
#include "git/FolderListing.h"
#include "git/GitIgnoreCache.h"
#include "git/GitLineDiffer.h"
#include "platform/Clock.h"
#include "platform/Collator.h"
#include "platform/ManualMainQueue.h"
#include "platform/PosixFileSystem.h"
#include "platform/PrivateFolder.h"
#include "platform/ThreadPool.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tavrel {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view threeLines = "one\ntwo\nthree\n";
constexpr std::string_view secondChanged = "one\nTWO\nthree\n";

/// A repository that names a program wherever git takes one. Each would leave a file in "ran".
class HostileRepositoryTest : public testing::Test {
protected:
    HostileRepositoryTest() : environment_(Environment::ofThisProcess())
    {
        fs::create_directory(folder_.at("ran"));
        fs::create_directory(folder_.at("temporary"));
        private_.emplace(PrivateFolder::create(fileSystem_, "", folder_.at("temporary")).value());
        environment_.set("HOME", folder_.path().string());
        environment_.remove("XDG_CONFIG_HOME");
        folder_.write("r/a", threeLines);
        folder_.git("r", {"init", "--quiet"});
        folder_.git("r", {"add", "--all"});
        folder_.git("r", {"commit", "--quiet", "--message", "first"});
    }

    /// The path of a program that remembers under `name` that it ran.
    std::string program(const std::string& name)
    {
        folder_.writeProgram("evil/" + name,
                             "#!/bin/sh\n: > '" + folder_.at("ran/" + name) + "'\nexit 1\n");
        return folder_.at("evil/" + name);
    }
    void configure(const std::string& setting, const std::string& value)
    {
        folder_.git("r", {"config", setting, value});
    }
    std::vector<std::string> ran() const
    {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(folder_.at("ran")))
            names.push_back(entry.path().filename());
        return names;
    }
    std::optional<GitLineDiff> compare(std::string_view text)
    {
        const GitLineDiffer differ(
            GitTool(GitTool::findProgram(environment_).value(), environment_), fileSystem_,
            *private_, pool_, main_);
        return differ.compare(folder_.at("r/a"), text);
    }

    const GitLineDiff secondModified{{{2, 1, GitLineChangeKind::modified}}, {}};

    GitTestFolder folder_;
    Environment environment_;
    PosixFileSystem fileSystem_;
    SimulatedClock clock_;
    ManualMainQueue main_{clock_};
    ThreadPool pool_{1};
    std::optional<PrivateFolder> private_;
};

TEST_F(HostileRepositoryTest, NoneOfItsProgramsRuns)
{
    configure("core.fsmonitor", program("fsmonitor"));
    configure("core.pager", program("pager"));
    configure("pager.show", program("pager-show"));
    configure("core.editor", program("editor"));
    configure("core.askPass", program("askpass"));
    configure("core.sshCommand", program("ssh"));
    configure("core.gitProxy", program("proxy"));
    configure("core.alternateRefsCommand", program("alternate-refs"));
    configure("credential.helper", program("credential"));
    configure("gpg.program", program("gpg"));
    configure("log.showSignature", "true");
    configure("diff.external", program("diff-external"));
    configure("diff.evil.command", program("diff-command"));
    configure("diff.evil.textconv", program("textconv"));
    configure("diff.evil.xfuncname", ".*");
    configure("filter.evil.clean", program("clean"));
    configure("filter.evil.smudge", program("smudge"));
    configure("filter.evil.process", program("process"));
    configure("filter.evil.required", "true");
    configure("alias.show", "!" + program("alias-show"));
    configure("alias.diff", "!" + program("alias-diff"));
    configure("uploadpack.packObjectsHook", program("pack-objects"));
    configure("core.hooksPath", folder_.at("evil-hooks"));
    folder_.write("r/.gitattributes", "* filter=evil diff=evil\n");
    folder_.write("r/.git/info/attributes", "* filter=evil diff=evil\n");
    for (const char* hook : {"post-index-change", "reference-transaction", "post-checkout",
                             "fsmonitor-watchman", "pre-auto-gc"}) {
        program(hook);
        for (const char* place : {"evil-hooks/", "r/.git/hooks/"}) {
            fs::create_directories(folder_.path() / place);
            fs::remove(folder_.at(std::string(place) + hook));
            fs::copy_file(folder_.at(std::string("evil/") + hook),
                          folder_.at(std::string(place) + hook));
        }
    }
    ASSERT_EQ(ran(), std::vector<std::string>());
    EXPECT_EQ(compare(secondChanged), secondModified);
    EXPECT_EQ(compare(threeLines), GitLineDiff{});
    folder_.write("r/new", "x\n");
    GitIgnoreCache cache(fileSystem_);
    const Collator collator("");
    EXPECT_EQ(collectFiles({folder_.at("r")}, 10, cache, collator).size(), 2U);
    EXPECT_EQ(listFolder(folder_.at("r"), cache, collator).size(), 2U);
    EXPECT_EQ(ran(), std::vector<std::string>());
}

TEST_F(HostileRepositoryTest, ThePreparedProgramsDoRunUnderPlainGit)
{
    configure("core.fsmonitor", program("fsmonitor"));
    configure("diff.external", program("diff-external"));
    folder_.write("r/a", secondChanged);
    folder_.git("r", {"status"});
    EXPECT_ANY_THROW(folder_.git("r", {"diff"}));  // As the program gives an error.
    EXPECT_TRUE(folder_.exists("ran/fsmonitor"));
    EXPECT_TRUE(folder_.exists("ran/diff-external"));
}

TEST_F(HostileRepositoryTest, AMissingObjectIsFetchedFromNowhere)
{
    configure("extensions.partialClone", "origin");
    configure("core.repositoryFormatVersion", "1");
    configure("remote.origin.promisor", "true");
    configure("remote.origin.partialCloneFilter", "blob:none");
    configure("core.sshCommand", program("ssh"));
    configure("remote.origin.uploadpack", program("uploadpack"));
    configure("remote.origin.fetch", "+refs/heads/*:refs/remotes/origin/*");
    configure("protocol.allow", "always");
    configure("protocol.ext.allow", "always");
    const std::string blob = folder_.git("r", {"rev-parse", "HEAD:a"});
    fs::remove(folder_.at("r/.git/objects/" + blob.substr(0, 2) + "/" + blob.substr(2, 38)));
    for (const std::string& url :
         {std::string("ssh://example.invalid/x"), "ext::" + program("ext") + " %S",
          folder_.at("elsewhere"), "file://" + folder_.at("elsewhere"), std::string("evil::x"),
          std::string("git://example.invalid/x")}) {
        configure("remote.origin.url", url);
        // The file counts as new, as its old form is not to be had.
        EXPECT_EQ(compare(secondChanged), GitLineDiff::allAdded(secondChanged)) << url;
        EXPECT_EQ(ran(), std::vector<std::string>()) << url;
    }
}

TEST_F(HostileRepositoryTest, AProgramForMissingObjectsDoesRunUnderPlainGit)
{
    configure("extensions.partialClone", "origin");
    configure("core.repositoryFormatVersion", "1");
    configure("remote.origin.promisor", "true");
    configure("core.sshCommand", program("ssh"));
    configure("remote.origin.url", "ssh://example.invalid/x");
    const std::string blob = folder_.git("r", {"rev-parse", "HEAD:a"});
    fs::remove(folder_.at("r/.git/objects/" + blob.substr(0, 2) + "/" + blob.substr(2, 38)));
    EXPECT_ANY_THROW(folder_.git("r", {"show", "HEAD:a"}));
    EXPECT_TRUE(folder_.exists("ran/ssh"));
}

TEST_F(HostileRepositoryTest, AWorkTreeElsewhereHasNoAnswer)
{
    fs::create_directory(folder_.at("elsewhere"));
    configure("core.worktree", folder_.at("elsewhere"));
    EXPECT_EQ(compare(secondChanged), std::nullopt);
}

}  // namespace
}  // namespace tavrel
