#include "platform/ChildProcess.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace tavrel {
namespace {

using Reason = ChildProcessError::Reason;
using namespace std::chrono_literals;

ChildProcess shell(const std::string& script, std::vector<std::string> arguments = {})
{
    ChildProcess child;
    child.program = "/bin/sh";
    child.arguments = {"-c", script, "sh"};
    child.arguments.insert(child.arguments.end(), arguments.begin(), arguments.end());
    child.environment.set("PATH", "/usr/bin:/bin");
    return child;
}

std::string outputOf(const ChildProcess& child)
{
    const auto result = run(child);
    return result ? result->output : "failed: " + std::to_string(result.error().code);
}

bool isAlive(pid_t process)
{
    return ::kill(process, 0) == 0 || errno != ESRCH;
}

/// Waits for an orphan that was killed to be gone, as its new parent may take a moment.
bool endsSoon(pid_t process)
{
    const auto deadline = std::chrono::steady_clock::now() + 10s;
    while (isAlive(process)) {
        // A zombie whose parent does not wait for it has ended all the same.
        std::ifstream status("/proc/" + std::to_string(process) + "/stat");
        std::string text;
        std::getline(status, text);
        if (text.find(") Z ") != std::string::npos)
            return true;
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::yield();
    }
    return true;
}

TEST(ChildProcess, AnswersWithOutputAndExitStatus)
{
    const auto result = run(shell("echo one; echo two; exit 3"));
    ASSERT_TRUE(result);
    EXPECT_EQ(result->output, "one\ntwo\n");
    EXPECT_EQ(result->exitStatus, 3);
    EXPECT_EQ(run(shell("kill -9 $$"))->exitStatus, 128 + SIGKILL);
}

TEST(ChildProcess, ArgumentsArriveAsTheyAre)
{
    EXPECT_EQ(outputOf(shell("printf '<%s>' \"$@\"", {"a b", "$HOME", "`id`", "", "*", "\n", "é"})),
              "<a b><$HOME><`id`><><*><\n><é>");
}

TEST(ChildProcess, TheEnvironmentIsTheGivenOneAlone)
{
    ChildProcess child = shell("");
    child.program = "/usr/bin/env";
    child.arguments = {};
    child.environment = {};
    child.environment.set("ONLY", "this one");
    EXPECT_EQ(outputOf(child), "ONLY=this one\n");
}

TEST(ChildProcess, RunsInItsFolder)
{
    EXPECT_EQ(outputOf(shell("pwd")), "/\n");
    ChildProcess child = shell("pwd");
    child.workingFolder = "/usr";
    EXPECT_EQ(outputOf(child), "/usr\n");
    child.workingFolder = "/no such folder";
    EXPECT_EQ(run(child).error().reason, Reason::cannotLaunch);
}

TEST(ChildProcess, ReadsNothing)
{
    EXPECT_EQ(outputOf(shell("cat; echo end")), "end\n");
}

TEST(ChildProcess, StandardErrorGoesNowhereAndCannotBlock)
{
    EXPECT_EQ(outputOf(shell("head -c 1000000 /dev/zero >&2; echo end")), "end\n");
}

TEST(ChildProcess, LargeOutputArrivesWhole)
{
    EXPECT_EQ(outputOf(shell("head -c 5000000 /dev/zero")), std::string(5'000'000, '\0'));
}

TEST(ChildProcess, TooMuchOutputEndsIt)
{
    ChildProcess child = shell("cat /dev/zero");
    child.maximumOutputBytes = 1'000'000;
    EXPECT_EQ(run(child).error().reason, Reason::outputTooLarge);
    child = shell("head -c 1000000 /dev/zero");
    child.maximumOutputBytes = 1'000'000;
    EXPECT_EQ(run(child)->output.size(), 1'000'000U);
}

TEST(ChildProcess, TheTimeLimitEndsAProgramThatHangs)
{
    ChildProcess child = shell("sleep 1000");
    child.timeLimit = 50ms;
    EXPECT_EQ(run(child).error().reason, Reason::timeLimit);
    child = shell("exec >&-; sleep 1000");
    child.timeLimit = 50ms;
    EXPECT_EQ(run(child).error().reason, Reason::timeLimit);
    child = shell("while :; do echo x; done");
    child.timeLimit = 50ms;
    child.maximumOutputBytes = std::size_t{1} << 40;
    EXPECT_EQ(run(child).error().reason, Reason::timeLimit);
}

TEST(ChildProcess, TheTimeLimitEndsWhatTheProgramStarted)
{
    std::string pattern = (std::filesystem::temp_directory_path() / "tavrel-child-XXXXXX").string();
    ASSERT_NE(::mkdtemp(pattern.data()), nullptr);
    ChildProcess child = shell("sleep 1000 & echo $! > \"$1/pid\"; wait", {pattern});
    child.timeLimit = 300ms;
    EXPECT_EQ(run(child).error().reason, Reason::timeLimit);
    pid_t process = 0;
    std::ifstream(pattern + "/pid") >> process;
    ASSERT_GT(process, 0);
    EXPECT_TRUE(endsSoon(process));
    std::filesystem::remove_all(pattern);
}

TEST(ChildProcess, AProgramLeftBehindWithTheOutputMeetsTheTimeLimit)
{
    ChildProcess child = shell("sleep 1000 &");
    child.timeLimit = 100ms;
    EXPECT_EQ(run(child).error().reason, Reason::timeLimit);
}

TEST(ChildProcess, HasAProcessGroupOfItsOwn)
{
    const std::string group =
        outputOf(shell("read a b c d e rest < /proc/self/stat; echo $e; echo"));
    EXPECT_NE(group, std::to_string(::getpgrp()) + "\n\n");
}

TEST(ChildProcess, InheritsNoDescriptors)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe(ends.data()), 0);  // Without the flag that closes them on exec.
    ChildProcess child = shell("");
    child.program = "/bin/ls";
    child.arguments = {"/proc/self/fd"};
    EXPECT_EQ(outputOf(child), "0\n1\n2\n3\n");  // The fourth is the folder that ls reads.
    ::close(ends[0]);
    ::close(ends[1]);
}

TEST(ChildProcess, SignalsAreNeitherBlockedNorIgnored)
{
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    sigaddset(&blocked, SIGUSR1);
    ASSERT_EQ(::pthread_sigmask(SIG_BLOCK, &blocked, &before), 0);
    const auto handler = ::signal(SIGPIPE, SIG_IGN);
    ChildProcess child = shell("");
    child.program = "/bin/grep";
    child.arguments = {"-E", "^Sig(Blk|Ign)", "/proc/self/status"};
    const std::string masks = outputOf(child);
    ::signal(SIGPIPE, handler);
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
    // The library keeps the first two real-time signals, 32 and 33, for itself.
    constexpr unsigned long long ordinary = 0x7FFFFFFF;
    unsigned long long blockedMask = ~0ULL;
    unsigned long long ignoredMask = ~0ULL;
    ASSERT_EQ(std::sscanf(masks.c_str(), "SigBlk: %llx SigIgn: %llx", &blockedMask, &ignoredMask),
              2);
    EXPECT_EQ(blockedMask & ordinary, 0U);
    EXPECT_EQ(ignoredMask & ordinary, 0U);
}

TEST(ChildProcess, WhatCannotBeLaunchedFails)
{
    ChildProcess child = shell("");
    child.program = "/no/such/program";
    EXPECT_EQ(run(child).error().reason, Reason::cannotLaunch);
    EXPECT_EQ(run(child).error().code, ENOENT);
    child.program = "/etc/passwd";
    EXPECT_EQ(run(child).error().code, EACCES);
    child.program = "sh";
    EXPECT_EQ(run(child).error().reason, Reason::cannotLaunch);
    child.program = "";
    EXPECT_EQ(run(child).error().reason, Reason::cannotLaunch);
    child = shell(std::string("echo a\0b", 8));
    EXPECT_EQ(run(child).error().code, EINVAL);
}

TEST(ChildProcess, RunsOnSeveralThreadsAtOnce)
{
    std::vector<std::string> outputs(8);
    std::vector<std::thread> threads;
    for (std::size_t index = 0; index < outputs.size(); ++index) {
        threads.emplace_back([&outputs, index] {
            outputs[index] = outputOf(shell("echo \"$1\"", {std::to_string(index)}));
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    for (std::size_t index = 0; index < outputs.size(); ++index)
        EXPECT_EQ(outputs[index], std::to_string(index) + "\n");
}

TEST(ChildProcess, LeavesNoDescriptorsAndNoChildrenBehind)
{
    const auto openCount = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
    };
    const auto before = openCount();
    for (int round = 0; round < 20; ++round) {
        run(shell("echo x"));
        ChildProcess missing = shell("");
        missing.program = "/no/such/program";
        run(missing);
    }
    ChildProcess hanging = shell("sleep 1000");
    hanging.timeLimit = 10ms;
    run(hanging);
    EXPECT_EQ(openCount(), before);
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST(Environment, HoldsOneValueForEachName)
{
    Environment environment;
    environment.set("A", "1");
    environment.set("B", "x=y");
    environment.set("A", "2");
    EXPECT_EQ(environment.value("A"), "2");
    EXPECT_EQ(environment.value("B"), "x=y");
    EXPECT_EQ(environment.value("AB"), std::nullopt);
    EXPECT_EQ(environment.entries().size(), 2U);
    environment.remove("A");
    environment.remove("none");
    EXPECT_EQ(environment.value("A"), std::nullopt);
    environment.set("E", "");
    EXPECT_EQ(environment.value("E"), "");
}

TEST(Environment, NamesAndValuesThatCannotBeAreNotSet)
{
    Environment environment;
    environment.set("", "1");
    environment.set("A=B", "1");
    environment.set(std::string_view("A\0", 2), "1");
    environment.set("A", std::string_view("1\0", 2));
    EXPECT_TRUE(environment.entries().empty());
}

TEST(Environment, OfThisProcessHoldsItsVariables)
{
    ::setenv("TAVREL_ENVIRONMENT_TEST", "here", 1);
    EXPECT_EQ(Environment::ofThisProcess().value("TAVREL_ENVIRONMENT_TEST"), "here");
    ::unsetenv("TAVREL_ENVIRONMENT_TEST");
    EXPECT_EQ(Environment::ofThisProcess().value("TAVREL_ENVIRONMENT_TEST"), std::nullopt);
}

}  // namespace
}  // namespace tavrel
