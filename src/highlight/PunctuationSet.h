#pragma once

#include <array>
#include <string>
#include <string_view>

namespace tavrel {

/// The characters that a mode calls punctuation.
class PunctuationSet {
public:
    explicit PunctuationSet(std::u16string_view characters = {})
    {
        for (const char16_t unit : characters) {
            if (unit < ascii_.size())
                ascii_[unit] = true;
            else
                others_.push_back(unit);
        }
    }

    bool contains(char16_t unit) const
    {
        return unit < ascii_.size() ? ascii_[unit] : others_.find(unit) != std::u16string::npos;
    }

private:
    std::array<bool, 128> ascii_{};
    std::u16string others_;  // Units beyond ASCII; few, if any.
};

}  // namespace tavrel
