#pragma once

#include "config/cson/CSONError.h"
#include "config/cson/CSONValue.h"

#include <string>
#include <string_view>
#include <tl/expected.hpp>
#include <vector>

namespace tavrel {

/// A binding as a key map writes it.
struct KeyMapEntry {
    std::string sequence;  // As written, in any spelling. UTF-8.
    CSONValue value;

    bool operator==(const KeyMapEntry&) const = default;
};

/// The members of the map that `text` holds, in the order of the text, which `CSONValue` does not
/// keep; of two members with the same name only the last one. Empty for a value that is no map.
tl::expected<std::vector<KeyMapEntry>, CSONError> keyMapFromCSON(std::string_view text);

/// The same for the map that the member `section` of the map in `text` holds.
tl::expected<std::vector<KeyMapEntry>, CSONError> keyMapFromCSON(std::string_view text,
                                                                 std::string_view section);

/// The same where the value of `text` is known already.
std::vector<KeyMapEntry> keyMapFromCSON(std::string_view text, const CSONValue& value,
                                        std::string_view section);

}  // namespace tavrel
