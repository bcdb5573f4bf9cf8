#include "terminal/PTYLaunch.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <limits>
#include <linux/close_range.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>

namespace tavrel {
namespace {

unsigned short limitedSize(int value)
{
    return static_cast<unsigned short>(
        std::clamp<int>(value, 1, std::numeric_limits<unsigned short>::max()));
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

/// What the parent ignores or blocks would stay ignored or blocked in the shell and in all that it
/// starts.
void resetSignals()
{
    struct sigaction standard {};
    standard.sa_handler = SIG_DFL;
    for (int signal = 1; signal < NSIG; ++signal)
        ::sigaction(signal, &standard, nullptr);
    sigset_t none;
    ::sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

/// The child's part. Another thread of the parent may have held any lock at the fork, so nothing
/// here may allocate or lock: system calls only.
[[noreturn]] void runInChild(const char* executable, const char* slaveName, const char* folder,
                             char* const* arguments, char* const* environment)
{
    ::setsid();
    resetSignals();
    const int slave = ::open(slaveName, O_RDWR);
    if (slave >= 0) {
        ::ioctl(slave, TIOCSCTTY, 0);
        for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            ::dup2(slave, standard);
        if (slave > STDERR_FILENO)
            ::close(slave);
        // Libraries of the parent may have opened files without close-on-exec.
        ::syscall(SYS_close_range, STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
        if (::chdir(folder) != 0) {
            // The program starts where the parent stands.
        }
        ::execve(executable, arguments, environment);
    }
    constexpr int cannotRun = 127;
    ::_exit(cannotRun);
}

}  // namespace

tl::expected<PTYPair, int> openPTY(int columns, int rows)
{
    PTYPair pair;
    pair.master = FileDescriptor(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK));
    if (!pair.master.isOpen())
        return tl::unexpected(errno);
    const int master = pair.master.number();
    if (::grantpt(master) != 0 || ::unlockpt(master) != 0)
        return tl::unexpected(errno);
    constexpr std::size_t longestName = 128;
    std::array<char, longestName> name{};
    if (const int code = ::ptsname_r(master, name.data(), name.size()); code != 0)
        return tl::unexpected(code);
    pair.slaveName = name.data();
    pair.slave = FileDescriptor(::open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC));
    setPTYSize(master, columns, rows);
    return pair;
}

void setPTYSize(int master, int columns, int rows)
{
    winsize size{};
    size.ws_col = limitedSize(columns);
    size.ws_row = limitedSize(rows);
    ::ioctl(master, TIOCSWINSZ, &size);
}

tl::expected<pid_t, int> forkOntoPTY(const PTYCommand& command, const std::string& slaveName)
{
    std::vector<std::string> arguments{command.executable};
    arguments.insert(arguments.end(), command.arguments.begin(), command.arguments.end());
    const std::vector<char*> argumentVector = pointers(arguments);
    const std::vector<char*> environmentVector = pointers(command.environment.entries());
    // A handler of the parent must not run in the child.
    const SignalBlock block;
    const pid_t process = ::fork();
    if (process == 0)
        runInChild(command.executable.c_str(), slaveName.c_str(), command.currentDirectory.c_str(),
                   argumentVector.data(), environmentVector.data());
    if (process < 0)
        return tl::unexpected(errno != 0 ? errno : EIO);
    return process;
}

SignalBlock::SignalBlock()
{
    sigset_t all;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &before_);
}

SignalBlock::~SignalBlock()
{
    const int code = errno;
    ::pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    errno = code;
}

}  // namespace tavrel
