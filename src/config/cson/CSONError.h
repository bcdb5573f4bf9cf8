#pragma once

#include <string>

namespace tavrel {

/// Why a CSON text gave no result.
///
/// `domain` is "TavrelCSONBackend" for what this reader found (code 1: the text is malformed; code
/// 2: the normalised text is not UTF-8) and "TavrelJSONReader" for what the JSON reader behind it
/// refused. `message` is valid UTF-8, for a person to read.
struct CSONError {
    std::string domain;
    int code = 0;
    std::string message;
    bool operator==(const CSONError&) const = default;
};

}  // namespace tavrel
