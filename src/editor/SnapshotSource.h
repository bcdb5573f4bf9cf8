#pragma once

#include "editor/TextSnapshot.h"
#include "highlight/TextSource.h"

#include <utility>

namespace tavrel {

/// A snapshot as a source for the scanners: windows are decoded from its blocks, whatever their
/// size. A value; one for each thread, or one behind which nothing changes.
class SnapshotSource final : public TextSource {
public:
    explicit SnapshotSource(TextSnapshot text) : text_(std::move(text)), length_(text_.length()) {}

    std::size_t length() const override { return length_; }

    /// Costs O(log n) and the filling of `scratch`.
    TextWindow windowAt(std::size_t location, std::span<char16_t> scratch) const override;

private:
    TextSnapshot text_;
    std::size_t length_;
};

}  // namespace tavrel
