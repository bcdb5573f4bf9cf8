#include "app/OpenFileWatch.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace tavrel {

OpenFileWatch::OpenFileWatch(MainQueue& mainQueue, const MakeFolderWatch& makeFolderWatch)
    : mainQueue_(mainQueue), folderWatch_(makeFolderWatch(*this))
{
}

void OpenFileWatch::setFiles(const std::vector<std::filesystem::path>& files)
{
    if (files == files_)
        return;
    files_ = files;
    watchFolders();
}

void OpenFileWatch::watchFolders()
{
    std::vector<std::filesystem::path> folders;
    for (const std::filesystem::path& file : files_) {
        folders.push_back(file.parent_path());
        std::error_code error;
        const std::filesystem::path target = std::filesystem::canonical(file, error);
        if (!error)
            folders.push_back(target.parent_path());
    }
    std::sort(folders.begin(), folders.end());
    folders.erase(std::unique(folders.begin(), folders.end()), folders.end());
    if (folders == folders_)
        return;
    folders_ = std::move(folders);
    folderWatch_->setFolders(folders_);
}

void OpenFileWatch::folderDidChange(const std::filesystem::path&)
{
    // A folder that was made anew at its path is taken up again.
    folderWatch_->setFolders(folders_);
    lookLater();
}

void OpenFileWatch::lookLater()
{
    if (pending_.isPending())
        return;
    pending_ = mainQueue_.postAfter(settleSeconds, [this] {
        watchFolders();  // A link may lead elsewhere now.
        if (didSettle)
            didSettle();
    });
}

void OpenFileWatch::folderWatchDidRunOut()
{
    if (didRunOut)
        didRunOut();
}

}  // namespace tavrel
