#pragma once

#include "config/LanguageMode.h"
#include "probe/ProbeJson.h"

#include <memory>

namespace tavrel::probe {

/// The mode with the id that the member "language" names, from the files that ship with the
/// program; without the member the plain mode. Throws `RequestError` for an id that no mode has.
std::shared_ptr<const LanguageMode> languageMember(const Json& request);

}  // namespace tavrel::probe
