#include "git/GitLineDiffer.h"

#include "platform/FileSystem.h"
#include "platform/MainQueue.h"
#include "platform/PrivateFolder.h"
#include "platform/Utf8.h"
#include "platform/WorkQueue.h"

#include <array>
#include <filesystem>
#include <unistd.h>
#include <utility>

namespace tavrel {
namespace {

namespace fs = std::filesystem;

/// The path without links in it; of a file that does not exist, with its folder's links resolved.
std::optional<fs::path> realPath(const fs::path& path)
{
    std::error_code error;
    fs::path real = fs::canonical(path, error);
    if (!error)
        return real;
    real = fs::canonical(path.parent_path(), error);
    if (error)
        return std::nullopt;
    return real / path.filename();
}

/// A random number as 32 hexadecimal digits in the groups of a UUID of version 4.
std::string freshUuid()
{
    std::array<unsigned char, 16> bytes{};
    // Where the system has no numbers to give, a second file of the name fails and harms nothing.
    static_cast<void>(::getentropy(bytes.data(), bytes.size()));
    bytes[6] = static_cast<unsigned char>(0x40 | (bytes[6] & 0x0F));
    bytes[8] = static_cast<unsigned char>(0x80 | (bytes[8] & 0x3F));
    std::string text;
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        if (index == 4 || index == 6 || index == 8 || index == 10)
            text += '-';
        text += "0123456789abcdef"[bytes[index] >> 4];
        text += "0123456789abcdef"[bytes[index] & 0xF];
    }
    return text;
}

/// A file that its destructor removes.
class ScratchFile {
public:
    ScratchFile(FileSystem& fileSystem, PrivateFolder& folder, const std::string& name,
                std::string_view bytes)
        : fileSystem_(fileSystem), path_(folder.createFile(name, bytes))
    {
    }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;
    ~ScratchFile()
    {
        if (path_)
            static_cast<void>(fileSystem_.remove(*path_));
    }

    bool exists() const { return path_.has_value(); }
    std::string path() const { return path_->string(); }

private:
    FileSystem& fileSystem_;
    tl::expected<fs::path, FileError> path_;
};

/// The folder that holds the repository of `folder`, with a slash at its end.
std::optional<std::string> repositoryRoot(const GitTool& tool, const std::string& folder)
{
    auto result = tool.run({"-C", folder, "rev-parse", "--show-toplevel"});
    if (!result || result->exitStatus != 0)
        return std::nullopt;
    std::string root = std::move(result->output);
    if (root.ends_with('\n'))
        root.pop_back();
    if (root.empty())
        return std::nullopt;
    if (!root.ends_with('/'))
        root += '/';
    return root;
}

}  // namespace

void GitLineDiffer::compute(const std::string& path, TextSource text, Completion completion)
{
    workQueue_.post(
        [this, path, text = std::move(text), completion = std::move(completion)]() mutable {
            mainQueue_.post([completion = std::move(completion), diff = compare(path, text)] {
                completion(diff);
            });
        });
}

std::optional<GitLineDiff> GitLineDiffer::compare(const std::string& path,
                                                  std::string_view text) const
{
    return compare(path, [text] { return std::string(text); });
}

std::optional<GitLineDiff> GitLineDiffer::compare(const std::string& path,
                                                  const TextSource& source) const
{
    if (!path.starts_with('/') || path.find('\0') != std::string::npos)
        return std::nullopt;
    const auto file = realPath(path);
    if (!file)
        return std::nullopt;
    const auto root = repositoryRoot(tool_, file->parent_path().string());
    if (!root || !file->string().starts_with(*root))
        return std::nullopt;
    const std::string relative = file->string().substr(root->size());
    auto shown = tool_.run({"-C", *root, "show", "HEAD:" + relative});
    if (!shown) {
        if (shown.error().reason == ChildProcessError::Reason::cannotLaunch)
            return GitLineDiff::allAdded(source());
        return std::nullopt;
    }
    if (shown->exitStatus != 0)
        return GitLineDiff::allAdded(source());
    const std::string text = source();
    std::string base = std::move(shown->output);
    if (!isValidUtf8(base))
        base.clear();
    if (base == text)
        return GitLineDiff{};
    return compareTexts(base, text);
}

std::optional<GitLineDiff> GitLineDiffer::compareTexts(std::string_view base,
                                                       std::string_view text) const
{
    const std::string uuid = freshUuid();
    const ScratchFile baseFile(fileSystem_, folder_, "git-base-" + uuid, base);
    const ScratchFile currentFile(fileSystem_, folder_, "git-current-" + uuid, text);
    if (!baseFile.exists() || !currentFile.exists())
        return std::nullopt;
    // A difference viewer that the user has set up prints no hunks.
    const auto result = tool_.run({"diff", "--no-ext-diff", "--no-index", "--unified=0",
                                   "--no-color", "--", baseFile.path(), currentFile.path()});
    if (!result || (result->exitStatus != 0 && result->exitStatus != 1))
        return std::nullopt;
    return GitLineDiff::parse(result->output);
}

}  // namespace tavrel
