#include "probe/ChordEvents.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace tavrel::probe {
namespace {

struct ModifierPrefix {
    std::u16string_view text;
    std::uint64_t bit;
};

constexpr std::array modifierPrefixes{
    ModifierPrefix{u"ctrl+", controlModifier},
    ModifierPrefix{u"opt+", optionModifier},
    ModifierPrefix{u"cmd+", commandModifier},
    ModifierPrefix{u"shift+", shiftModifier},
};

}  // namespace

KeyEvent eventWithChord(std::u16string_view chord)
{
    KeyEvent event;
    const auto leads = [&](const ModifierPrefix& prefix) {
        return chord.size() > prefix.text.size() && chord.starts_with(prefix.text);
    };
    for (const auto* prefix = std::ranges::find_if(modifierPrefixes, leads);
         prefix != modifierPrefixes.end(); prefix = std::ranges::find_if(modifierPrefixes, leads)) {
        event.modifierFlags |= prefix->bit;
        chord.remove_prefix(prefix->text.size());
    }
    event.charactersIgnoringModifiers = chord;
    return event;
}

}  // namespace tavrel::probe
