#include "terminal/PTYProcess.h"

#include "terminal/PTYChannel.h"

#include <utility>

namespace tavrel {

PTYProcess::PTYProcess(ChildExitEvent::Means exitMeans)
    : channel_(std::make_shared<PTYChannel>(exitMeans))
{
}

PTYProcess::~PTYProcess()
{
    channel_->terminate();
    channel_->waitForCallback();
}

void PTYProcess::setOnOutput(OutputCallback callback)
{
    channel_->setOnOutput(std::move(callback));
}

void PTYProcess::setOnTermination(TerminationCallback callback)
{
    channel_->setOnTermination(std::move(callback));
}

tl::expected<void, FileError> PTYProcess::start(const PTYCommand& command)
{
    return channel_->start(command).map_error(fileError);
}

void PTYProcess::write(std::string_view bytes)
{
    channel_->write(bytes);
}

std::size_t PTYProcess::unwrittenBytes() const
{
    return channel_->unwrittenBytes();
}

void PTYProcess::didConsumeOutput(std::size_t count)
{
    channel_->didConsumeOutput(count);
}

void PTYProcess::setWindowSize(int columns, int rows)
{
    channel_->setWindowSize(columns, rows);
}

void PTYProcess::terminate()
{
    channel_->terminate();
}

bool PTYProcess::isRunning() const
{
    return channel_->isRunning();
}

pid_t PTYProcess::childPID() const
{
    return channel_->childPID();
}

bool PTYProcess::shellHasForegroundChild() const
{
    return channel_->shellHasForegroundChild();
}

std::optional<std::filesystem::path> PTYProcess::currentWorkingDirectory() const
{
    return channel_->currentWorkingDirectory();
}

}  // namespace tavrel
