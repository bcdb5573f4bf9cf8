#include "config/ConfigurationFolder.h"

#include "platform/FileSystem.h"

#include <string>

namespace tavrel {

std::filesystem::path ConfigurationFolder::modeFile(std::string_view modeId) const
{
    return modesFolder() / (std::string(modeId) + ".cson");
}

std::filesystem::path ConfigurationFolder::activeSettingsURL() const
{
    std::filesystem::path settings = settingsFile();
    return fileSystem_.status(settings) ? settings : olderSettingsFile();
}

}  // namespace tavrel
