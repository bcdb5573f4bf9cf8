#include "config/SettingsFile.h"

#include "config/BuiltInSettings.h"
#include "config/ConfigText.h"
#include "config/ConfigurationFolder.h"
#include "config/ResourceStore.h"
#include "config/SettingsUpgrade.h"
#include "platform/FileSystem.h"
#include "platform/Folders.h"

#include <string>

namespace tavrel {
namespace {

tl::expected<void, FileError> upgrade(const ConfigurationFolder& folder)
{
    return upgradeSettingsFile(folder, folder.settingsFile()).map([](SettingsUpgrade) {});
}

std::string newSettingsText(const ResourceStore& resources)
{
    for (const char* name : {"settings.cson", "preferences.cson"})
        if (const auto text = resources.find("Defaults", name))
            return std::string(*text);
    return builtInSettingsText();
}

}  // namespace

tl::expected<SettingsUpgrade, FileError> upgradeSettingsFile(const ConfigurationFolder& folder,
                                                             const std::filesystem::path& path)
{
    const auto text = readConfigText(folder.fileSystem(), path);
    if (!text)
        return tl::unexpected(text.error());
    const auto upgraded = upgradedSettings(*text);
    if (!upgraded)
        return SettingsUpgrade::unchanged;
    return writeConfigText(folder.fileSystem(), path, *upgraded).map([] {
        return SettingsUpgrade::rewritten;
    });
}

tl::expected<void, FileError> ensureSettingsFile(const ConfigurationFolder& folder,
                                                 const ResourceStore& resources)
{
    FileSystem& fileSystem = folder.fileSystem();
    if (const auto made = makeFolders(fileSystem, folder.path()); !made)
        return made;
    if (fileSystem.status(folder.settingsFile()))
        return upgrade(folder);
    if (fileSystem.status(folder.olderSettingsFile())) {
        const auto moved = fileSystem.rename(folder.olderSettingsFile(), folder.settingsFile());
        if (!moved)
            return tl::unexpected(fileError(moved.error()));
        return upgrade(folder);
    }
    return writeConfigText(fileSystem, folder.settingsFile(), newSettingsText(resources));
}

}  // namespace tavrel
