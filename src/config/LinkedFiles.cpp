#include "config/LinkedFiles.h"

#include "config/ConfigurationFolder.h"
#include "config/LanguageModeTable.h"
#include "platform/FileSystem.h"

#include <optional>

namespace tavrel {
namespace {

std::optional<LinkedFile> linkedFile(FileSystem& fileSystem, const std::filesystem::path& path)
{
    constexpr int mostLinks = 40;  // As many as the system itself follows.
    std::filesystem::path target = path;
    for (int links = 0; links < mostLinks; ++links) {
        const auto status = fileSystem.linkStatus(target);
        if (!status)
            return std::nullopt;
        if (status->kind != FileKind::symbolicLink) {
            return links == 0 ? std::nullopt
                              : std::optional(LinkedFile{target, status->identity, status->date,
                                                         status->size});
        }
        const auto next = fileSystem.readLink(target);
        if (!next)
            return std::nullopt;
        target = target.parent_path() / *next;
    }
    return std::nullopt;
}

}  // namespace

std::vector<LinkedFile> linkedConfigFiles(const ConfigurationFolder& folder)
{
    std::vector<LinkedFile> files;
    const auto add = [&](const std::filesystem::path& path) {
        if (auto file = linkedFile(folder.fileSystem(), path))
            files.push_back(std::move(*file));
    };
    add(folder.activeSettingsURL());
    for (const LanguageModeRow& row : languageModeTable)
        add(folder.modeFile(row.id));
    return files;
}

}  // namespace tavrel
