#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace tavrel {

/// What the CSON parser throws: a message and the position it speaks of, as in
/// "Expected value at 3:7". It never leaves the two operations of `TavrelCSONBackend`.
class ParserError : public std::runtime_error {
public:
    /// `line` and `column` count from 1, columns in bytes.
    ParserError(const std::string& message, std::uint64_t line, std::uint64_t column)
        : std::runtime_error(message + " at " + std::to_string(line) + ":" + std::to_string(column))
    {
    }
};

}  // namespace tavrel
