#pragma once

#include "config/cson/CSONError.h"
#include "config/cson/CSONValue.h"
#include "probe/ProbeJson.h"

namespace tavrel::probe {

/// The tree of any depth as JSON.
Json jsonFromValue(const CSONValue& root);

/// The tree that a value of a request stands for.
CSONValue valueFromJson(const Json& value);

/// `{"error": {domain, code, message}}`.
Json jsonFromError(const CSONError& error);

}  // namespace tavrel::probe
