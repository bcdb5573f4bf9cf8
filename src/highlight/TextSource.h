#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace tavrel {

/// Some units of a text that lie side by side in memory, and where in the text they start.
struct TextWindow {
    const char16_t* units = nullptr;
    std::size_t start = 0;
    std::size_t length = 0;
};

/// Where a scanner's text comes from: a string, or the blocks of a storage.
class TextSource {
public:
    virtual ~TextSource() = default;

    /// In UTF-16 code units.
    virtual std::size_t length() const = 0;

    /// A window that holds the unit at `location`, which lies in the text. It is the text's own
    /// memory or is decoded into `scratch`, and is valid until `scratch` changes.
    virtual TextWindow windowAt(std::size_t location, std::span<char16_t> scratch) const = 0;
};

/// A string as a source: one window. Borrows the string.
class PlainTextSource final : public TextSource {
public:
    explicit PlainTextSource(std::u16string_view text) : text_(text) {}

    std::size_t length() const override { return text_.size(); }
    TextWindow windowAt(std::size_t, std::span<char16_t>) const override
    {
        return {text_.data(), 0, text_.size()};
    }

private:
    std::u16string_view text_;
};

}  // namespace tavrel
