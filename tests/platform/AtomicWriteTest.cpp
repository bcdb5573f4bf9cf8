#include "FileTestSupport.h"

#include "platform/AtomicWrite.h"

#include <cerrno>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace tavrel {

namespace {

using test::contents;
using test::FailingFileSystem;
using test::modeOf;
using test::TestFolder;

using Names = std::vector<std::string>;
using Saved = tl::expected<FileStatus, FileError>;

Saved save(const std::filesystem::path& path, std::string_view bytes,
           const std::filesystem::path& asideFolder = {})
{
    PosixFileSystem fileSystem;
    return writeFileAtomically(fileSystem, path, byteSource(bytes), asideFolder);
}

FileError errorOf(const Saved& saved)
{
    return saved ? FileError{} : saved.error();
}

ino_t inodeOf(const std::filesystem::path& path)
{
    struct stat status;
    return stat(path.c_str(), &status) == 0 ? status.st_ino : 0;
}

TEST(AtomicWrite, ReplacesAFile)
{
    const TestFolder folder;
    const auto path = folder.write("a.txt", "old");
    const auto saved = save(path, std::string_view("new\0bytes", 9));
    ASSERT_TRUE(saved);
    EXPECT_EQ(contents(path), std::string("new\0bytes", 9));
    EXPECT_EQ(folder.names(), Names{"a.txt"});

    PosixFileSystem fileSystem;
    const auto status = fileSystem.status(path);
    ASSERT_TRUE(status);
    EXPECT_EQ(saved->identity, status->identity);
    EXPECT_EQ(saved->date, status->date);
    EXPECT_EQ(saved->size, 9U);
}

TEST(AtomicWrite, WritesNothingAtAll)
{
    const TestFolder folder;
    const auto path = folder.write("a.txt", "old");
    ASSERT_TRUE(save(path, ""));
    EXPECT_EQ(contents(path), "");
    EXPECT_TRUE(std::filesystem::exists(path));
}

TEST(AtomicWrite, TakesPiecesOfUnknownSum)
{
    const TestFolder folder;
    FailingFileSystem fileSystem;
    fileSystem.mostBytesAtOnce = 700;
    fileSystem.isInterruptedOften = true;
    int pieces = 0;
    std::string piece;
    const ByteSource source{[&]() -> std::string_view {
                                piece.assign(1000, static_cast<char>('a' + pieces));
                                return ++pieces > 3 ? std::string_view() : piece;
                            },
                            std::nullopt};
    ASSERT_TRUE(writeFileAtomically(fileSystem, folder / "a", source));
    EXPECT_EQ(contents(folder / "a"),
              std::string(1000, 'a') + std::string(1000, 'b') + std::string(1000, 'c'));
    EXPECT_EQ(pieces, 4);
}

TEST(AtomicWrite, AWrongSumDoesNoHarm)
{
    const TestFolder folder;
    const auto path = folder.write("a", "old");
    PosixFileSystem fileSystem;
    for (const std::uint64_t sum : {std::uint64_t{0}, std::uint64_t{1}, std::uint64_t{1 << 20}}) {
        ByteSource source = byteSource("four");
        source.byteCount = sum;
        ASSERT_TRUE(writeFileAtomically(fileSystem, path, source));
        EXPECT_EQ(contents(path), "four");
    }
}

TEST(AtomicWrite, ANewFileGetsTheModeOfTheMask)
{
    const TestFolder folder;
    const mode_t mask = umask(027);
    const auto saved = save(folder / "new", "x");
    umask(mask);
    ASSERT_TRUE(saved);
    EXPECT_EQ(modeOf(folder / "new"), 0640U);
    EXPECT_EQ(folder.names(), Names{"new"});
}

TEST(AtomicWrite, KeepsTheModeWhateverTheMask)
{
    const TestFolder folder;
    const auto path = folder.write("a", "old");
    const mode_t mask = umask(077);
    for (const unsigned mode : {0644U, 0600U, 0755U, 0666U, 04755U}) {
        chmod(path.c_str(), mode);
        ASSERT_TRUE(save(path, "new"));
        EXPECT_EQ(modeOf(path), mode);
    }
    umask(mask);
}

TEST(AtomicWrite, TheTemporaryFileIsNeverOpenToMorePeople)
{
    const TestFolder folder;
    const auto path = folder.write("secret", "old");
    chmod(path.c_str(), 0640);
    PosixFileSystem fileSystem;
    std::vector<unsigned> modes;
    bool atEnd = false;
    const ByteSource source{[&]() -> std::string_view {
                                for (const std::string& name : folder.names())
                                    modes.push_back(modeOf(folder / name));
                                return std::exchange(atEnd, true) ? "" : "new";
                            },
                            std::nullopt};
    ASSERT_TRUE(writeFileAtomically(fileSystem, path, source));
    ASSERT_EQ(modes.size(), 4U);  // Two files, looked at twice.
    for (const unsigned mode : modes)
        EXPECT_EQ(mode & ~0640U, 0U);
}

TEST(AtomicWrite, KeepsOwnerAndGroup)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root may give files away";
    const TestFolder folder;
    const auto path = folder.write("a", "old");
    ASSERT_EQ(chown(path.c_str(), 1234, 5678), 0);
    chmod(path.c_str(), 0640);
    ASSERT_TRUE(save(path, "new"));
    struct stat status;
    ASSERT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, 1234U);
    EXPECT_EQ(status.st_gid, 5678U);
    EXPECT_EQ(status.st_mode & 07777U, 0640U);
}

TEST(AtomicWrite, AnotherUsersFileIsWrittenInPlace)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root may give files away";
    const TestFolder folder;
    chmod(folder.path().c_str(), 0777);
    const auto path = folder.write("a", "a longer old text");
    ASSERT_EQ(chown(path.c_str(), 1234, 1234), 0);
    chmod(path.c_str(), 0666);
    const ino_t inode = inodeOf(path);
    EXPECT_TRUE(test::asNobody([&] { return save(path, "new").has_value(); }));
    EXPECT_EQ(contents(path), "new");
    EXPECT_EQ(inodeOf(path), inode);
    EXPECT_EQ(folder.names(), Names{"a"});
}

TEST(AtomicWrite, KeepsExtendedAttributes)
{
    const TestFolder folder;
    const auto path = folder.write("a", "old");
    const std::string value("some\0value", 10);
    if (setxattr(path.c_str(), "user.tavrel", value.data(), value.size(), 0) != 0)
        GTEST_SKIP() << "the temporary folder knows no extended attributes";
    ASSERT_EQ(setxattr(path.c_str(), "user.empty", "", 0, 0), 0);
    ASSERT_TRUE(save(path, "new"));
    char buffer[100];
    ASSERT_EQ(getxattr(path.c_str(), "user.tavrel", buffer, sizeof buffer), 10);
    EXPECT_EQ(std::string(buffer, 10), value);
    EXPECT_EQ(getxattr(path.c_str(), "user.empty", buffer, sizeof buffer), 0);
}

/// An access control list in the form of its extended attribute: the usual three entries, user
/// 1234 with `userBits`, and a mask.
std::string accessList(unsigned userBits)
{
    struct Entry {
        std::uint16_t tag, bits;
        std::uint32_t id;
    };
    constexpr std::uint32_t noId = 0xFFFFFFFF;
    const Entry entries[] = {{0x01, 6, noId},
                             {0x02, static_cast<std::uint16_t>(userBits), 1234},
                             {0x04, 0, noId},
                             {0x10, 6, noId},
                             {0x20, 0, noId}};
    const std::uint32_t version = 2;
    std::string bytes(reinterpret_cast<const char*>(&version), sizeof version);
    return bytes.append(reinterpret_cast<const char*>(entries), sizeof entries);
}

std::string attributeOf(const std::filesystem::path& path, const char* name)
{
    std::string value(1000, '\0');
    const ssize_t size = getxattr(path.c_str(), name, value.data(), value.size());
    value.resize(static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
    return value;
}

TEST(AtomicWrite, KeepsAccessControlLists)
{
    const TestFolder folder;
    const auto path = folder.write("a", "old");
    const std::string list = accessList(4);
    if (setxattr(path.c_str(), "system.posix_acl_access", list.data(), list.size(), 0) != 0)
        GTEST_SKIP() << "the temporary folder knows no access control lists";
    const unsigned mode = modeOf(path);
    ASSERT_TRUE(save(path, "new"));
    EXPECT_EQ(attributeOf(path, "system.posix_acl_access"), list);
    EXPECT_EQ(modeOf(path), mode);
}

TEST(AtomicWrite, TheFoldersDefaultListLetsNobodyIntoAnOldFile)
{
    const TestFolder folder;
    const auto path = folder.write("a", "old");
    chmod(path.c_str(), 0660);
    const std::string list = accessList(6);
    if (setxattr(folder.path().c_str(), "system.posix_acl_default", list.data(), list.size(), 0) !=
        0)
        GTEST_SKIP() << "the temporary folder knows no access control lists";
    ASSERT_TRUE(save(path, "new"));
    EXPECT_EQ(attributeOf(path, "system.posix_acl_access"), "");
    EXPECT_EQ(modeOf(path), 0660U);

    ASSERT_TRUE(save(folder / "new", "x"));
    EXPECT_EQ(attributeOf(folder / "new", "system.posix_acl_access"), list);
}

TEST(AtomicWrite, FollowsLinksAndLeavesThemAlone)
{
    const TestFolder folder;
    std::filesystem::create_directory(folder / "deep");
    folder.write("deep/target", "old");
    std::filesystem::create_symlink("target", folder / "deep/second");
    std::filesystem::create_symlink("deep/second", folder / "first");
    ASSERT_TRUE(save(folder / "first", "new"));
    EXPECT_EQ(contents(folder / "deep/target"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "first"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "deep/second"));

    std::filesystem::create_symlink(folder / "deep/target", folder / "absolute");
    ASSERT_TRUE(save(folder / "absolute", "newer"));
    EXPECT_EQ(contents(folder / "deep/target"), "newer");
}

TEST(AtomicWrite, MakesTheTargetOfADanglingLink)
{
    const TestFolder folder;
    std::filesystem::create_directory(folder / "deep");
    std::filesystem::create_symlink("deep/absent", folder / "link");
    ASSERT_TRUE(save(folder / "link", "new"));
    EXPECT_EQ(contents(folder / "deep/absent"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "link"));

    std::filesystem::create_symlink("nowhere/absent", folder / "lost");
    EXPECT_EQ(errorOf(save(folder / "lost", "x")),
              (FileError{ENOENT, "No such file or directory"}));
}

TEST(AtomicWrite, RefusesARingOfLinks)
{
    const TestFolder folder;
    std::filesystem::create_symlink("two", folder / "one");
    std::filesystem::create_symlink("one", folder / "two");
    EXPECT_EQ(errorOf(save(folder / "one", "x")),
              (FileError{ELOOP, "Too many levels of symbolic links"}));
}

TEST(AtomicWrite, RefusesWhatIsNoRegularFile)
{
    const TestFolder folder;
    std::filesystem::create_directory(folder / "deep");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    const FileError aFolder{EISDIR, "Is a directory"};
    EXPECT_EQ(errorOf(save(folder / "deep", "x")), aFolder);
    EXPECT_EQ(errorOf(save(folder / "deep/", "x")), aFolder);
    EXPECT_EQ(errorOf(save(folder / "absent/", "x")), aFolder);
    EXPECT_EQ(errorOf(save("/", "x")), aFolder);
    EXPECT_EQ(errorOf(save(folder / "pipe", "x")).message, "Not a regular file");
    EXPECT_EQ(errorOf(save("/dev/null", "x")).message, "Not a regular file");
    EXPECT_EQ(errorOf(save("", "x")).code, ENOENT);
    EXPECT_EQ(errorOf(save(std::string("a\0b", 3), "x")).code, EINVAL);
    EXPECT_EQ(folder.names(), (Names{"deep", "pipe"}));
}

TEST(AtomicWrite, TakesTheLongestNames)
{
    const TestFolder folder;
    std::string name;
    while (name.size() + 2 <= 254)
        name += "\u00e9";
    const auto path = folder.write(name, "old");
    ASSERT_TRUE(save(path, "new"));
    EXPECT_EQ(contents(path), "new");
    EXPECT_EQ(errorOf(save(folder / std::string(256, 'x'), "x")),
              (FileError{ENAMETOOLONG, "File name too long"}));
}

TEST(AtomicWrite, KeepsHardLinksTogether)
{
    const TestFolder folder;
    const auto path = folder.write("a", "old");
    std::filesystem::create_hard_link(path, folder / "b");
    for (const std::string& bytes : {std::string(100'000, 'x'), std::string("short")}) {
        const auto saved = save(path, bytes);
        ASSERT_TRUE(saved);
        EXPECT_EQ(contents(folder / "b"), bytes);
        EXPECT_EQ(inodeOf(path), inodeOf(folder / "b"));
        EXPECT_EQ(saved->size, bytes.size());
        EXPECT_EQ(folder.names(), (Names{"a", "b"}));
    }
}

TEST(AtomicWrite, AReadOnlyFolderIsWrittenInPlace)
{
    const TestFolder folder;
    const TestFolder aside;
    chmod(aside.path().c_str(), 0777);
    const auto path = folder.write("a", "old");
    chmod(path.c_str(), 0666);
    chmod(folder.path().c_str(), 0555);
    EXPECT_TRUE(test::asNobody([&] { return save(path, "new", aside.path()).has_value(); }));
    EXPECT_EQ(contents(path), "new");
    EXPECT_TRUE(test::asNobody([&] {
        return errorOf(save(folder / "absent", "x", aside.path())) ==
               FileError{EACCES, "Permission denied"};
    }));
    EXPECT_TRUE(aside.names().empty());
    chmod(folder.path().c_str(), 0755);
    EXPECT_EQ(folder.names(), Names{"a"});
}

TEST(AtomicWrite, WithNowhereToKeepTheOldBytesItRefuses)
{
    const TestFolder folder;
    const auto path = folder.write("a", "old");
    chmod(path.c_str(), 0666);
    chmod(folder.path().c_str(), 0555);
    EXPECT_TRUE(test::asNobody([&] {
        return errorOf(save(path, "new")) == FileError{EACCES, "Permission denied"};
    }));
    EXPECT_EQ(contents(path), "old");
}

TEST(AtomicWrite, AProtectedFileStaysAsItIs)
{
    const TestFolder folder;
    chmod(folder.path().c_str(), 0777);
    const auto path = folder.write("a", "old");
    chmod(path.c_str(), 0444);
    EXPECT_TRUE(test::asNobody([&] {
        return errorOf(save(path, "new")) == FileError{EACCES, "Permission denied"};
    }));
    EXPECT_EQ(contents(path), "old");
    EXPECT_EQ(folder.names(), Names{"a"});
}

/// A file system of 64 KiB, or nothing where mounting is not allowed.
class TinyDisk {
public:
    TinyDisk()
        : isMounted(mount("none", folder.path().c_str(), "tmpfs", 0, "size=64k,mode=0755") == 0)
    {
    }
    ~TinyDisk()
    {
        if (isMounted)
            umount(folder.path().c_str());
    }
    TinyDisk(const TinyDisk&) = delete;
    TinyDisk& operator=(const TinyDisk&) = delete;

    TestFolder folder;
    const bool isMounted;
};

TEST(AtomicWrite, AFullDiskLeavesTheOldFile)
{
    const TinyDisk disk;
    if (!disk.isMounted)
        GTEST_SKIP() << "mounting is not allowed here";
    const auto path = disk.folder.write("a", "old");
    const std::string tooMuch(100'000, 'x');
    const FileError full{ENOSPC, "No space left on device"};
    PosixFileSystem fileSystem;
    for (const bool isSumKnown : {true, false}) {
        ByteSource source = byteSource(tooMuch);
        if (!isSumKnown)
            source.byteCount.reset();
        EXPECT_EQ(errorOf(writeFileAtomically(fileSystem, path, source)), full);
        EXPECT_EQ(contents(path), "old");
        EXPECT_EQ(disk.folder.names(), Names{"a"});
    }
    EXPECT_EQ(errorOf(save(disk.folder / "new", tooMuch)), full);
    EXPECT_EQ(disk.folder.names(), Names{"a"});
}

TEST(AtomicWrite, AFullDiskLeavesTheOldBytesOfAFileInPlace)
{
    const TinyDisk disk;
    if (!disk.isMounted)
        GTEST_SKIP() << "mounting is not allowed here";
    const TestFolder aside;
    const std::string old(40'000, 'o');
    const auto path = disk.folder.write("a", old);
    std::filesystem::create_hard_link(path, disk.folder / "b");
    const auto date = std::filesystem::last_write_time(path);
    PosixFileSystem fileSystem;
    for (const bool isSumKnown : {true, false}) {
        const std::string tooMuch(100'000, 'x');
        ByteSource source = byteSource(tooMuch);
        if (!isSumKnown)
            source.byteCount.reset();
        // The old bytes do not fit a second time: they go to the other folder.
        EXPECT_EQ(errorOf(writeFileAtomically(fileSystem, path, source, aside.path())).code,
                  ENOSPC);
        EXPECT_EQ(contents(path), old);
        EXPECT_EQ(std::filesystem::last_write_time(path), date);
        EXPECT_EQ(disk.folder.names(), (Names{"a", "b"}));
        EXPECT_TRUE(aside.names().empty());
    }
    ASSERT_TRUE(save(path, std::string(60'000, 'n'), aside.path()));
    EXPECT_EQ(contents(disk.folder / "b"), std::string(60'000, 'n'));
}

TEST(AtomicWrite, AReadOnlyDiskLeavesTheOldFile)
{
    const TinyDisk disk;
    if (!disk.isMounted)
        GTEST_SKIP() << "mounting is not allowed here";
    const auto path = disk.folder.write("a", "old");
    ASSERT_EQ(mount("none", disk.folder.path().c_str(), "tmpfs", MS_REMOUNT | MS_RDONLY, nullptr),
              0);
    const FileError readOnly{EROFS, "Read-only file system"};
    EXPECT_EQ(errorOf(save(path, "new")), readOnly);
    EXPECT_EQ(errorOf(save(disk.folder / "new", "x")), readOnly);
    EXPECT_EQ(contents(path), "old");
}

TEST(AtomicWrite, AMountedFileIsWrittenInPlace)
{
    const TestFolder folder;
    const auto path = folder.write("a", "below");
    const auto other = folder.write("b", "old");
    if (mount(other.c_str(), path.c_str(), nullptr, MS_BIND, nullptr) != 0)
        GTEST_SKIP() << "mounting is not allowed here";
    EXPECT_TRUE(save(path, "new"));
    EXPECT_EQ(contents(path), "new");
    EXPECT_EQ(contents(other), "new");
    EXPECT_EQ(folder.names(), (Names{"a", "b"}));
    umount(path.c_str());
    EXPECT_EQ(contents(path), "below");
}

/// One situation in which a file is saved, made afresh for every call that is made to fail.
struct Situation {
    const char* name;
    std::filesystem::path (*prepare)(const TestFolder& folder);
    bool canExchange = true;
};

std::filesystem::path prepareNew(const TestFolder& folder)
{
    return folder / "a";
}

std::filesystem::path prepareOld(const TestFolder& folder)
{
    const auto path = folder.write("a", "old");
    setxattr(path.c_str(), "user.tavrel", "x", 1, 0);
    return path;
}

std::filesystem::path prepareLink(const TestFolder& folder)
{
    prepareOld(folder);
    std::filesystem::create_symlink("a", folder / "link");
    return folder / "link";
}

std::filesystem::path prepareHardLink(const TestFolder& folder)
{
    const auto path = prepareOld(folder);
    std::filesystem::create_hard_link(path, folder / "hard");
    return path;
}

std::filesystem::path prepareOtherOwner(const TestFolder& folder)
{
    const auto path = prepareOld(folder);
    // Where this is not allowed the situation is a plain one.
    [[maybe_unused]] const int ignored = chown(path.c_str(), 1234, 1234);
    return path;
}

constexpr Situation situations[] = {
    {"a new file", prepareNew},
    {"an old file", prepareOld},
    {"a link", prepareLink},
    {"hard links", prepareHardLink},
    {"another owner", prepareOtherOwner},
    {"no exchange", prepareOld, false},
};

class AtomicWriteFailing : public testing::TestWithParam<Situation> {};

/// Saves with the call of this number failing, checks what must hold, and answers whether there was
/// such a call.
bool saveWithOneFailure(const Situation& situation, std::size_t call, int code)
{
    const TestFolder folder;
    const auto path = situation.prepare(folder);
    const Names before = folder.names();
    const std::string old = contents(path);
    FailingFileSystem fileSystem;
    fileSystem.canExchange = situation.canExchange;
    fileSystem.failure = {.call = call, .code = code};
    const auto saved = writeFileAtomically(fileSystem, path, byteSource("new bytes"));
    const std::string& failed = fileSystem.failed();
    SCOPED_TRACE(testing::Message()
                 << situation.name << ", call " << call << ", " << failed << ", code " << code);

    // Without an exchange there is no way back from the rename, as the header says.
    const bool comesTooLate = !situation.canExchange && !saved && contents(path) == "new bytes" &&
                              (failed == "sync" || failed == "open");
    if (saved || comesTooLate)
        EXPECT_EQ(contents(path), "new bytes");
    else
        EXPECT_EQ(contents(path), old);
    if (!saved) {
        EXPECT_EQ(saved.error().code, code);
        EXPECT_EQ(saved.error().message, fileError(code).message);
    }
    if (failed != "remove") {
        Names after = before;
        if (saved && before.empty())
            after = {"a"};
        EXPECT_EQ(folder.names(), after);
    }
    EXPECT_EQ(fileSystem.openDescriptors(), 0);
    return !failed.empty();
}

TEST_P(AtomicWriteFailing, KeepsTheOldFileWhole)
{
    for (const int code : {EIO, ENOSPC, EINTR, EACCES, EROFS, EPERM}) {
        std::size_t call = 0;
        while (saveWithOneFailure(GetParam(), call, code))
            ++call;
        EXPECT_GT(call, 8U);
    }
}

INSTANTIATE_TEST_SUITE_P(Situations, AtomicWriteFailing, testing::ValuesIn(situations));

TEST(AtomicWrite, ReportsEveryFailureOfTheCallsThatMatter)
{
    for (const std::string_view call : {"open", "write", "setMode", "sync", "close", "exchange"}) {
        const TestFolder folder;
        const auto path = folder.write("a", "old");
        FailingFileSystem fileSystem;
        fileSystem.failure = {.call = 0, .code = EIO, .isLasting = true, .only = call};
        EXPECT_EQ(errorOf(writeFileAtomically(fileSystem, path, byteSource("new"))),
                  (FileError{EIO, "Input/output error"}))
            << call;
        EXPECT_EQ(contents(path), "old") << call;
        EXPECT_EQ(folder.names(), Names{"a"}) << call;
    }
}

TEST(AtomicWrite, AFolderThatCannotBeSyncedBringsTheOldFileBack)
{
    const TestFolder folder;
    const auto path = folder.write("a", "old");
    const ino_t inode = inodeOf(path);
    FailingFileSystem fileSystem;
    fileSystem.failure = {.call = 1, .code = EIO, .only = "sync"};
    EXPECT_EQ(errorOf(writeFileAtomically(fileSystem, path, byteSource("new"))).code, EIO);
    EXPECT_EQ(contents(path), "old");
    EXPECT_EQ(inodeOf(path), inode);
    EXPECT_EQ(folder.names(), Names{"a"});
}

TEST(AtomicWrite, AFileSystemWithoutFolderSyncIsNoFailure)
{
    const TestFolder folder;
    const auto path = folder.write("a", "old");
    FailingFileSystem fileSystem;
    fileSystem.failure = {.call = 1, .code = EINVAL, .only = "sync"};
    EXPECT_TRUE(writeFileAtomically(fileSystem, path, byteSource("new")));
    EXPECT_EQ(contents(path), "new");
}

TEST(AtomicWrite, WhenEvenTheOldBytesCannotBePutBackTheMessageSaysWhereTheyAre)
{
    const TestFolder folder;
    const auto path = folder.write("a", "old");
    std::filesystem::create_hard_link(path, folder / "b");
    FailingFileSystem fileSystem;
    // The first write keeps the old bytes; from the second one on the disk is broken.
    fileSystem.failure = {.call = 1, .code = EIO, .isLasting = true, .only = "write"};
    const FileError error = errorOf(writeFileAtomically(fileSystem, path, byteSource("new")));
    EXPECT_EQ(error.code, EIO);
    const std::string start = "Input/output error; the old contents are kept in ";
    ASSERT_EQ(error.message.substr(0, start.size()), start);
    EXPECT_EQ(contents(error.message.substr(start.size())), "old");
}

}  // namespace

}  // namespace tavrel
