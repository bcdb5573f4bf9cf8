#include "PTYRecorder.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <sstream>
#include <sys/resource.h>
#include <sys/wait.h>

namespace tavrel {
namespace {

using Consumption = PTYRecorder::Consumption;
using Means = ChildExitEvent::Means;

bool isGone(pid_t process)
{
    return ::kill(process, 0) != 0 && errno == ESRCH;
}

std::vector<std::string> openDescriptors()
{
    std::vector<std::string> result;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code error;
        result.push_back(std::filesystem::read_symlink(entry.path(), error).string());
    }
    return result;
}

std::size_t openTerminals()
{
    const auto all = openDescriptors();
    return static_cast<std::size_t>(
        std::count_if(all.begin(), all.end(), [](const std::string& path) {
            return path.find("ptmx") != std::string::npos ||
                   path.find("/dev/pts/") != std::string::npos;
        }));
}

class ExitMeansTest : public testing::TestWithParam<Means> {};
INSTANTIATE_TEST_SUITE_P(PTYProcess, ExitMeansTest,
                         testing::Values(Means::processDescriptor, Means::waitingThread));

TEST_P(ExitMeansTest, AProgramIsHeardAndItsEndIsTold)
{
    PTYRecorder pty(Consumption::atOnce, GetParam());
    EXPECT_FALSE(pty.process().isRunning());
    EXPECT_EQ(pty.process().childPID(), -1);
    ASSERT_TRUE(pty.startShell("echo hello; read line"));
    EXPECT_TRUE(pty.process().isRunning());
    const pid_t child = pty.process().childPID();
    EXPECT_GT(child, 0);
    ASSERT_TRUE(pty.waitForOutput("hello\r\n"));
    pty.process().write("\n");
    ASSERT_TRUE(pty.waitForEnd());
    EXPECT_FALSE(pty.process().isRunning());
    EXPECT_EQ(pty.process().childPID(), -1);
    EXPECT_TRUE(waitUntil([&] { return isGone(child); }));
}

TEST_P(ExitMeansTest, TheLastWordsComeBeforeTheEnd)
{
    for (int round = 0; round < 20; ++round) {
        PTYRecorder pty(Consumption::atOnce, GetParam());
        ASSERT_TRUE(pty.startShell("head -c 6000 /dev/zero | tr '\\0' x; echo last words"));
        ASSERT_TRUE(pty.waitForEnd());
        const std::string heard = pty.record().outputAtTermination;
        EXPECT_EQ(heard, std::string(6000, 'x') + "last words\r\n");
    }
}

TEST_P(ExitMeansTest, TheEndIsToldOnceOnTheQueueThatBringsTheOutput)
{
    PTYRecorder pty(Consumption::atOnce, GetParam());
    ASSERT_TRUE(pty.startShell("echo one"));
    ASSERT_TRUE(pty.waitForEnd());
    pty.process().terminate();
    const auto record = pty.record();
    EXPECT_EQ(record.terminations, 1);
    EXPECT_EQ(record.outputThread, record.terminationThread);
    EXPECT_NE(record.outputThread, std::this_thread::get_id());
}

TEST(PTYProcess, StartingARunningObjectDoesNothing)
{
    PTYRecorder pty;
    ASSERT_TRUE(pty.startShell("echo first; read line"));
    const pid_t child = pty.process().childPID();
    ASSERT_TRUE(pty.waitForOutput("first"));
    EXPECT_TRUE(pty.startShell("echo second"));
    EXPECT_EQ(pty.process().childPID(), child);
    pty.process().write("\n");
    ASSERT_TRUE(pty.waitForEnd());
    EXPECT_EQ(pty.output().find("second"), std::string::npos);
}

TEST(PTYProcess, ThereIsNoWayBackFromTheEnd)
{
    PTYRecorder pty;
    ASSERT_TRUE(pty.startShell("true"));
    ASSERT_TRUE(pty.waitForEnd());
    const auto again = pty.startShell("true");
    ASSERT_FALSE(again);
    EXPECT_EQ(again.error().code, EALREADY);
}

TEST(PTYProcess, AProgramThatCannotBeRunEndsAtOnce)
{
    PTYRecorder pty;
    ASSERT_TRUE(pty.process().start({"/nowhere/to/be/found", {}, {}, "/", 80, 24}));
    EXPECT_TRUE(pty.waitForEnd());
    EXPECT_EQ(pty.output(), "");
}

TEST(PTYProcess, AProgramThatCannotBeRunExitsWith127)
{
    const auto pair = openPTY(80, 24);
    ASSERT_TRUE(pair);
    const auto child = forkOntoPTY({"/nowhere/to/be/found", {}, {}, "/", 80, 24}, pair->slaveName);
    ASSERT_TRUE(child);
    int status = 0;
    ASSERT_EQ(::waitpid(*child, &status, 0), *child);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 127);
}

TEST(PTYProcess, AChildWithoutATerminalExitsWith127)
{
    const auto child = forkOntoPTY({"/bin/true", {}, {}, "/", 80, 24}, "/nowhere/pts");
    ASSERT_TRUE(child);
    int status = 0;
    ASSERT_EQ(::waitpid(*child, &status, 0), *child);
    EXPECT_EQ(WEXITSTATUS(status), 127);
}

TEST(PTYProcess, StartFailsWithoutDescriptors)
{
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the sanitizer needs descriptors of its own";
#endif
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit none{0, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
    PTYRecorder pty;
    const auto started = pty.startShell("true");
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
    ASSERT_FALSE(started);
    EXPECT_EQ(started.error(), fileError(EMFILE));
    EXPECT_FALSE(pty.process().isRunning());
    EXPECT_EQ(pty.record().terminations, 0);
    // A failure is no end: the same object may try again.
    EXPECT_TRUE(pty.startShell("echo at last"));
    EXPECT_TRUE(pty.waitForOutput("at last"));
}

/// Starts a program as a user who may have no more processes; exits with 0 when that fails as it
/// should.
[[noreturn]] void startWithoutProcesses()
{
    constexpr uid_t nobody = 65534;
    constexpr rlim_t few = 1;
    const rlimit limit{few, few};
    if (::setrlimit(RLIMIT_NPROC, &limit) != 0 || (::geteuid() == 0 && ::setuid(nobody) != 0))
        ::_exit(3);
    PTYProcess process;
    const auto started = process.start({"/bin/true", {}, {}, "/", 80, 24});
    ::_exit(!started && started.error().code == EAGAIN && openTerminals() == 0 ? 0 : 1);
}

TEST(PTYProcess, StartFailsWithoutProcessesAndLeavesNothingOpen)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(startWithoutProcesses(), testing::ExitedWithCode(0), "");
}

TEST(PTYProcess, AFolderThatIsNotThereLeavesTheParentsOwn)
{
    PTYRecorder pty;
    ASSERT_TRUE(pty.startShell("pwd; echo done", "/nowhere/at/all"));
    ASSERT_TRUE(pty.waitForOutput("done"));
    EXPECT_EQ(pty.output(), std::filesystem::current_path().string() + "\r\ndone\r\n");
}

TEST(PTYProcess, TheProgramStartsInItsFolder)
{
    PTYRecorder pty;
    ASSERT_TRUE(pty.startShell("pwd; echo done", "/usr/bin"));
    ASSERT_TRUE(pty.waitForOutput("done"));
    EXPECT_EQ(pty.output(), "/usr/bin\r\ndone\r\n");
}

TEST(PTYProcess, ArgumentsAndEnvironmentArriveAsGiven)
{
    PTYRecorder pty;
    PTYCommand command{
        "/bin/sh", {"-c", "echo \"$0|$1|$A|$HOME\"; read l", "zero", "a b"}, {}, "/", 80, 24};
    command.environment.set("A", "x=y z");
    ASSERT_TRUE(pty.process().start(command));
    EXPECT_TRUE(pty.waitForOutput("zero|a b|x=y z|\r\n"));
}

TEST(PTYProcess, TheFirstArgumentIsTheFullPath)
{
    PTYRecorder pty;
    ASSERT_TRUE(pty.startShell("tr '\\0' ' ' </proc/$$/cmdline; read l"));
    EXPECT_TRUE(pty.waitForOutput("/bin/sh -c"));
}

TEST(PTYProcess, TheProgramLeadsASessionWithTheTerminal)
{
    PTYRecorder pty;
    // Fields 1, 5, 6 and 8 of stat: process, group, session, foreground group of the terminal.
    ASSERT_TRUE(
        pty.startShell("read s </proc/$$/stat; set -- $s; echo \"at $1 $5 $6 $8.\"; "
                       "test -t 0 && test -t 1 && test -t 2 && echo all >/dev/tty; read l"));
    const std::string child = std::to_string(pty.process().childPID());
    ASSERT_TRUE(pty.waitForOutput("all\r\n"));
    EXPECT_EQ(pty.output(),
              "at " + child + " " + child + " " + child + " " + child + ".\r\nall\r\n");
}

TEST(PTYProcess, SignalsThatTheParentIgnoresOrBlocksAreTheProgramsOwn)
{
    const auto before = ::signal(SIGPIPE, SIG_IGN);
    sigset_t set;
    sigset_t old;
    ::sigemptyset(&set);
    ::sigaddset(&set, SIGUSR1);
    ::pthread_sigmask(SIG_BLOCK, &set, &old);
    PTYRecorder pty;
    const auto started = pty.startShell("grep -E 'Sig(Blk|Ign|Cgt)' /proc/self/status; read l");
    sigset_t after;
    ::pthread_sigmask(SIG_SETMASK, &old, &after);
    ::signal(SIGPIPE, before);
    ASSERT_TRUE(started);
    ASSERT_TRUE(pty.waitForOutput("SigCgt"));
    const std::string none = ":\t0000000000000000\r\n";
    EXPECT_NE(pty.output().find("SigBlk" + none), std::string::npos) << pty.output();
    EXPECT_NE(pty.output().find("SigIgn" + none), std::string::npos) << pty.output();
    // The parent's own mask is what it was.
    EXPECT_EQ(::sigismember(&after, SIGUSR1), 1);
    EXPECT_EQ(::sigismember(&after, SIGUSR2), 0);
}

TEST(PTYProcess, NoDescriptorOfTheParentReachesTheProgram)
{
    const int leaky = ::open("/dev/null", O_RDONLY);  // Without close-on-exec.
    PTYRecorder other;
    ASSERT_TRUE(other.startShell("read l"));
    PTYRecorder pty;
    ASSERT_TRUE(pty.startShell("ls /proc/$$/fd; echo done; read l"));
    EXPECT_TRUE(pty.waitForOutput("done"));
    ::close(leaky);
    std::string names = pty.output();
    std::replace_if(
        names.begin(), names.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    std::istringstream words(names);
    const std::vector<std::string> descriptors{std::istream_iterator<std::string>(words), {}};
    EXPECT_EQ(descriptors, (std::vector<std::string>{"0", "1", "2", "done"}));
}

TEST(PTYProcess, BothSidesAreClosedOnExec)
{
    const auto pair = openPTY(80, 24);
    ASSERT_TRUE(pair);
    EXPECT_EQ(::fcntl(pair->master.number(), F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
    EXPECT_EQ(::fcntl(pair->slave.number(), F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
    EXPECT_EQ(::fcntl(pair->master.number(), F_GETFL) & O_NONBLOCK, O_NONBLOCK);
}

struct Size {
    int columns;
    int rows;
    const char* told;
};
class SizeTest : public testing::TestWithParam<Size> {};
INSTANTIATE_TEST_SUITE_P(PTYProcess, SizeTest,
                         testing::Values(Size{132, 43, "43 132"}, Size{0, 0, "1 1"},
                                         Size{-7, 24, "24 1"}, Size{65535, 65535, "65535 65535"},
                                         Size{65536, 1'000'000'000, "65535 65535"}));

TEST_P(SizeTest, IsLimitedAtTheStart)
{
    PTYRecorder pty;
    ASSERT_TRUE(pty.startShell("stty size; read l", "/", GetParam().columns, GetParam().rows));
    EXPECT_TRUE(pty.waitForOutput(std::string(GetParam().told) + "\r\n")) << pty.output();
}

TEST_P(SizeTest, IsLimitedLaterAndTold)
{
    PTYRecorder pty;
    ASSERT_TRUE(pty.startShell("trap 'stty size; echo told' WINCH; echo ready; "
                               "while :; do read l; done"));
    ASSERT_TRUE(pty.waitForOutput("ready"));
    pty.process().setWindowSize(GetParam().columns, GetParam().rows);
    // The shell runs a trap once what it waits for has come.
    pty.process().write("\n");
    ASSERT_TRUE(pty.waitForOutput("told"));
    EXPECT_NE(pty.output().find(std::string(GetParam().told) + "\r\n"), std::string::npos)
        << pty.output();
}

TEST(PTYProcess, WritesBeforeTheStartAndAfterTheEndDoNothing)
{
    PTYRecorder pty;
    pty.process().write("early\n");
    EXPECT_EQ(pty.process().unwrittenBytes(), 0U);
    ASSERT_TRUE(pty.startShell("read line; echo \"got $line\""));
    pty.process().write("late\n");
    ASSERT_TRUE(pty.waitForEnd());
    EXPECT_NE(pty.output().find("got late\r\n"), std::string::npos) << pty.output();
    pty.process().write("too late\n");
    EXPECT_EQ(pty.process().unwrittenBytes(), 0U);
    pty.process().setWindowSize(10, 10);
    EXPECT_FALSE(pty.process().shellHasForegroundChild());
    EXPECT_FALSE(pty.process().currentWorkingDirectory());
}

TEST(PTYProcess, WritesKeepTheirOrder)
{
    PTYRecorder pty;
    ASSERT_TRUE(pty.startShell("stty raw -echo; echo ready; head -c 200000 | md5sum; read l"));
    ASSERT_TRUE(pty.waitForOutput("ready"));
    std::string all;
    for (int piece = 0; all.size() < 200'000; ++piece) {
        const std::string text = std::to_string(piece) + ",";
        pty.process().write(text);
        all += text;
    }
    all.resize(200'000);
    const auto file = std::filesystem::path(testing::TempDir()) / "pty-order";
    std::ofstream(file) << all;
    PTYRecorder sum;
    ASSERT_TRUE(sum.startShell("md5sum <" + file.string()));
    ASSERT_TRUE(sum.waitForEnd());
    EXPECT_TRUE(pty.waitForOutput(sum.output().substr(0, 32))) << pty.output();
    std::filesystem::remove(file);
}

TEST(PTYProcess, ABigPasteIntoAProgramThatEchoesBlocksNeitherDirection)
{
    PTYRecorder pty;
    ASSERT_TRUE(pty.startShell("stty raw -echo; echo ready; exec cat"));
    ASSERT_TRUE(pty.waitForOutput("ready"));
    const std::string paste(8'000'000, 'p');
    pty.process().write(paste);
    EXPECT_TRUE(pty.waitFor([&](const PTYRecorder::Record& record) {
        return static_cast<std::size_t>(
                   std::count(record.output.begin(), record.output.end(), 'p')) == paste.size();
    }));
    EXPECT_TRUE(waitUntil([&] { return pty.process().unwrittenBytes() == 0; }));
}

TEST(PTYProcess, AProgramThatReadsNothingHoldsUpNeitherTheCallerNorTheOutput)
{
    PTYRecorder pty;
    ASSERT_TRUE(pty.startShell("stty raw -echo; echo ready; kill -STOP $$; echo heard"));
    ASSERT_TRUE(pty.waitForOutput("ready"));
    pty.process().write(std::string(1'000'000, 'x'));
    EXPECT_GT(pty.process().unwrittenBytes(), 0U);
    // The stopped program goes on: its output comes although its input is stuck.
    ASSERT_TRUE(waitUntil([&] {
        ::kill(pty.process().childPID(), SIGCONT);
        return pty.output().find("heard") != std::string::npos;
    }));
    EXPECT_TRUE(pty.waitForEnd());
}

TEST(PTYProcess, OutputThatNobodyConsumesStopsTheProgram)
{
    PTYRecorder pty(Consumption::never);
    ASSERT_TRUE(pty.startShell("exec cat /dev/zero"));
    ASSERT_TRUE(pty.waitFor([](const PTYRecorder::Record& record) {
        return record.output.size() >
               PTYProcess::maximumWaitingBytes - PTYProcess::maximumChunkBytes;
    }));
    // Input is still taken: Ctrl+C ends the program, and the end still comes.
    EXPECT_LE(pty.record().output.size(), PTYProcess::maximumWaitingBytes);
    EXPECT_LE(pty.record().largestChunk, PTYProcess::maximumChunkBytes);
    pty.process().write("\x03");
    ASSERT_TRUE(waitUntil([&] {
        pty.process().didConsumeOutput(PTYProcess::maximumWaitingBytes);
        return pty.record().terminations == 1;
    }));
}

TEST(PTYProcess, OutputGoesOnOnceThereIsRoom)
{
    PTYRecorder pty(Consumption::never);
    constexpr std::size_t total = 5'000'000;
    ASSERT_TRUE(pty.startShell("stty raw; head -c 5000000 /dev/zero"));
    std::size_t consumed = 0;
    while (consumed < total) {
        ASSERT_TRUE(pty.waitFor(
            [&](const PTYRecorder::Record& record) { return record.output.size() > consumed; }));
        const std::size_t size = pty.record().output.size();
        ASSERT_LE(size - consumed, PTYProcess::maximumWaitingBytes);
        pty.process().didConsumeOutput(size - consumed);
        consumed = size;
    }
    EXPECT_TRUE(pty.waitForEnd());
    EXPECT_EQ(pty.output().size(), total);
}

TEST(PTYProcess, ManyBytesAreHandedOverTogether)
{
    PTYRecorder pty;
    ASSERT_TRUE(pty.startShell("stty raw; head -c 20000000 /dev/zero"));
    ASSERT_TRUE(pty.waitForEnd());
    EXPECT_EQ(pty.output().size(), 20'000'000U);
    EXPECT_LE(pty.record().largestChunk, PTYProcess::maximumChunkBytes);
}

TEST(PTYProcess, TerminatingSendsAHangUp)
{
    PTYRecorder pty;
    const auto file = std::filesystem::path(testing::TempDir()) / "pty-hangup";
    std::filesystem::remove(file);
    ASSERT_TRUE(pty.startShell("trap 'echo caught >" + file.string() +
                               "; exit' HUP; echo ready; while :; do read l; done"));
    ASSERT_TRUE(pty.waitForOutput("ready"));
    const pid_t child = pty.process().childPID();
    pty.process().terminate();
    EXPECT_FALSE(pty.process().isRunning());
    EXPECT_EQ(pty.process().childPID(), -1);
    EXPECT_EQ(pty.record().terminations, 1);
    EXPECT_EQ(pty.record().terminationThread, std::this_thread::get_id());
    EXPECT_TRUE(waitUntil([&] { return isGone(child); }));
    EXPECT_TRUE(std::filesystem::exists(file));
    std::filesystem::remove(file);
}

TEST(PTYProcess, AProgramThatIgnoresTheHangUpIsLeftRunningAndCollectedLater)
{
    PTYRecorder pty;
    // It stays until somebody opens the other end of the pipe.
    const auto pipe = std::filesystem::path(testing::TempDir()) / "pty-pipe";
    std::filesystem::remove(pipe);
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    ASSERT_TRUE(pty.startShell("trap '' HUP; echo ready; read line <" + pipe.string()));
    ASSERT_TRUE(pty.waitForOutput("ready"));
    const pid_t child = pty.process().childPID();
    pty.destroyProcess();
    EXPECT_EQ(::kill(child, 0), 0);
    std::ofstream(pipe) << "go\n";
    EXPECT_TRUE(waitUntil([&] { return isGone(child); }));
    std::filesystem::remove(pipe);
}

TEST(PTYProcess, ClearedCallbacksHearNothing)
{
    PTYRecorder pty;
    ASSERT_TRUE(pty.startShell("echo ready; while :; do read l; done"));
    ASSERT_TRUE(pty.waitForOutput("ready"));
    pty.process().setOnTermination(nullptr);
    pty.process().setOnOutput(nullptr);
    const pid_t child = pty.process().childPID();
    pty.process().terminate();
    EXPECT_TRUE(waitUntil([&] { return isGone(child); }));
    EXPECT_EQ(pty.record().terminations, 0);
}

TEST(PTYProcess, DestroyingARunningObjectEndsItsProgram)
{
    PTYRecorder pty;
    ASSERT_TRUE(pty.startShell("echo ready; while :; do read l; done"));
    ASSERT_TRUE(pty.waitForOutput("ready"));
    const pid_t child = pty.process().childPID();
    pty.destroyProcess();
    EXPECT_EQ(pty.record().terminations, 1);
    EXPECT_TRUE(waitUntil([&] { return isGone(child); }));
}

TEST(PTYProcess, TheEndClosesBothSides)
{
    const std::size_t before = openTerminals();
    {
        PTYRecorder pty;
        ASSERT_TRUE(pty.startShell("read l"));
        EXPECT_EQ(openTerminals(), before + 2);
        pty.process().terminate();
        EXPECT_TRUE(waitUntil([&] { return openTerminals() == before; }));
    }
    PTYRecorder pty;
    ASSERT_TRUE(pty.startShell("true"));
    ASSERT_TRUE(pty.waitForEnd());
    EXPECT_TRUE(waitUntil([&] { return openTerminals() == before; }));
}

TEST(PTYProcess, WhatIsWrittenAroundATeardownReachesNoOtherFile)
{
    const auto path = std::filesystem::path(testing::TempDir()) / "pty-stranger";
    for (int round = 0; round < 50; ++round) {
        PTYRecorder pty;
        ASSERT_TRUE(pty.startShell("stty raw -echo; echo ready; while :; do read l; done"));
        ASSERT_TRUE(pty.waitForOutput("ready"));
        for (int write = 0; write < 20; ++write)
            pty.process().write(std::string(10'000, 'w'));
        pty.process().terminate();
        // Takes the lowest free numbers, which were the terminal's.
        std::array<int, 8> files{};
        for (int& file : files)
            file = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
        pty.process().write("after the end");
        pty.destroyProcess();
        for (const int file : files)
            ::close(file);
        ASSERT_EQ(std::filesystem::file_size(path), 0U);
    }
    std::filesystem::remove(path);
}

TEST(PTYProcess, AProgramLeftBehindThatWritesWithoutEndDelaysTheEndNoLonger)
{
    PTYRecorder pty;
    ASSERT_TRUE(pty.startShell("trap '' HUP; yes & echo shell done"));
    ASSERT_TRUE(pty.waitForEnd());
    EXPECT_NE(pty.output().find("shell done"), std::string::npos);
}

TEST(PTYProcess, AProgramInTheForegroundIsSeen)
{
    PTYRecorder pty;
    PTYCommand command{"/bin/sh", {"-i"}, {}, "/", 80, 24};
    command.environment.set("PATH", "/usr/bin:/bin");
    command.environment.set("PS1", "prompt> ");
    EXPECT_FALSE(pty.process().shellHasForegroundChild());
    ASSERT_TRUE(pty.process().start(command));
    ASSERT_TRUE(pty.waitForOutput("prompt> "));
    EXPECT_FALSE(pty.process().shellHasForegroundChild());
    pty.process().write("cat\n");
    EXPECT_TRUE(waitUntil([&] { return pty.process().shellHasForegroundChild(); }));
    pty.process().write("\x04");
    EXPECT_TRUE(waitUntil([&] { return !pty.process().shellHasForegroundChild(); }));
    pty.process().write("exit\n");
    ASSERT_TRUE(pty.waitForEnd());
    EXPECT_FALSE(pty.process().shellHasForegroundChild());
}

TEST(PTYProcess, TheWorkingDirectoryIsTheProgramsOwn)
{
    PTYRecorder pty;
    EXPECT_FALSE(pty.process().currentWorkingDirectory());
    ASSERT_TRUE(pty.startShell("cd /usr/share; echo there; read l; cd /var; echo moved; read l"));
    ASSERT_TRUE(pty.waitForOutput("there"));
    EXPECT_EQ(pty.process().currentWorkingDirectory(), "/usr/share");
    pty.process().write("\n");
    ASSERT_TRUE(pty.waitForOutput("moved"));
    EXPECT_EQ(pty.process().currentWorkingDirectory(), "/var");
    pty.process().write("\n");
    ASSERT_TRUE(pty.waitForEnd());
    EXPECT_FALSE(pty.process().currentWorkingDirectory());
}

}  // namespace
}  // namespace tavrel
