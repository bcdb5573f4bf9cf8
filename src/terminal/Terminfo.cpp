#include "terminal/Terminfo.h"

#include "platform/FileSystem.h"
#include "platform/OpenFile.h"

#include <fcntl.h>

namespace tavrel {

tl::expected<std::filesystem::path, FileError> writeTerminfo(FileSystem& fileSystem,
                                                             const std::filesystem::path& folder)
{
    // A description lies in a folder named after its first letter.
    const std::filesystem::path terminfo = folder / "terminfo";
    for (const std::filesystem::path& missing : {terminfo, terminfo / "x"}) {
        constexpr unsigned mode = 0700;
        if (const auto made = fileSystem.makeFolder(missing, mode); !made)
            return tl::unexpected(fileError(made.error()));
    }
    constexpr unsigned mode = 0600;
    auto file = OpenFile::open(fileSystem, terminfo / "x" / "xterm-256color",
                               O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, mode);
    if (!file)
        return tl::unexpected(file.error());
    return file->writeAll(terminfoEntry()).and_then([&] { return file->close(); }).map([&] {
        return terminfo;
    });
}

}  // namespace tavrel
