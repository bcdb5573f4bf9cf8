#pragma once

#include "highlight/TextSource.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace tavrel {

/// A string in blocks: every window is one block, and each is counted.
class BlockSource final : public TextSource {
public:
    BlockSource(std::u16string_view text, std::size_t blockSize)
        : text_(text), blockSize_(blockSize)
    {
    }

    std::size_t length() const override { return text_.size(); }

    TextWindow windowAt(std::size_t location, std::span<char16_t> scratch) const override
    {
        ++windowCount_;
        const std::size_t start = location - location % blockSize_;
        const std::u16string_view block = text_.substr(start, std::min(blockSize_, scratch.size()));
        // Copied, so that reading a window that has gone shows.
        std::copy(block.begin(), block.end(), scratch.begin());
        return {scratch.data(), start, block.size()};
    }

    std::size_t windowCount() const { return windowCount_; }

private:
    std::u16string_view text_;
    std::size_t blockSize_;
    mutable std::size_t windowCount_ = 0;
};

}  // namespace tavrel
