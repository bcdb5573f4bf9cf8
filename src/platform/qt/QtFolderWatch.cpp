#include "platform/qt/QtFolderWatch.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <set>
#include <sys/inotify.h>
#include <unistd.h>
#include <utility>

namespace tavrel {

namespace {

constexpr std::uint32_t watchedEvents = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO |
                                        IN_CLOSE_WRITE | IN_DELETE_SELF | IN_MOVE_SELF;

bool isRunOut(int error)
{
    return error == ENOSPC || error == ENOMEM || error == EMFILE || error == ENFILE;
}

}  // namespace

/// What one look into the kernel's queue brought, by the numbers of the watches.
struct QtFolderWatch::News {
    std::set<int> changed;
    std::set<int> gone;  // The folder itself was removed or renamed.
    bool isOverflow = false;
};

QtFolderWatch::QtFolderWatch(FolderWatchDelegate& delegate)
    : delegate_(delegate), descriptor_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
    if (descriptor_ < 0)
        return;
    notifier_ = std::make_unique<QSocketNotifier>(descriptor_, QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                     [this] { readEvents(); });
}

QtFolderWatch::~QtFolderWatch()
{
    // The object may go while it delivers news, so the notifier must outlive its own signal.
    if (notifier_) {
        notifier_->setEnabled(false);
        notifier_.release()->deleteLater();
    }
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

void QtFolderWatch::setFolders(const std::vector<std::filesystem::path>& folders)
{
    const std::set<std::filesystem::path> wanted(folders.begin(), folders.end());
    std::vector<std::filesystem::path> unwanted;
    for (const auto& [folder, number] : watches_)
        if (!wanted.contains(folder))
            unwanted.push_back(folder);
    for (const std::filesystem::path& folder : unwanted)
        remove(folder);
    for (const std::filesystem::path& folder : folders) {
        if (!watches_.contains(folder) && !add(folder)) {
            reportRunOut();
            return;
        }
    }
}

/// Answers false when the system has no watches left.
bool QtFolderWatch::add(const std::filesystem::path& folder)
{
    if (descriptor_ < 0)
        return false;
    const int number = inotify_add_watch(descriptor_, folder.c_str(), watchedEvents | IN_ONLYDIR);
    if (number < 0)
        return !isRunOut(errno);
    watches_.emplace(folder, number);
    return true;
}

void QtFolderWatch::remove(const std::filesystem::path& folder)
{
    const auto watch = watches_.find(folder);
    const int number = watch->second;
    watches_.erase(watch);
    const bool isShared =
        std::ranges::any_of(watches_, [&](const auto& other) { return other.second == number; });
    if (!isShared)
        inotify_rm_watch(descriptor_, number);
}

void QtFolderWatch::readEvents()
{
    const News news = takeNews();
    std::vector<std::filesystem::path> changed;
    std::vector<std::filesystem::path> gone;
    for (const auto& [folder, number] : watches_) {
        if (news.isOverflow || news.changed.contains(number) || news.gone.contains(number))
            changed.push_back(folder);
        if (news.gone.contains(number))
            gone.push_back(folder);
    }
    for (const std::filesystem::path& folder : gone)
        remove(folder);
    const std::weak_ptr<bool> life = life_;
    for (const std::filesystem::path& folder : changed) {
        if (life.expired())
            return;
        delegate_.folderDidChange(folder);
    }
}

QtFolderWatch::News QtFolderWatch::takeNews()
{
    // Enough for a burst; what is left over wakes the event loop again.
    constexpr std::size_t bufferBytes = 16 * 1024;
    std::array<char, bufferBytes> buffer;
    News news;
    const ssize_t length = ::read(descriptor_, buffer.data(), buffer.size());
    for (ssize_t start = 0; start < length;) {
        inotify_event event;
        std::memcpy(&event, buffer.data() + start, sizeof event);
        start += static_cast<ssize_t>(sizeof event + event.len);
        news.isOverflow = news.isOverflow || (event.mask & IN_Q_OVERFLOW) != 0;
        if ((event.mask & (IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT)) != 0)
            news.gone.insert(event.wd);
        else if ((event.mask & IN_IGNORED) == 0)
            news.changed.insert(event.wd);
    }
    return news;
}

void QtFolderWatch::reportRunOut()
{
    if (std::exchange(didReportRunOut_, true))
        return;
    delegate_.folderWatchDidRunOut();
}

}  // namespace tavrel
