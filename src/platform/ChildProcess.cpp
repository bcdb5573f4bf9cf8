#include "platform/ChildProcess.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <fcntl.h>
#include <optional>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace tavrel {
namespace {

using Clock = std::chrono::steady_clock;
using Reason = ChildProcessError::Reason;

/// An open descriptor, closed by its destructor.
class Descriptor {
public:
    explicit Descriptor(int number = -1) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(number_, other.number_);
        return *this;
    }
    ~Descriptor() { reset(); }

    int number() const { return number_; }
    bool isOpen() const { return number_ >= 0; }
    void reset()
    {
        if (number_ >= 0)
            ::close(std::exchange(number_, -1));
    }

private:
    int number_;
};

struct Pipe {
    Descriptor readEnd;
    Descriptor writeEnd;
};

/// Both ends are closed on exec and lie above the three standard descriptors, so that setting
/// those up in the child cannot close them first.
std::optional<Pipe> makePipe()
{
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        return std::nullopt;
    Pipe pipe{Descriptor(ends[0]), Descriptor(ends[1])};
    for (Descriptor* end : {&pipe.readEnd, &pipe.writeEnd}) {
        constexpr int firstFree = 3;
        if (end->number() < firstFree)
            *end = Descriptor(::fcntl(end->number(), F_DUPFD_CLOEXEC, firstFree));
        if (!end->isOpen())
            return std::nullopt;
    }
    ::fcntl(pipe.readEnd.number(), F_SETFL, O_NONBLOCK);
    return pipe;
}

class SpawnActions {
public:
    SpawnActions() { ::posix_spawn_file_actions_init(&actions_); }
    SpawnActions(const SpawnActions&) = delete;
    SpawnActions& operator=(const SpawnActions&) = delete;
    ~SpawnActions() { ::posix_spawn_file_actions_destroy(&actions_); }

    bool prepare(const std::string& folder, int output)
    {
        constexpr int firstToClose = 3;
        return ::posix_spawn_file_actions_addopen(&actions_, STDIN_FILENO, "/dev/null", O_RDONLY,
                                                  0) == 0 &&
               ::posix_spawn_file_actions_adddup2(&actions_, output, STDOUT_FILENO) == 0 &&
               ::posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, "/dev/null", O_WRONLY,
                                                  0) == 0 &&
               ::posix_spawn_file_actions_addclosefrom_np(&actions_, firstToClose) == 0 &&
               ::posix_spawn_file_actions_addchdir_np(&actions_, folder.c_str()) == 0;
    }
    const posix_spawn_file_actions_t* get() const { return &actions_; }

private:
    posix_spawn_file_actions_t actions_{};
};

class SpawnAttributes {
public:
    SpawnAttributes() { ::posix_spawnattr_init(&attributes_); }
    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;
    ~SpawnAttributes() { ::posix_spawnattr_destroy(&attributes_); }

    bool prepare()
    {
        sigset_t none;
        sigset_t all;
        ::sigemptyset(&none);
        ::sigfillset(&all);
        constexpr int flags =
            POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;
        return ::posix_spawnattr_setpgroup(&attributes_, 0) == 0 &&
               ::posix_spawnattr_setsigmask(&attributes_, &none) == 0 &&
               ::posix_spawnattr_setsigdefault(&attributes_, &all) == 0 &&
               ::posix_spawnattr_setflags(&attributes_, flags) == 0;
    }
    const posix_spawnattr_t* get() const { return &attributes_; }

private:
    posix_spawnattr_t attributes_{};
};

bool hasNul(const std::string& text)
{
    return text.find('\0') != std::string::npos;
}

/// The vector of C strings that exec takes. Borrows the strings.
std::vector<char*> pointers(const std::vector<std::string>& strings)
{
    std::vector<char*> result;
    result.reserve(strings.size() + 1);
    for (const std::string& string : strings)
        result.push_back(const_cast<char*>(string.c_str()));
    result.push_back(nullptr);
    return result;
}

tl::expected<pid_t, ChildProcessError> launch(const ChildProcess& child, int output)
{
    const auto failure = [](int code) {
        return tl::unexpected(ChildProcessError{Reason::cannotLaunch, code});
    };
    std::vector<std::string> arguments{child.program};
    arguments.insert(arguments.end(), child.arguments.begin(), child.arguments.end());
    if (child.program.empty() || child.program.front() != '/' || hasNul(child.workingFolder) ||
        std::any_of(arguments.begin(), arguments.end(), hasNul))
        return failure(EINVAL);
    SpawnActions actions;
    SpawnAttributes attributes;
    if (!actions.prepare(child.workingFolder, output) || !attributes.prepare())
        return failure(ENOMEM);
    pid_t process = 0;
    const int code =
        ::posix_spawn(&process, child.program.c_str(), actions.get(), attributes.get(),
                      pointers(arguments).data(), pointers(child.environment.entries()).data());
    if (code != 0)
        return failure(code);
    return process;
}

/// A child that has been started, until it has been waited for. The destructor kills the group of
/// one that nobody waited for, so no child outlives its call.
class RunningChild {
public:
    RunningChild(pid_t process, Clock::time_point deadline)
        : process_(process), deadline_(deadline),
          handle_(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)))
    {
    }
    RunningChild(const RunningChild&) = delete;
    RunningChild& operator=(const RunningChild&) = delete;
    ~RunningChild()
    {
        if (process_ == 0)
            return;
        ::kill(-process_, SIGKILL);
        while (::waitpid(process_, nullptr, 0) < 0 && errno == EINTR) {
        }
    }

    tl::expected<std::string, ChildProcessError> readAll(int descriptor, std::size_t maximumBytes)
    {
        std::string output;
        std::array<char, 65536> buffer{};
        for (;;) {
            const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
            if (count == 0)
                return output;
            if (count > 0) {
                if (output.size() + static_cast<std::size_t>(count) > maximumBytes)
                    return tl::unexpected(ChildProcessError{Reason::outputTooLarge});
                output.append(buffer.data(), static_cast<std::size_t>(count));
            }
            if (count < 0 && errno != EAGAIN && errno != EINTR)
                return tl::unexpected(ChildProcessError{Reason::lost, errno});
            // A child that never stops writing must meet the deadline as well.
            if (!waitFor(descriptor))
                return tl::unexpected(ChildProcessError{Reason::timeLimit});
        }
    }

    tl::expected<int, ChildProcessError> waitForExit()
    {
        for (;;) {
            int status = 0;
            const pid_t ended = ::waitpid(process_, &status, WNOHANG);
            if (ended == process_) {
                process_ = 0;
                constexpr int signalBase = 128;
                return WIFEXITED(status) ? WEXITSTATUS(status) : signalBase + WTERMSIG(status);
            }
            if (ended < 0 && errno != EINTR) {
                process_ = 0;
                return tl::unexpected(ChildProcessError{Reason::lost, errno});
            }
            if (!waitFor(handle_.number()))
                return tl::unexpected(ChildProcessError{Reason::timeLimit});
        }
    }

private:
    /// Waits until `descriptor` is ready, or a short while where there is none. False once the
    /// deadline has passed.
    bool waitFor(int descriptor) const
    {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline_ - Clock::now()).count();
        if (left <= 0)
            return false;
        constexpr std::int64_t withoutHandle = 1;
        constexpr std::int64_t longest = 1000;
        pollfd waiting{descriptor, POLLIN, 0};
        ::poll(&waiting, 1,
               static_cast<int>(std::min(left, descriptor < 0 ? withoutHandle : longest)));
        return true;
    }

    pid_t process_;  // 0 once it has been waited for.
    Clock::time_point deadline_;
    Descriptor handle_;  // Readable once the child has ended; older kernels have none.
};

}  // namespace

tl::expected<ChildProcessResult, ChildProcessError> run(const ChildProcess& child)
{
    const Clock::time_point deadline = Clock::now() + child.timeLimit;
    auto pipe = makePipe();
    if (!pipe)
        return tl::unexpected(ChildProcessError{Reason::cannotLaunch, errno});
    const auto process = launch(child, pipe->writeEnd.number());
    if (!process)
        return tl::unexpected(process.error());
    RunningChild running(*process, deadline);
    pipe->writeEnd.reset();
    auto output = running.readAll(pipe->readEnd.number(), child.maximumOutputBytes);
    if (!output)
        return tl::unexpected(output.error());
    const auto status = running.waitForExit();
    if (!status)
        return tl::unexpected(status.error());
    return ChildProcessResult{*status, std::move(*output)};
}

}  // namespace tavrel
