#include "config/LanguageModeFiles.h"

#include "config/ConfigText.h"
#include "config/ConfigurationFolder.h"
#include "config/LanguageModeTable.h"
#include "config/ResourceStore.h"
#include "config/cson/TavrelCSONBackend.h"
#include "platform/FileSystem.h"
#include "platform/Folders.h"

#include <optional>

namespace tavrel {
namespace {

std::optional<CSONValue> parsed(std::string_view text)
{
    auto value = TavrelCSONBackend::parseCSON(withoutByteOrderMark(text));
    return value ? std::optional(std::move(*value)) : std::nullopt;
}

std::optional<std::string_view> modeResource(const ResourceStore& resources,
                                             std::string_view modeId)
{
    return resources.find("Languages", std::string(modeId) + ".cson");
}

/// What the user's file of the mode holds, else what the resource does.
std::optional<CSONValue> modeValue(const ConfigurationFolder& folder,
                                   const ResourceStore& resources, std::string_view modeId)
{
    const auto text = readConfigText(folder.fileSystem(), folder.modeFile(modeId));
    if (auto value = text ? parsed(*text) : std::nullopt)
        return value;
    const auto resource = modeResource(resources, modeId);
    return resource ? parsed(*resource) : std::nullopt;
}

}  // namespace

std::vector<std::shared_ptr<const LanguageMode>>
loadedLanguageModes(const ConfigurationFolder& folder, const ResourceStore& resources)
{
    std::vector<std::shared_ptr<const LanguageMode>> modes;
    modes.reserve(languageModeTable.size());
    for (const LanguageModeRow& row : languageModeTable) {
        const auto value = modeValue(folder, resources, row.id);
        auto mode = value ? LanguageMode::fromValue(*value) : std::nullopt;
        if (mode)
            modes.push_back(std::make_shared<const LanguageMode>(std::move(*mode)));
    }
    return modes;
}

std::string description(const ModeFileError& error)
{
    if (const auto* missing = std::get_if<WorkspaceError>(&error))
        return missing->description();
    return std::get<FileError>(error).message;
}

tl::expected<std::filesystem::path, ModeFileError> ensureModeFile(const ConfigurationFolder& folder,
                                                                  const ResourceStore& resources,
                                                                  std::string_view modeId)
{
    if (const auto made = makeFolders(folder.fileSystem(), folder.modesFolder()); !made)
        return tl::unexpected(made.error());
    std::filesystem::path path = folder.modeFile(modeId);
    if (folder.fileSystem().status(path))
        return path;
    const auto resource = modeResource(resources, modeId);
    if (!resource)
        return tl::unexpected(WorkspaceError{std::string(modeId)});
    if (const auto written = writeConfigText(folder.fileSystem(), path, *resource); !written)
        return tl::unexpected(written.error());
    return path;
}

}  // namespace tavrel
