#pragma once

#include "../platform/FileTestSupport.h"
#include "config/BuiltInResources.h"
#include "config/PreferencesStore.h"

#include <map>
#include <string>

namespace tavrel::test {

/// Resources that a test makes up.
class FakeResources final : public ResourceStore {
public:
    std::optional<std::string_view> textAt(std::string_view path) const override
    {
        const auto found = texts.find(path);
        return found == texts.end() ? std::nullopt : std::optional<std::string_view>(found->second);
    }

    std::map<std::string, std::string, std::less<>> texts;
};

/// A home folder, and a store over it with the resources of the program.
struct ConfigTestHome {
    TestFolder home;
    FailingFileSystem fileSystem;
    BuiltInResources resources;
    PreferencesStore store{fileSystem, resources, home.path()};
    ConfigurationFolder folder{fileSystem, home.path()};

    /// Writes a file of the configuration folder, which is made where it is missing.
    std::filesystem::path write(const std::string& name, std::string_view bytes) const
    {
        const std::filesystem::path path = folder.path() / name;
        std::filesystem::create_directories(path.parent_path());
        return home.write((std::filesystem::path(".tavrel-code") / name).string(), bytes);
    }
};

}  // namespace tavrel::test
