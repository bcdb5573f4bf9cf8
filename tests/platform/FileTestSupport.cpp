#include "FileTestSupport.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tavrel::test {

TestFolder::TestFolder()
{
    std::string name = (std::filesystem::temp_directory_path() / "tavrel-test-XXXXXX").string();
    if (!mkdtemp(name.data()))
        std::abort();
    path_ = name;
    chmod(name.c_str(), 0755);
}

TestFolder::~TestFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path TestFolder::write(std::string_view name, std::string_view bytes) const
{
    const std::filesystem::path path = path_ / name;
    std::ofstream(path, std::ios::binary) << bytes;
    return path;
}

std::vector<std::string> TestFolder::names() const
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path_))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

std::string contents(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void moveDate(const std::filesystem::path& path, std::int64_t nanoseconds)
{
    struct stat status;
    if (stat(path.c_str(), &status) != 0)
        std::abort();
    const std::int64_t present = status.st_mtim.tv_sec * 1'000'000'000 + status.st_mtim.tv_nsec;
    const std::int64_t moved = present + nanoseconds;
    const timespec time{moved / 1'000'000'000, moved % 1'000'000'000};
    const timespec times[2] = {time, time};
    if (utimensat(AT_FDCWD, path.c_str(), times, 0) != 0)
        std::abort();
}

unsigned modeOf(const std::filesystem::path& path)
{
    struct stat status;
    return lstat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
}

bool asNobody(const std::function<bool()>& body)
{
    constexpr unsigned nobody = 65534;
    const pid_t child = fork();
    if (child == 0) {
        const bool isRoot = geteuid() == 0;
        if (isRoot &&
            (setresgid(nobody, nobody, nobody) != 0 || setresuid(nobody, nobody, nobody) != 0))
            _exit(2);
        _exit(body() ? 0 : 1);
    }
    int status = 0;
    return child > 0 && waitpid(child, &status, 0) == child && status == 0;
}

int FailingFileSystem::failureOf(std::string_view name)
{
    ++callCount_;
    if (!failure || (!failure->only.empty() && failure->only != name))
        return 0;
    const std::size_t call = matchingCalls_++;
    if (call != failure->call && !(failure->isLasting && call > failure->call))
        return 0;
    failed_ = name;
    return failure->code;
}

bool FailingFileSystem::interrupts()
{
    wasInterrupted_ = isInterruptedOften && !wasInterrupted_;
    return wasInterrupted_;
}

template<typename Call>
auto FailingFileSystem::attempt(std::string_view name, Call call) -> decltype(call())
{
    if (const int code = failureOf(name))
        return tl::unexpected(code);
    return call();
}

FileSystem::Result<int> FailingFileSystem::open(const Path& path, int flags, unsigned mode)
{
    if (interrupts())
        return tl::unexpected(EINTR);
    auto result = attempt("open", [&] { return machine_.open(path, flags, mode); });
    openDescriptors_ += result ? 1 : 0;
    return result;
}

FileSystem::Result<void> FailingFileSystem::close(int descriptor)
{
    // As on Linux, the descriptor is given back in any case.
    const auto result = machine_.close(descriptor);
    --openDescriptors_;
    if (interrupts())
        return tl::unexpected(EINTR);
    return attempt("close", [&] { return result; });
}

FileSystem::Result<std::size_t> FailingFileSystem::read(int descriptor, std::span<char> buffer)
{
    if (interrupts())
        return tl::unexpected(EINTR);
    if (beforeRead)
        beforeRead();
    const std::size_t most = std::min(buffer.size(), mostBytesAtOnce.value_or(buffer.size()));
    return attempt("read", [&] { return machine_.read(descriptor, buffer.first(most)); });
}

FileSystem::Result<std::size_t> FailingFileSystem::write(int descriptor, std::string_view bytes)
{
    if (interrupts())
        return tl::unexpected(EINTR);
    const std::size_t most = mostBytesAtOnce.value_or(bytes.size());
    return attempt("write", [&] { return machine_.write(descriptor, bytes.substr(0, most)); });
}

FileSystem::Result<void> FailingFileSystem::seek(int descriptor, std::uint64_t offset)
{
    return attempt("seek", [&] { return machine_.seek(descriptor, offset); });
}

FileSystem::Result<void> FailingFileSystem::truncate(int descriptor, std::uint64_t size)
{
    if (interrupts())
        return tl::unexpected(EINTR);
    return attempt("truncate", [&] { return machine_.truncate(descriptor, size); });
}

FileSystem::Result<void> FailingFileSystem::allocate(int descriptor, std::uint64_t size)
{
    if (interrupts())
        return tl::unexpected(EINTR);
    return attempt("allocate", [&] { return machine_.allocate(descriptor, size); });
}

FileSystem::Result<void> FailingFileSystem::sync(int descriptor)
{
    if (interrupts())
        return tl::unexpected(EINTR);
    return attempt("sync", [&] { return machine_.sync(descriptor); });
}

FileSystem::Result<FileStatus> FailingFileSystem::status(int descriptor)
{
    return attempt("status", [&] { return machine_.status(descriptor); });
}

FileSystem::Result<FileStatus> FailingFileSystem::status(const Path& path)
{
    return attempt("path status", [&] { return machine_.status(path); });
}

FileSystem::Result<FileStatus> FailingFileSystem::linkStatus(const Path& path)
{
    return attempt("linkStatus", [&] { return machine_.linkStatus(path); });
}

FileSystem::Result<FileSystem::Path> FailingFileSystem::readLink(const Path& path)
{
    return attempt("readLink", [&] { return machine_.readLink(path); });
}

FileSystem::Result<void> FailingFileSystem::checkWritable(const Path& path)
{
    return attempt("checkWritable", [&] { return machine_.checkWritable(path); });
}

FileSystem::Result<void> FailingFileSystem::setMode(int descriptor, unsigned mode)
{
    return attempt("setMode", [&] { return machine_.setMode(descriptor, mode); });
}

FileSystem::Result<void> FailingFileSystem::setOwner(int descriptor, unsigned owner, unsigned group)
{
    return attempt("setOwner", [&] { return machine_.setOwner(descriptor, owner, group); });
}

FileSystem::Result<void> FailingFileSystem::setDate(int descriptor, FileDate date)
{
    return attempt("setDate", [&] { return machine_.setDate(descriptor, date); });
}

FileSystem::Result<std::vector<std::string>> FailingFileSystem::attributeNames(int descriptor)
{
    return attempt("attributeNames", [&] { return machine_.attributeNames(descriptor); });
}

FileSystem::Result<std::string> FailingFileSystem::attribute(int descriptor,
                                                             const std::string& name)
{
    return attempt("attribute", [&] { return machine_.attribute(descriptor, name); });
}

FileSystem::Result<void> FailingFileSystem::setAttribute(int descriptor, const std::string& name,
                                                         std::string_view value)
{
    return attempt("setAttribute", [&] { return machine_.setAttribute(descriptor, name, value); });
}

FileSystem::Result<void> FailingFileSystem::removeAttribute(int descriptor, const std::string& name)
{
    return attempt("removeAttribute", [&] { return machine_.removeAttribute(descriptor, name); });
}

FileSystem::Result<void> FailingFileSystem::rename(const Path& from, const Path& to)
{
    return attempt("rename", [&] { return machine_.rename(from, to); });
}

FileSystem::Result<void> FailingFileSystem::exchange(const Path& one, const Path& other)
{
    if (!canExchange)
        return tl::unexpected(EINVAL);
    return attempt("exchange", [&] { return machine_.exchange(one, other); });
}

FileSystem::Result<void> FailingFileSystem::makeFolder(const Path& path, unsigned mode)
{
    return attempt("makeFolder", [&] { return machine_.makeFolder(path, mode); });
}

FileSystem::Result<void> FailingFileSystem::remove(const Path& path)
{
    return attempt("remove", [&] { return machine_.remove(path); });
}

}  // namespace tavrel::test
