#include "terminal/ShellLaunch.h"

#include <gtest/gtest.h>
#include <set>

namespace tavrel {
namespace {

std::string resolvedAmong(const ShellCandidates& candidates, const std::set<std::string>& programs)
{
    return resolveShell(candidates,
                        [&](const std::string& path) { return programs.contains(path); });
}

TEST(ShellLaunch, TheLoginShellComesFirstThenTheEnvironmentsThenTheLastResort)
{
    const std::set<std::string> all{"/bin/a", "/bin/b", "/bin/zsh"};
    EXPECT_EQ(resolvedAmong({"/bin/a", "/bin/b", "/home/u"}, all), "/bin/a");
    EXPECT_EQ(resolvedAmong({"/bin/gone", "/bin/b", "/home/u"}, all), "/bin/b");
    EXPECT_EQ(resolvedAmong({"", "/bin/b", "/home/u"}, all), "/bin/b");
    EXPECT_EQ(resolvedAmong({"", "", "/home/u"}, all), "/bin/zsh");
}

TEST(ShellLaunch, WithoutAnyProgramItIsTheLastResort)
{
    EXPECT_EQ(resolvedAmong({"/bin/a", "/bin/b", "/home/u"}, {}), "/bin/zsh");
}

TEST(ShellLaunch, ARelativePathIsNoShell)
{
    EXPECT_EQ(resolvedAmong({"bin/a", "b", "/home/u"}, {"bin/a", "b"}), "/bin/zsh");
}

TEST(ShellLaunch, ALeadingTildeIsTheHomeFolder)
{
    EXPECT_EQ(resolvedAmong({"~/sh", "", "/home/u"}, {"/home/u/sh"}), "/home/u/sh");
    EXPECT_EQ(resolvedAmong({"/a~/sh", "", "/home/u"}, {"/a~/sh"}), "/a~/sh");
    EXPECT_EQ(resolvedAmong({"~other/sh", "", "/home/u"}, {"~other/sh"}), "/bin/zsh");
}

TEST(ShellLaunch, AProgramIsAFileThatMayBeExecuted)
{
    EXPECT_TRUE(isExecutableFile("/bin/sh"));
    EXPECT_FALSE(isExecutableFile("/usr"));
    EXPECT_FALSE(isExecutableFile("/etc/passwd"));
    EXPECT_FALSE(isExecutableFile("/nowhere/at/all"));
}

TEST(ShellLaunch, TheSystemKnowsTheLoginShell)
{
    const std::string shell = systemLoginShell();
    EXPECT_TRUE(shell.empty() || shell.front() == '/') << shell;
}

TEST(ShellLaunch, FishHasArgumentsOfItsOwnWhateverItsCase)
{
    const std::vector<std::string> fish{"--login", "--interactive"};
    const std::vector<std::string> other{"-l", "-i"};
    EXPECT_EQ(shellArguments("/usr/bin/fish"), fish);
    EXPECT_EQ(shellArguments("/opt/FiSh"), fish);
    EXPECT_EQ(shellArguments("/fish/bash"), other);
    EXPECT_EQ(shellArguments("/bin/fish2"), other);
    EXPECT_EQ(shellArguments("/bin/zsh"), other);
}

TEST(ShellLaunch, TheEnvironmentIsTheApplicationsOwnWithAdditions)
{
    Environment own;
    own.set("TERM", "dumb");
    own.set("KEPT", "yes");
    own.set("LANG", "de_DE.UTF-8");
    const Environment made = shellEnvironment(own, {"/bin/bash", "/project", "/terms", "C.UTF-8"});
    EXPECT_EQ(made.value("TERM"), "xterm-256color");
    EXPECT_EQ(made.value("PWD"), "/project");
    EXPECT_EQ(made.value("SHELL"), "/bin/bash");
    EXPECT_EQ(made.value("COLORTERM"), "truecolor");
    EXPECT_EQ(made.value("TERMINFO"), "/terms");
    EXPECT_EQ(made.value("KEPT"), "yes");
    EXPECT_EQ(made.value("LANG"), "de_DE.UTF-8");
}

TEST(ShellLaunch, ALanguageIsSetWhereThereIsNone)
{
    Environment own;
    EXPECT_EQ(shellEnvironment(own, {"/bin/sh", "/", ""}).value("LANG"), "en_US.UTF-8");
    own.set("LANG", "");
    EXPECT_EQ(shellEnvironment(own, {"/bin/sh", "/", "", "C.UTF-8"}).value("LANG"), "C.UTF-8");
}

TEST(ShellLaunch, WithoutAFolderTheSystemsDescriptionsAreUsed)
{
    EXPECT_FALSE(shellEnvironment({}, {"/bin/sh", "/", ""}).value("TERMINFO"));
}

TEST(ShellLaunch, ALocaleIsInstalledOrNot)
{
    EXPECT_TRUE(isLocaleInstalled("C.UTF-8"));
    EXPECT_FALSE(isLocaleInstalled("xx_NOWHERE.UTF-8"));
}

}  // namespace
}  // namespace tavrel
