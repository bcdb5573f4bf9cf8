#pragma once

#include "config/cson/CSONValue.h"

#include <string>

namespace tavrel {

struct Preferences;

/// Applies the sections `editor`, `terminal`, `sidebar`, `toolbar` and `keyboard` of parsed
/// settings, key by key. A key that is absent or has a value of the wrong shape changes nothing,
/// and so does a section that is no map.
void applySections(const CSONValue& settings, Preferences& preferences);

}  // namespace tavrel
