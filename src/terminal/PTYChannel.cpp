#include "terminal/PTYChannel.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <future>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <utility>

namespace tavrel {

void PTYChannel::setOnOutput(PTYProcess::OutputCallback callback)
{
    std::shared_ptr<const PTYProcess::OutputCallback> shared;
    if (callback)
        shared = std::make_shared<const PTYProcess::OutputCallback>(std::move(callback));
    {
        const std::lock_guard lock(mutex_);
        onOutput_.swap(shared);
    }
    waitForCallback();
}

void PTYChannel::setOnTermination(PTYProcess::TerminationCallback callback)
{
    {
        const std::lock_guard lock(mutex_);
        onTermination_.swap(callback);
    }
    waitForCallback();
}

void PTYChannel::waitForCallback()
{
    std::unique_lock lock(mutex_);
    didCallBack_.wait(lock, [this] {
        return callingThread_ == std::thread::id() || callingThread_ == std::this_thread::get_id();
    });
}

tl::expected<void, int> PTYChannel::start(const PTYCommand& command)
{
    {
        const std::lock_guard lock(mutex_);
        if (state_ == State::running)
            return {};
        if (state_ != State::notStarted)
            return tl::unexpected(EALREADY);
        state_ = State::starting;
    }
    auto launched = launch(command);
    if (!launched) {
        const std::lock_guard lock(mutex_);
        state_ = State::notStarted;
    }
    return launched;
}

tl::expected<void, int> PTYChannel::launch(const PTYCommand& command)
{
    auto pair = openPTY(command.columns, command.rows);
    if (!pair)
        return tl::unexpected(pair.error());
    wakeEvent_ = FileDescriptor(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    if (!wakeEvent_.isOpen())
        return tl::unexpected(errno);
    readBuffer_.resize(PTYProcess::maximumChunkBytes);
    // The thread comes before the child: a child without a thread could not be collected.
    std::promise<bool> begin;
    try {
        const SignalBlock block;
        std::thread([self = shared_from_this(), begins = begin.get_future()]() mutable {
            if (begins.get())
                self->runQueue();
        }).detach();
    } catch (const std::system_error& error) {
        return tl::unexpected(error.code().value());
    }
    const auto child = forkOntoPTY(command, pair->slaveName);
    if (child) {
        const std::lock_guard lock(mutex_);
        pty_ = std::move(*pair);
        childPID_ = uncollectedPID_ = *child;
        state_ = State::running;
    }
    begin.set_value(child.has_value());
    return child.map([](pid_t) {});
}

void PTYChannel::write(std::string_view bytes)
{
    if (bytes.empty())
        return;
    {
        const std::lock_guard lock(mutex_);
        if (state_ != State::running)
            return;
        constexpr std::size_t pieceBytes = 65'536;
        if (!pendingInput_.empty() && pendingInput_.back().size() + bytes.size() <= pieceBytes)
            pendingInput_.back() += bytes;
        else
            pendingInput_.emplace_back(bytes);
        unwrittenBytes_ += bytes.size();
    }
    wakeQueue();
}

std::size_t PTYChannel::unwrittenBytes() const
{
    const std::lock_guard lock(mutex_);
    return unwrittenBytes_;
}

void PTYChannel::didConsumeOutput(std::size_t count)
{
    {
        const std::lock_guard lock(mutex_);
        waitingBytes_ -= std::min(count, waitingBytes_);
        // Only once half of it is free, so that a full queue is not woken for every piece.
        if (!waitsForRoom_ || waitingBytes_ > PTYProcess::maximumWaitingBytes / 2)
            return;
        waitsForRoom_ = false;
    }
    wakeQueue();
}

void PTYChannel::setWindowSize(int columns, int rows)
{
    const std::lock_guard lock(mutex_);
    if (state_ == State::running)
        setPTYSize(pty_.master.number(), columns, rows);
}

void PTYChannel::terminate()
{
    const auto farewell = endRun(true);
    if (!farewell)
        return;
    wakeQueue();
    if (farewell->onTermination)
        farewell->onTermination();
}

bool PTYChannel::isRunning() const
{
    const std::lock_guard lock(mutex_);
    return state_ == State::running;
}

pid_t PTYChannel::childPID() const
{
    const std::lock_guard lock(mutex_);
    return childPID_;
}

bool PTYChannel::shellHasForegroundChild() const
{
    const std::lock_guard lock(mutex_);
    if (state_ != State::running)
        return false;
    const pid_t foreground = ::tcgetpgrp(pty_.master.number());
    return foreground >= 1 && foreground != childPID_;
}

std::optional<std::filesystem::path> PTYChannel::currentWorkingDirectory() const
{
    const std::lock_guard lock(mutex_);
    if (state_ != State::running)
        return std::nullopt;
    const std::string link = "/proc/" + std::to_string(childPID_) + "/cwd";
    constexpr std::size_t longestPath = 4096;
    std::array<char, longestPath> path{};
    const ssize_t length = ::readlink(link.c_str(), path.data(), path.size());
    if (length < 1)
        return std::nullopt;
    return std::filesystem::path(std::string(path.data(), static_cast<std::size_t>(length)));
}

std::optional<PTYChannel::Farewell> PTYChannel::endRun(bool hangUp)
{
    const std::lock_guard lock(mutex_);
    if (state_ != State::running)
        return std::nullopt;
    if (hangUp)
        ::kill(childPID_, SIGHUP);
    state_ = State::ended;
    if (::waitpid(childPID_, nullptr, WNOHANG) == childPID_)
        uncollectedPID_ = -1;
    childPID_ = -1;
    pendingInput_.clear();
    unwrittenBytes_ = 0;
    if (!hangUp && onTermination_)
        callingThread_ = std::this_thread::get_id();
    return Farewell{std::exchange(onTermination_, {}), std::exchange(onOutput_, {})};
}

void PTYChannel::wakeQueue() const
{
    if (wakeEvent_.isOpen())
        ::eventfd_write(wakeEvent_.number(), 1);
}

// The queue.

void PTYChannel::runQueue()
{
    ::pthread_setname_np(::pthread_self(), "TavrelCode.PTY");
    pid_t child = -1;
    {
        const std::lock_guard lock(mutex_);
        child = uncollectedPID_;
    }
    // Whoever called `terminate` in between may have collected the child.
    if (child >= 1) {
        const ChildExitEvent exitSource(child, exitMeans_);
        if (exitSource.descriptor() >= 0)
            moveBytes(exitSource);
    }
    const auto farewell = endRun(false);
    closePTY();
    if (farewell && farewell->onTermination) {
        farewell->onTermination();
        didCallBack();
    }
    collectChild();
}

void PTYChannel::moveBytes(const ChildExitEvent& exitSource)
{
    const int master = pty_.master.number();
    bool hasExited = false;
    std::size_t drainedChunks = 0;
    for (bool hasRoom = false; prepareTurn(hasRoom);) {
        if (hasExited && hasRoom) {
            // The last words. Programs left behind may go on writing; the shell's own words are
            // no more than what fits into a terminal, which is far less than this.
            constexpr std::size_t maximumChunks =
                PTYProcess::maximumWaitingBytes / PTYProcess::maximumChunkBytes;
            if (readOutput() != ReadOutcome::some || ++drainedChunks == maximumChunks)
                return;
            continue;
        }
        short events = 0;
        if (hasRoom)
            events |= POLLIN;
        if (!outgoing_.empty() && !hasExited)
            events |= POLLOUT;
        std::array<pollfd, 3> sources{{
            {wakeEvent_.number(), POLLIN, 0},
            {hasExited ? -1 : exitSource.descriptor(), POLLIN, 0},
            {events != 0 ? master : -1, events, 0},
        }};
        if (::poll(sources.data(), sources.size(), -1) < 0) {
            if (errno == EINTR)
                continue;
            return;
        }
        const auto& [wake, exit, terminal] = sources;
        if (wake.revents != 0) {
            eventfd_t ignored = 0;
            ::eventfd_read(wakeEvent_.number(), &ignored);
        }
        if (hasRoom && (terminal.revents & (POLLIN | POLLHUP | POLLERR)) != 0 &&
            readOutput() == ReadOutcome::failed)
            return;
        if ((terminal.revents & POLLOUT) != 0)
            writeInput();
        hasExited = hasExited || exit.revents != 0;
    }
}

bool PTYChannel::prepareTurn(bool& hasRoom)
{
    const std::lock_guard lock(mutex_);
    if (outgoing_.empty())
        outgoing_.swap(pendingInput_);
    hasRoom = waitingBytes_ + PTYProcess::maximumChunkBytes <= PTYProcess::maximumWaitingBytes;
    waitsForRoom_ = !hasRoom;
    return state_ == State::running;
}

PTYChannel::ReadOutcome PTYChannel::readOutput()
{
    // A terminal hands over some 4 KB at a time, so what waits takes several reads.
    std::size_t count = 0;
    bool hasFailed = false;
    while (count < readBuffer_.size()) {
        const ssize_t got =
            ::read(pty_.master.number(), readBuffer_.data() + count, readBuffer_.size() - count);
        if (got > 0) {
            count += static_cast<std::size_t>(got);
        } else if (got == 0 || errno != EINTR) {
            hasFailed = got == 0 || errno != EAGAIN;
            break;
        }
    }
    if (count > 0)
        deliver({readBuffer_.data(), count});
    if (hasFailed)
        return ReadOutcome::failed;
    return count > 0 ? ReadOutcome::some : ReadOutcome::nothing;
}

void PTYChannel::deliver(std::string_view bytes)
{
    std::shared_ptr<const PTYProcess::OutputCallback> onOutput;
    {
        const std::lock_guard lock(mutex_);
        onOutput = onOutput_;
        if (!onOutput)
            return;
        waitingBytes_ += bytes.size();
        callingThread_ = std::this_thread::get_id();
    }
    (*onOutput)(bytes);
    didCallBack();
}

void PTYChannel::didCallBack()
{
    {
        const std::lock_guard lock(mutex_);
        callingThread_ = {};
    }
    didCallBack_.notify_all();
}

void PTYChannel::writeInput()
{
    const std::string_view piece = std::string_view(outgoing_.front()).substr(outgoingOffset_);
    const ssize_t sent = ::write(pty_.master.number(), piece.data(), piece.size());
    if (sent < 1) {
        if (sent == 0 || (errno != EAGAIN && errno != EINTR))
            dropInput();
        return;
    }
    const auto count = static_cast<std::size_t>(sent);
    outgoingOffset_ += count;
    if (count == piece.size()) {
        outgoing_.pop_front();
        outgoingOffset_ = 0;
    }
    const std::lock_guard lock(mutex_);
    unwrittenBytes_ -= std::min(count, unwrittenBytes_);
}

void PTYChannel::dropInput()
{
    std::size_t left = 0;
    for (const std::string& piece : outgoing_)
        left += piece.size();
    left -= outgoingOffset_;
    outgoing_.clear();
    outgoingOffset_ = 0;
    const std::lock_guard lock(mutex_);
    unwrittenBytes_ -= std::min(left, unwrittenBytes_);
}

void PTYChannel::closePTY()
{
    PTYPair closing;
    const std::lock_guard lock(mutex_);
    std::swap(closing, pty_);
}

void PTYChannel::collectChild()
{
    pid_t child = -1;
    {
        const std::lock_guard lock(mutex_);
        child = std::exchange(uncollectedPID_, -1);
    }
    while (child >= 1 && ::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
}

}  // namespace tavrel
