#include "FileTestSupport.h"

#include "platform/FileReader.h"

#include <cerrno>
#include <chrono>
#include <clocale>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace tavrel {

namespace {

using test::FailingFileSystem;
using test::TestFolder;

constexpr std::size_t plenty = 1 << 20;

FileError errorOfReading(const std::filesystem::path& path)
{
    const auto bytes = readFile(path, plenty);
    return bytes ? FileError{} : bytes.error();
}

TEST(FileReading, ReadsAWholeFileByteForByte)
{
    const TestFolder folder;
    std::string bytes("\xEF\xBB\xBF\0\r\n\xFF", 7);
    bytes.append(10'000, 'x');
    EXPECT_EQ(readFile(folder.write("a", bytes), plenty), bytes);
    EXPECT_EQ(readFile(folder.write("empty", ""), plenty), "");
    EXPECT_EQ(readFile(folder.write("empty", ""), 0), "");
}

TEST(FileReading, FailsOnlyAboveTheMaximum)
{
    const TestFolder folder;
    const auto path = folder.write("a", "12345");
    EXPECT_EQ(readFile(path, 5), "12345");
    const auto refused = readFile(path, 4);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error(), (FileError{EFBIG, "File too large"}));
}

TEST(FileReading, GivesTheSystemsReasonForAMissingFile)
{
    const TestFolder folder;
    EXPECT_EQ(errorOfReading(folder / "none"), (FileError{ENOENT, "No such file or directory"}));
    EXPECT_EQ(errorOfReading(""), (FileError{ENOENT, "No such file or directory"}));
    EXPECT_EQ(errorOfReading(folder.write("a", "") / "b"), (FileError{ENOTDIR, "Not a directory"}));
}

TEST(FileReading, SpeaksEnglishInEveryLocale)
{
    std::setlocale(LC_ALL, "de_DE.UTF-8");  // Not installed everywhere: then nothing changes.
    EXPECT_EQ(fileError(ENOSPC).message, "No space left on device");
    EXPECT_EQ(fileError(99'999).message, "Unknown error 99999");
    std::setlocale(LC_ALL, "C");
}

TEST(FileReading, RefusesAFolder)
{
    const TestFolder folder;
    EXPECT_EQ(errorOfReading(folder.path()), (FileError{EISDIR, "Is a directory"}));
    EXPECT_EQ(errorOfReading("/"), (FileError{EISDIR, "Is a directory"}));
}

TEST(FileReading, RefusesDevicesPipesAndSocketsWithoutWaiting)
{
    const TestFolder folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    const std::string name = (folder / "socket").string();
    ASSERT_LT(name.size(), sizeof address.sun_path);
    name.copy(address.sun_path, name.size());
    ASSERT_EQ(bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);

    const FileError refused{EINVAL, "Not a regular file"};
    EXPECT_EQ(errorOfReading(folder / "pipe"), refused);
    EXPECT_EQ(errorOfReading(folder / "socket"), refused);
    EXPECT_EQ(errorOfReading("/dev/null"), refused);
    EXPECT_EQ(errorOfReading("/dev/zero"), refused);
    close(listener);
}

TEST(FileReading, RefusesAFileWithoutPermission)
{
    const TestFolder folder;
    const auto path = folder.write("secret", "x");
    chmod(path.c_str(), 0000);
    EXPECT_TRUE(test::asNobody([&] {
        return errorOfReading(path) == FileError{EACCES, "Permission denied"};
    }));
}

TEST(FileReading, RefusesAPathWithANulInIt)
{
    const TestFolder folder;
    folder.write("a", "x");
    const std::string name = (folder / "a").string() + std::string("\0b", 2);
    EXPECT_EQ(errorOfReading(name), (FileError{EINVAL, "Invalid argument"}));
}

TEST(FileReading, FollowsLinksAndRefusesARingOfThem)
{
    const TestFolder folder;
    folder.write("a", "text");
    std::filesystem::create_symlink("a", folder / "link");
    std::filesystem::create_symlink("ring2", folder / "ring1");
    std::filesystem::create_symlink("ring1", folder / "ring2");
    EXPECT_EQ(readFile(folder / "link", plenty), "text");
    EXPECT_EQ(errorOfReading(folder / "ring1").code, ELOOP);
}

TEST(FileReading, ReadsTheKernelsFilesOfSizeZero)
{
    const auto status = readFile("/proc/self/status", plenty);
    ASSERT_TRUE(status);
    EXPECT_EQ(status->substr(0, 5), "Name:");
    const auto tooLarge = readFile("/proc/self/status", 10);
    ASSERT_FALSE(tooLarge);
    EXPECT_EQ(tooLarge.error().code, EFBIG);
}

TEST(FileReading, ReadsInPiecesAndKnowsTheFile)
{
    const TestFolder folder;
    const auto path = folder.write("a", "0123456789");
    struct stat expected;
    ASSERT_EQ(stat(path.c_str(), &expected), 0);

    PosixFileSystem fileSystem;
    auto reader = FileReader::open(fileSystem, path);
    ASSERT_TRUE(reader);
    EXPECT_EQ(reader->status().size, 10U);
    EXPECT_EQ(reader->status().identity, (FileIdentity{expected.st_dev, expected.st_ino}));
    EXPECT_EQ(reader->status().date.time_since_epoch().count(),
              expected.st_mtim.tv_sec * 1'000'000'000 + expected.st_mtim.tv_nsec);

    std::string read;
    char buffer[4];
    for (auto count = reader->read(buffer); count && *count > 0; count = reader->read(buffer))
        read.append(buffer, *count);
    EXPECT_EQ(read, "0123456789");
    EXPECT_EQ(reader->read(buffer), 0U);
}

TEST(FileReading, KnowsDatesBefore1970AndToTheNanosecond)
{
    const TestFolder folder;
    const auto path = folder.write("a", "");
    const timespec times[] = {{0, UTIME_OMIT}, {-2, 123'456'789}};
    ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
    PosixFileSystem fileSystem;
    const auto status = fileSystem.status(path);
    ASSERT_TRUE(status);
    EXPECT_EQ(status->date.time_since_epoch(), std::chrono::nanoseconds(-1'876'543'211));
}

TEST(FileReading, GoesToWhereverTheEndThenIs)
{
    const TestFolder folder;
    FailingFileSystem fileSystem;
    fileSystem.mostBytesAtOnce = 3;

    const auto growing = folder.write("growing", "123456");
    int reads = 0;
    fileSystem.beforeRead = [&] {
        if (++reads == 2)
            std::ofstream(growing, std::ios::app) << std::string(5000, 'x');
    };
    EXPECT_EQ(readFile(fileSystem, growing, plenty), "123456" + std::string(5000, 'x'));

    const auto shrinking = folder.write("shrinking", "123456");
    reads = 0;
    fileSystem.beforeRead = [&] {
        if (++reads == 2)
            std::filesystem::resize_file(shrinking, 4);
    };
    EXPECT_EQ(readFile(fileSystem, shrinking, plenty), "1234");
}

TEST(FileReading, GrowingPastTheMaximumIsRefused)
{
    const TestFolder folder;
    FailingFileSystem fileSystem;
    const auto path = folder.write("a", "123");
    fileSystem.beforeRead = [&] { std::ofstream(path, std::ios::app) << std::string(100, 'x'); };
    const auto refused = readFile(fileSystem, path, 1000);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().code, EFBIG);
}

TEST(FileReading, GoesOnAfterSignals)
{
    const TestFolder folder;
    FailingFileSystem fileSystem;
    fileSystem.isInterruptedOften = true;
    fileSystem.mostBytesAtOnce = 1;
    EXPECT_EQ(readFile(fileSystem, folder.write("a", "12345"), plenty), "12345");
}

TEST(FileReading, ReportsEveryFailureAndLeavesNothingOpen)
{
    const TestFolder folder;
    const auto path = folder.write("a", "12345");
    std::size_t call = 0;
    for (bool failed = true; failed; ++call) {
        FailingFileSystem fileSystem;
        fileSystem.failure = {.call = call, .code = EIO};
        const auto bytes = readFile(fileSystem, path, plenty);
        failed = !fileSystem.failed().empty();
        // What closing reports is of no interest to a reader, and the first look only forestalls.
        const bool matters =
            failed && fileSystem.failed() != "close" && fileSystem.failed() != "path status";
        if (matters)
            EXPECT_EQ(bytes, tl::unexpected((FileError{EIO, "Input/output error"})));
        else
            EXPECT_EQ(bytes, "12345");
        EXPECT_EQ(fileSystem.openDescriptors(), 0);
    }
    EXPECT_GT(call, 5U);
}

}  // namespace

}  // namespace tavrel
