#include "app/FileLoader.h"

#include "platform/FileSystem.h"

namespace tavrel {

FileLoader::FileLoader(FileSystem& fileSystem, std::vector<std::filesystem::path> paths)
    : fileSystem_(fileSystem), paths_(std::move(paths)), results_(paths_.size())
{
    if (!paths_.empty())
        thread_ = std::thread([this] { run(); });
}

FileLoader::~FileLoader()
{
    {
        const std::lock_guard lock(mutex_);
        isCancelled_ = true;
    }
    if (thread_.joinable())
        thread_.join();
}

void FileLoader::run()
{
    for (const std::filesystem::path& path : paths_) {
        {
            const std::lock_guard lock(mutex_);
            if (isCancelled_)
                return;
        }
        LoadResult result = readDocument(fileSystem_, path);
        std::function<void()> notify;
        {
            const std::lock_guard lock(mutex_);
            results_[readCount_++] = std::move(result);
            notify = notify_;
        }
        if (notify)
            notify();
    }
}

std::optional<FileLoader::Loaded> FileLoader::takeNext()
{
    const std::lock_guard lock(mutex_);
    if (takenCount_ == readCount_)
        return std::nullopt;
    const std::size_t index = takenCount_++;
    Loaded loaded{paths_[index], std::move(*results_[index])};
    results_[index].reset();
    return loaded;
}

void FileLoader::setNotify(std::function<void()> notify)
{
    std::function<void()> now;
    {
        const std::lock_guard lock(mutex_);
        notify_ = std::move(notify);
        if (takenCount_ < readCount_)
            now = notify_;
    }
    if (now)
        now();
}

}  // namespace tavrel
