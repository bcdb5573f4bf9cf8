#pragma once

#include "config/LanguageMode.h"
#include "config/Preferences.h"
#include "probe/ProbeJson.h"

namespace tavrel::probe {

/// Every colour by the name of its field, as "#RRGGBB".
Json jsonFromTheme(const EditorTheme& theme);

/// Every field by its name; sets are sorted lists.
Json jsonFromMode(const LanguageMode& mode);

/// Every field by its name but `commandKey`; of the language modes the ids.
Json jsonFromPreferences(const Preferences& preferences);

Json jsonFromCommandKey(CommandKey key);

}  // namespace tavrel::probe
