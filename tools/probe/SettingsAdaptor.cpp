#include "config/BuiltInResources.h"
#include "config/BuiltInSettings.h"
#include "config/PreferencesStore.h"
#include "config/SettingsUpgrade.h"
#include "platform/FileReader.h"
#include "platform/PosixFileSystem.h"
#include "probe/Adaptors.h"
#include "probe/ProbeHome.h"
#include "probe/SettingsJson.h"

#include <limits>
#include <memory>

namespace tavrel::probe {
namespace {

/// A store over a home folder, and what its load said.
struct LoadedStore {
    std::unique_ptr<PreferencesStore> store;
    PreferencesStore::Outcome outcome = PreferencesStore::Outcome::invalid;
};

/// What the adaptor needs to make stores.
struct Stores {
    explicit Stores(const Json& request) : home(request) {}

    LoadedStore loaded(ProbeRequest& request, const std::optional<std::string>& text)
    {
        const auto made = [&] {
            return LoadedStore{
                std::make_unique<PreferencesStore>(fileSystem, resources, home.path())};
        };
        return request.measured(made, [&](LoadedStore& loaded) {
            loaded.outcome = loaded.store->load(text);
            return std::move(loaded);
        });
    }

    ProbeHome home;
    PosixFileSystem fileSystem;
    BuiltInResources resources;
};

Json loadAnswer(ProbeRequest& request, const std::optional<std::string>& text)
{
    Stores stores(request.body());
    const LoadedStore loaded = stores.loaded(request, text);
    const Preferences& values = loaded.store->values();
    return {{"applied", loaded.outcome == PreferencesStore::Outcome::applied},
            {"settings", jsonFromPreferences(values)},
            {"commandKey", jsonFromCommandKey(values.commandKey)}};
}

Json upgradeAnswer(ProbeRequest& request)
{
    const std::string text = utf8Member(request.body(), "text");
    const auto upgraded = request.measured([&] { return text; }, upgradedSettings);
    return {{"changed", upgraded.has_value()}, {"text", jsonFromUtf8(upgraded.value_or(text))}};
}

Json jsonFromFileError(const FileError& error)
{
    return {{"error", {{"code", error.code}, {"message", jsonFromUtf8(error.message)}}}};
}

Json ensureAnswer(ProbeRequest& request)
{
    Stores stores(request.body());
    const PreferencesStore store(stores.fileSystem, stores.resources, stores.home.path());
    const auto ensured = store.ensureSettingsFile();
    if (!ensured)
        return jsonFromFileError(ensured.error());
    const auto text = readFile(stores.fileSystem, store.folder().settingsFile(),
                               std::numeric_limits<std::size_t>::max());
    if (!text)
        return jsonFromFileError(text.error());
    return {{"path", jsonFromUtf8(store.folder().settingsFile().string())},
            {"text", jsonFromUtf8(*text)}};
}

Json keyChordAnswer(ProbeRequest& request)
{
    const Json& body = request.body();
    const std::string command = utf8Member(body, "command");
    Stores stores(body);
    PreferencesStore store(stores.fileSystem, stores.resources, stores.home.path());
    store.load(member(body, "text") ? std::optional(utf8Member(body, "text")) : std::nullopt);
    const auto chord = request.measured(
        [&] { return command; }, [&](const std::string& name) { return store.keyChord(name); });
    return {{"chord", chord ? jsonFromUtf8(*chord) : Json()}};
}

}  // namespace

Json settingsAdaptor(ProbeRequest& request)
{
    const std::string op = utf8Member(request.body(), "op");
    if (op == "load")
        return loadAnswer(request, std::nullopt);
    if (op == "apply")
        return loadAnswer(request, utf8Member(request.body(), "text"));
    if (op == "upgrade")
        return upgradeAnswer(request);
    if (op == "ensure")
        return ensureAnswer(request);
    if (op == "builtInText")
        return {{"text", jsonFromUtf8(builtInSettingsText())}};
    if (op == "keyChord")
        return keyChordAnswer(request);
    throw RequestError("unknown 'op' '" + op + "'");
}

}  // namespace tavrel::probe
