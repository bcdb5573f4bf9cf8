#include "config/SettingsOpener.h"

#include "config/LanguageModeTable.h"
#include "config/PreferencesStore.h"

namespace tavrel {

void openSettings(const PreferencesStore& store, SettingsOpenerDelegate& delegate)
{
    if (const auto ensured = store.ensureSettingsFile(); !ensured) {
        delegate.settingsOpenerDidReport("Could not open Settings: " + ensured.error().message);
        return;
    }
    const std::filesystem::path file = store.folder().settingsFile();
    delegate.settingsOpenerDidUpdate(file);
    delegate.settingsOpenerWillShow(file);
    delegate.settingsOpenerDidReport("Opened Settings");
}

void openMode(const PreferencesStore& store, std::string_view modeId,
              SettingsOpenerDelegate& delegate)
{
    const auto file = store.userModeURL(modeId);
    if (!file) {
        delegate.settingsOpenerDidReport("Could not open mode: " + description(file.error()));
        return;
    }
    delegate.settingsOpenerWillShow(*file);
    delegate.settingsOpenerDidReport("Opened " + displayName(modeId) + " Mode");
}

}  // namespace tavrel
