#include "config/PreferencesStore.h"

#include "config/ConfigText.h"
#include "config/PreferenceSections.h"
#include "config/ResourceStore.h"
#include "config/cson/TavrelCSONBackend.h"
#include "editor/dispatch/CommandDispatcher.h"

#include <algorithm>
#include <unordered_set>
#include <utility>
#include <vector>

namespace tavrel {
namespace {

/// The member `name` of `value` where it is a map, or null.
const CSONValue* mapMember(const CSONValue& value, std::string_view name)
{
    const CSONValue* member = value.find(name);
    return member && member->isMap() ? member : nullptr;
}

std::vector<KeyMapEntry> keyMapOf(std::string_view text, const CSONValue& settings)
{
    return keyMapFromCSON(withoutByteOrderMark(text), settings, "keys");
}

/// The entries of `user` in place of those with the same text, and behind all others: of two
/// spellings of one sequence the user's is the later one, and of two of the user's the one that is
/// later in the file.
void mergeKeyMap(std::vector<KeyMapEntry> user, std::vector<KeyMapEntry>& keymap)
{
    std::unordered_set<std::string_view> replaced;
    for (const KeyMapEntry& entry : user)
        replaced.insert(entry.sequence);
    std::erase_if(keymap,
                  [&](const KeyMapEntry& entry) { return replaced.contains(entry.sequence); });
    std::ranges::move(user, std::back_inserter(keymap));
}

bool runs(const KeyMapEntry& entry, std::string_view command)
{
    const EditorCommandList commands = CommandDispatcher::commandsFromValue(entry.value);
    return std::ranges::find(commands, command, &EditorCommand::name) != commands.end();
}

/// What follows the last dot of the file's name, in small letters.
std::string loweredExtension(const std::filesystem::path& file)
{
    const std::string name = file.filename().string();
    const std::size_t dot = name.rfind('.');
    return dot == std::string::npos ? std::string() : lowercasedUtf8(name.substr(dot + 1));
}

}  // namespace

PreferencesStore::PreferencesStore(FileSystem& fileSystem, const ResourceStore& resources,
                                   const std::filesystem::path& homeFolder)
    : resources_(resources), folder_(fileSystem, homeFolder),
      plainMode_(std::make_shared<const LanguageMode>(LanguageMode::plain()))
{
}

PreferencesStore::Outcome PreferencesStore::load(std::optional<std::string_view> userSettings)
{
    resetToBuiltInValues();
    applyDefaultSettings();
    loadDefaultTheme();
    loadLanguageModes();
    return applyUserSettings(userSettings);
}

void PreferencesStore::resetToBuiltInValues()
{
    values_ = {};
}

void PreferencesStore::applyDefaultSettings()
{
    const auto text = settingsResource();
    const auto settings = text ? parseSettings(*text) : std::nullopt;
    if (!settings)
        return;
    applySections(*settings, values_);
    if (mapMember(*settings, "keys"))
        values_.keymap = keyMapOf(*text, *settings);
}

void PreferencesStore::loadDefaultTheme()
{
    const auto text = resources_.find("Themes", "default.cson");
    const auto theme = text ? parseSettings(*text) : std::nullopt;
    if (const CSONValue* colors = theme ? mapMember(*theme, "colors") : nullptr)
        values_.theme = EditorTheme(*colors);
}

void PreferencesStore::loadLanguageModes()
{
    values_.languageModes = loadedLanguageModes(folder_, resources_);
}

PreferencesStore::Outcome PreferencesStore::applyUserSettings(std::optional<std::string_view> text)
{
    tl::expected<std::string, FileError> file;
    if (!text) {
        file = readConfigText(folder_.fileSystem(), activeSettingsURL());
        if (!file)
            return Outcome::applied;
        text = *file;
    }
    const auto settings = parseSettings(*text);
    if (!settings || !settings->isMap())
        return Outcome::invalid;
    if (mapMember(*settings, "keys"))
        mergeKeyMap(keyMapOf(*text, *settings), values_.keymap);
    if (const CSONValue* colors = mapMember(*settings, "colors"))
        values_.theme = EditorTheme(*colors);
    applySections(*settings, values_);
    return Outcome::applied;
}

std::optional<CSONValue> PreferencesStore::parseSettings(std::string_view text)
{
    auto value = TavrelCSONBackend::parseCSON(withoutByteOrderMark(text));
    return value ? std::optional(std::move(*value)) : std::nullopt;
}

std::optional<std::string> PreferencesStore::keyChord(std::string_view command) const
{
    const KeyMapEntry* first = nullptr;
    for (const KeyMapEntry& entry : values_.keymap) {
        if ((!first || entry.sequence < first->sequence) && runs(entry, command))
            first = &entry;
    }
    return first ? std::optional(first->sequence) : std::nullopt;
}

std::shared_ptr<const LanguageMode>
PreferencesStore::languageMode(const std::optional<std::filesystem::path>& file) const
{
    const std::string extension = file ? loweredExtension(*file) : std::string();
    if (extension.empty())
        return plainMode_;
    const auto mode = std::ranges::find_if(values_.languageModes, [&](const auto& candidate) {
        return candidate->extensions.contains(extension);
    });
    return mode == values_.languageModes.end() ? plainMode_ : *mode;
}

tl::expected<std::filesystem::path, ModeFileError>
PreferencesStore::userModeURL(std::string_view modeId) const
{
    return ensureModeFile(folder_, resources_, modeId);
}

tl::expected<void, FileError> PreferencesStore::ensureSettingsFile() const
{
    return tavrel::ensureSettingsFile(folder_, resources_);
}

tl::expected<SettingsUpgrade, FileError>
PreferencesStore::upgradeSettingsFile(const std::filesystem::path& file) const
{
    return tavrel::upgradeSettingsFile(folder_, file);
}

std::optional<std::string_view> PreferencesStore::settingsResource() const
{
    const auto text = resources_.find("Defaults", "settings.cson");
    return text ? text : resources_.find("Defaults", "preferences.cson");
}

}  // namespace tavrel
