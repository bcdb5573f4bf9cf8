#include "config/BuiltInResources.h"
#include "config/PreferencesStore.h"
#include "platform/PosixFileSystem.h"
#include "probe/Adaptors.h"
#include "probe/ProbeHome.h"
#include "probe/SettingsJson.h"

namespace tavrel::probe {
namespace {

Json readAnswer(ProbeRequest& request)
{
    const std::string text = utf8Member(request.body(), "text");
    const auto mode =
        request.measured([&] { return text; },
                         [](const std::string& modeText) {
                             const auto value = PreferencesStore::parseSettings(modeText);
                             return value ? LanguageMode::fromValue(*value) : std::nullopt;
                         });
    return mode ? jsonFromMode(*mode) : Json{{"mode", nullptr}};
}

Json jsonFromIds(const std::vector<std::shared_ptr<const LanguageMode>>& modes)
{
    Json ids = Json::array();
    for (const auto& mode : modes)
        ids.push_back(jsonFromUtf8(mode->id));
    return ids;
}

}  // namespace

Json modeAdaptor(ProbeRequest& request)
{
    const Json& body = request.body();
    if (member(body, "text"))
        return readAnswer(request);
    const bool isList = member(body, "op") && utf8Member(body, "op") == "list";
    const auto path = member(body, "path")
                          ? std::optional<std::filesystem::path>(utf8Member(body, "path"))
                          : std::nullopt;
    const ProbeHome home(body);
    PosixFileSystem fileSystem;
    const BuiltInResources resources;
    PreferencesStore store(fileSystem, resources, home.path());
    store.loadLanguageModes();
    if (isList)
        return {{"ids", jsonFromIds(store.values().languageModes)}};
    const auto mode = request.measured(
        [&] { return path; }, [&](const auto& location) { return store.languageMode(location); });
    return {{"id", jsonFromUtf8(mode->id)}, {"name", jsonFromUtf8(mode->name)}};
}

}  // namespace tavrel::probe
