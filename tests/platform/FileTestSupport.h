#pragma once

#include "platform/PosixFileSystem.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavrel::test {

/// A folder that everybody may look into, removed with its contents by the destructor.
class TestFolder {
public:
    TestFolder();
    ~TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

    /// Writes the file without any of the code under test, and answers its path.
    std::filesystem::path write(std::string_view name, std::string_view bytes) const;
    /// The names of all entries, sorted.
    std::vector<std::string> names() const;

private:
    std::filesystem::path path_;
};

/// What the file holds, read without any of the code under test; empty when it cannot be read.
std::string contents(const std::filesystem::path& path);

/// Gives the file another date, `nanoseconds` later or, with a negative number, earlier.
void moveDate(const std::filesystem::path& path, std::int64_t nanoseconds);

/// The permission bits of the file itself.
unsigned modeOf(const std::filesystem::path& path);

/// Runs `body` in a child process without the rights of root, and answers what it answers. Expects
/// of gtest do not reach the parent, so the body says it with its result.
bool asNobody(const std::function<bool()>& body);

/// The machine's file system, with one call, or every one from there on, failing.
class FailingFileSystem final : public FileSystem {
public:
    struct Failure {
        std::size_t call;  // Counted from 0 over all calls, or over those named `only`.
        int code;
        bool isLasting = false;
        std::string_view only = {};
    };

    std::optional<Failure> failure;
    bool canExchange = true;
    bool isInterruptedOften = false;  // Every other call that can be interrupted is.
    std::optional<std::size_t> mostBytesAtOnce;
    std::function<void()> beforeRead;  // Called before each read reaches the machine.

    /// The name of the call that failed last; empty when none did.
    const std::string& failed() const { return failed_; }
    std::size_t callCount() const { return callCount_; }
    /// Descriptors that were opened and not closed.
    int openDescriptors() const { return openDescriptors_; }

    Result<int> open(const Path& path, int flags, unsigned mode) override;
    Result<void> close(int descriptor) override;
    Result<std::size_t> read(int descriptor, std::span<char> buffer) override;
    Result<std::size_t> write(int descriptor, std::string_view bytes) override;
    Result<void> seek(int descriptor, std::uint64_t offset) override;
    Result<void> truncate(int descriptor, std::uint64_t size) override;
    Result<void> allocate(int descriptor, std::uint64_t size) override;
    Result<void> sync(int descriptor) override;
    Result<FileStatus> status(int descriptor) override;
    Result<FileStatus> status(const Path& path) override;
    Result<FileStatus> linkStatus(const Path& path) override;
    Result<Path> readLink(const Path& path) override;
    Result<void> checkWritable(const Path& path) override;
    Result<void> setMode(int descriptor, unsigned mode) override;
    Result<void> setOwner(int descriptor, unsigned owner, unsigned group) override;
    Result<void> setDate(int descriptor, FileDate date) override;
    Result<std::vector<std::string>> attributeNames(int descriptor) override;
    Result<std::string> attribute(int descriptor, const std::string& name) override;
    Result<void> setAttribute(int descriptor, const std::string& name,
                              std::string_view value) override;
    Result<void> removeAttribute(int descriptor, const std::string& name) override;
    Result<void> rename(const Path& from, const Path& to) override;
    Result<void> exchange(const Path& one, const Path& other) override;
    Result<void> makeFolder(const Path& path, unsigned mode) override;
    Result<void> remove(const Path& path) override;

private:
    /// The code with which this call is to fail, or 0.
    int failureOf(std::string_view name);
    bool interrupts();
    template<typename Call>
    auto attempt(std::string_view name, Call call) -> decltype(call());

    PosixFileSystem machine_;
    std::string failed_;
    std::size_t callCount_ = 0;
    std::size_t matchingCalls_ = 0;
    int openDescriptors_ = 0;
    bool wasInterrupted_ = false;
};

}  // namespace tavrel::test
