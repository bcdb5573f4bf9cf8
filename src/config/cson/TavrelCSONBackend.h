#pragma once

#include "config/cson/CSONError.h"
#include "config/cson/CSONValue.h"

#include <string>
#include <string_view>
#include <tl/expected.hpp>

namespace tavrel {

/// The one reader of configuration text: settings, key bindings, modes, themes and project files.
///
/// Holds no state and touches no file; may be used on any thread. The text is UTF-8 and ends at its
/// first NUL byte. Structure comes from braces and brackets alone, commas are optional, a bare word
/// is a string, and an object may hold one value without a key, which becomes the member "#".
class TavrelCSONBackend {
public:
    /// The text as compact JSON: members and elements stand in the order of the source, two members
    /// of one name are both kept. Depth of nesting is limited by memory alone. Costs O(bytes).
    static tl::expected<std::string, CSONError> normalizedJSONFromCSON(std::string_view text);

    /// The tree of values of the text. Fails as `normalizedJSONFromCSON` does, and where JSON
    /// refuses the normalised text: malformed or overlarge numbers, raw control characters in a
    /// string. Nesting deeper than `CSONValue::maximumDepth` is refused too. Of two members of one
    /// name the last one counts.
    static tl::expected<CSONValue, CSONError> parseCSON(std::string_view text);
};

}  // namespace tavrel
