// How fast output gets from a program through a pseudo terminal: into a reader that drops it, which
// is what the system can carry, and through the panel into the emulator. The program measures by
// itself, from its first byte to the answer to a question behind the last. For each kind of output
// the two are benchmarks of one run: "<stream>/drop" and "<stream>/panel".
//
//   PTYBench [--folder=<streams>] [flags of Google Benchmark]

#include "TerminalStreams.h"
#include "config/BuiltInResources.h"
#include "config/PreferencesStore.h"
#include "platform/MainQueue.h"
#include "platform/PosixFileSystem.h"
#include "terminal/PTYLaunch.h"
#include "terminal/TerminalEmulator.h"
#include "terminal/TerminalViewController.h"

#include <benchmark/benchmark.h>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <deque>
#include <fcntl.h>
#include <fstream>
#include <mutex>
#include <poll.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

namespace tavrel {
namespace {

using Time = std::chrono::steady_clock;

// The program in the terminal.

constexpr std::string_view question = "\x1B[r\x1B[6n";

/// Writes the file to the terminal as fast as that takes it, waits for the answer, and writes the
/// seconds to `result`.
int writeStream(const char* stream, const char* result)
{
    std::ifstream file(stream, std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(file), {}};
    bytes += question;
    termios raw{};
    ::tcgetattr(STDIN_FILENO, &raw);
    ::cfmakeraw(&raw);
    ::tcsetattr(STDIN_FILENO, TCSANOW, &raw);
    ::fcntl(STDIN_FILENO, F_SETFL, O_RDWR | O_NONBLOCK);
    const auto start = Time::now();
    bool isAnswered = false;
    // An answer to a question of the stream itself comes before all of it has been written.
    for (std::size_t sent = 0; sent < bytes.size() || !isAnswered;) {
        constexpr std::size_t most = 65'536;
        pollfd terminal{STDIN_FILENO, POLLIN, 0};
        if (sent < bytes.size())
            terminal.events |= POLLOUT;
        ::poll(&terminal, 1, -1);
        if ((terminal.revents & POLLIN) != 0) {
            char answer[256];
            const ssize_t count = ::read(STDIN_FILENO, answer, sizeof answer);
            isAnswered = sent == bytes.size() && count > 0 && answer[count - 1] == 'R';
        }
        if ((terminal.revents & POLLOUT) != 0) {
            const ssize_t count =
                ::write(STDIN_FILENO, bytes.data() + sent, std::min(most, bytes.size() - sent));
            sent += count > 0 ? static_cast<std::size_t>(count) : 0;
        }
    }
    const std::chrono::duration<double> taken = Time::now() - start;
    std::ofstream(result) << taken.count() << '\n';
    return 0;
}

// The two readers.

struct Files {
    std::filesystem::path folder;
    std::string program;

    std::string stream() const { return (folder / "stream").string(); }
    std::string result() const { return (folder / "result").string(); }
    double seconds() const
    {
        double value = 0;
        std::ifstream(result()) >> value;
        return value;
    }
};

double dropEverything(const Files& files, std::size_t size)
{
    const auto pair = openPTY(80, 24);
    const auto child =
        forkOntoPTY({files.program, {"--write", files.stream(), files.result()}, {}, "/", 80, 24},
                    pair->slaveName);
    std::vector<char> buffer(65'536);
    const int master = pair->master.number();
    for (std::size_t got = 0; got < size + question.size();) {
        pollfd terminal{master, POLLIN, 0};
        ::poll(&terminal, 1, -1);
        const ssize_t count = ::read(master, buffer.data(), buffer.size());
        got += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    constexpr std::string_view answer = "\x1B[1;1R";
    if (::write(master, answer.data(), answer.size()) < 0)
        return 0;
    ::waitpid(*child, nullptr, 0);
    return files.seconds();
}

/// The event loop of a program that has nothing else to do.
class LoopQueue final : public MainQueue {
public:
    void post(Work work) override
    {
        {
            const std::lock_guard lock(mutex_);
            posted_.push_back(std::move(work));
        }
        arrived_.notify_one();
    }
    ScheduledWork postAfter(double, Work work) override
    {
        post(std::move(work));
        return {};
    }
    void runOne()
    {
        std::unique_lock lock(mutex_);
        arrived_.wait_for(lock, std::chrono::milliseconds(1), [this] { return !posted_.empty(); });
        if (posted_.empty())
            return;
        const Work work = std::move(posted_.front());
        posted_.pop_front();
        lock.unlock();
        work();
    }

private:
    std::mutex mutex_;
    std::condition_variable arrived_;
    std::deque<Work> posted_;
};

class NoView final : public TerminalPanelView {
public:
    void panelDidShow(TerminalEmulator&) override {}
    void clearSelection() override {}
    void panelDidChangeRows() override {}
    bool isFollowingOutput() const override { return true; }
    void followOutput() override {}
    std::optional<TerminalSize> fittingSize() const override { return TerminalSize{80, 24}; }
    bool isInWindow() const override { return true; }
    void takeFocus() override {}
    void panelDidChangeTabs() override {}
    void panelDidChangePreferences(const Preferences&) override {}
};

double showInPanel(const Files& files)
{
    const auto shell = files.folder / "shell";
    std::ofstream(shell) << "#!/bin/sh\nexec " << files.program << " --write " << files.stream()
                         << ' ' << files.result() << '\n';
    std::filesystem::permissions(shell, std::filesystem::perms::owner_all);
    std::filesystem::remove(files.result());
    LoopQueue queue;
    PosixFileSystem fileSystem;
    BuiltInResources resources;
    PreferencesStore preferences(fileSystem, resources, files.folder);
    NoView view;
    TerminalViewController panel({queue, preferences, {}, files.folder, shell.string()});
    panel.setView(&view);
    panel.startActiveSession();
    double seconds = 0;
    while (seconds == 0) {
        for (int turn = 0; turn < 1000 && seconds == 0; ++turn)
            queue.runOne();
        seconds = files.seconds();
    }
    panel.setView(nullptr);
    return seconds;
}

void registerStream(const bench::TerminalStream& stream, const Files& files)
{
    const auto run = [stream, files](benchmark::State& state, bool showsInPanel) {
        std::ofstream(files.stream(), std::ios::binary) << stream.bytes;
        for ([[maybe_unused]] auto turn : state)
            state.SetIterationTime(showsInPanel ? showInPanel(files)
                                                : dropEverything(files, stream.bytes.size()));
        state.SetBytesProcessed(state.iterations() *
                                static_cast<std::int64_t>(stream.bytes.size()));
    };
    for (const bool showsInPanel : {false, true})
        benchmark::RegisterBenchmark(
            (stream.name + (showsInPanel ? "/panel" : "/drop")).c_str(),
            [run, showsInPanel](benchmark::State& state) { run(state, showsInPanel); })
            ->UseManualTime()
            ->Iterations(3)
            ->Unit(benchmark::kMillisecond);
}

int benchmarkMain(int argc, char** argv)
{
    std::string name = (std::filesystem::temp_directory_path() / "pty-bench-XXXXXX").string();
    if (!::mkdtemp(name.data()))
        return 1;
    const Files files{name, std::filesystem::read_symlink("/proc/self/exe").string()};
    constexpr std::string_view option = "--folder=";
    constexpr std::size_t size = std::size_t{20} << 20;
    auto streams = bench::generatedStreams(size);
    if (argc > 1 && std::string_view(argv[1]).starts_with(option)) {
        streams = bench::streamsOfFolder(argv[1] + option.size());
        --argc;
        argv[1] = argv[0];
        ++argv;
    }
    for (const bench::TerminalStream& stream : streams)
        registerStream(stream, files);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    std::filesystem::remove_all(files.folder);
    return 0;
}

}  // namespace
}  // namespace tavrel

int main(int argc, char** argv)
{
    if (argc == 4 && std::string_view(argv[1]) == "--write")
        return tavrel::writeStream(argv[2], argv[3]);
    return tavrel::benchmarkMain(argc, argv);
}
