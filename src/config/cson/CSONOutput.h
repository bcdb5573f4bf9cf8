#pragma once

#include "config/cson/CSONToken.h"

#include <string_view>

namespace tavrel {

/// Where the parser puts what it finds, in the order of the source. The tokens and texts that
/// arrive are valid for the length of the call.
class CSONOutput {
public:
    virtual ~CSONOutput() = default;

    virtual void openMap() = 0;
    virtual void closeMap() = 0;
    virtual void openArray() = 0;
    virtual void closeArray() = 0;
    /// The name of the member whose value comes next: an `Identifier` or a `String`.
    virtual void key(const CSONToken& word) = 0;
    virtual void string(const CSONToken& word) = 0;
    /// The characters of a number token as written, which need not be a number.
    virtual void number(std::string_view written) = 0;
    virtual void boolean(bool value) = 0;
    virtual void null() = 0;
};

}  // namespace tavrel
