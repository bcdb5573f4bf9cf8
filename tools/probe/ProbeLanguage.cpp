#include "probe/ProbeLanguage.h"

#include "config/BuiltInResources.h"
#include "config/PreferencesStore.h"
#include "platform/PosixFileSystem.h"
#include "probe/ProbeHome.h"

#include <string>

namespace tavrel::probe {

std::shared_ptr<const LanguageMode> languageMember(const Json& request)
{
    const LanguageMode plain = LanguageMode::plain();
    const std::string id = member(request, "language") ? utf8Member(request, "language") : plain.id;
    if (id == plain.id)
        return std::make_shared<const LanguageMode>(plain);
    const ProbeHome emptyHome(Json::object());
    PosixFileSystem fileSystem;
    const BuiltInResources resources;
    PreferencesStore store(fileSystem, resources, emptyHome.path());
    store.loadLanguageModes();
    for (const std::shared_ptr<const LanguageMode>& mode : store.values().languageModes) {
        if (mode->id == id)
            return mode;
    }
    throw RequestError("unknown language '" + id + "'");
}

}  // namespace tavrel::probe
