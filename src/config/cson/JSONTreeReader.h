#pragma once

#include "config/cson/CSONError.h"
#include "config/cson/CSONValue.h"

#include <string_view>
#include <tl/expected.hpp>

namespace tavrel {

/// Reads JSON text of any top-level value into a tree of values, strictly.
///
/// Errors have the domain "TavrelJSONReader", the code of the JSON library (101 for malformed text,
/// 406 for a number out of range) and its message; nesting past `CSONValue::maximumDepth` has the
/// code 1. Costs O(bytes) and the sorting of the maps.
tl::expected<CSONValue, CSONError> readJSONTree(std::string_view json);

}  // namespace tavrel
