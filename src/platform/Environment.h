#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tavrel {

/// The environment variables that a program is started with. A value.
class Environment {
public:
    Environment() = default;

    /// A copy of what this process was started with, without the later of two equal names.
    static Environment ofThisProcess();

    /// The value of `name`, absent where it is not set.
    std::optional<std::string> value(std::string_view name) const;

    /// Sets `name` to `value`. A name that is empty or holds "=" or NUL cannot be set, nor can a
    /// value with NUL: the call then does nothing.
    void set(std::string_view name, std::string_view value);
    void remove(std::string_view name);

    /// One "NAME=value" each, in no particular order.
    const std::vector<std::string>& entries() const { return entries_; }

private:
    std::vector<std::string>::const_iterator find(std::string_view name) const;

    std::vector<std::string> entries_;
};

}  // namespace tavrel
