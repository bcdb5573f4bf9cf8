#include "terminal/ChildExitEvent.h"

#include <cerrno>
#include <cstdint>
#include <sys/eventfd.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>

namespace tavrel {

ChildExitEvent::ChildExitEvent(pid_t child, Means means)
{
    if (means == Means::processDescriptor) {
        // Such a descriptor is closed on exec by itself.
        FileDescriptor handle(static_cast<int>(::syscall(SYS_pidfd_open, child, 0)));
        if (handle.isOpen()) {
            descriptor_ = std::make_shared<FileDescriptor>(std::move(handle));
            return;
        }
    }
    startWaitingThread(child);
}

void ChildExitEvent::startWaitingThread(pid_t child)
{
    FileDescriptor event(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    if (!event.isOpen())
        return;
    auto shared = std::make_shared<FileDescriptor>(std::move(event));
    try {
        std::thread([shared, child] {
            siginfo_t info{};
            // The owner collects the child, and may do so first: then the wait fails.
            while (::waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOWAIT) != 0 &&
                   errno == EINTR) {
            }
            ::eventfd_write(shared->number(), 1);
        }).detach();
        descriptor_ = std::move(shared);
    } catch (const std::system_error&) {
        // No thread to be had.
    }
}

}  // namespace tavrel
