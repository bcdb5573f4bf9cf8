#pragma once

#include "config/cson/CSONValue.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tavrel {

/// One thing to do: a name of `commandTable`, and what to do it with. Texts are UTF-8.
///
/// A value. Any name and any arguments may stand here; they come from the user's key map.
struct EditorCommand {
    std::string name;
    std::map<std::string, CSONValue, std::less<>> arguments;

    /// The argument as a whole number: a number without its fraction, a truth value as 1 or 0.
    /// `fallback` when it is absent or has another shape.
    std::int64_t integer(std::string_view argument, std::int64_t fallback) const;

    /// The argument as a truth value: a number is true unless it is 0. `fallback` as above.
    bool truth(std::string_view argument, bool fallback) const;

    bool operator==(const EditorCommand&) const = default;
};

using EditorCommandList = std::vector<EditorCommand>;

}  // namespace tavrel
