#include "editor/dispatch/DefaultKeyMap.h"

#include "config/cson/TavrelCSONBackend.h"

namespace tavrel {

std::vector<KeyMapEntry> defaultKeyMapEntries()
{
    std::vector<KeyMapEntry> entries;
    entries.reserve(defaultKeyMap.size());
    for (const DefaultBinding& binding : defaultKeyMap) {
        const auto value = TavrelCSONBackend::parseCSON(binding.value);
        entries.push_back({std::string(binding.chord), value.value_or(CSONValue())});
    }
    return entries;
}

}  // namespace tavrel
