#pragma once

#include <optional>
#include <string>
#include <utility>

namespace tavrel {

/// What a copy puts on the pasteboard.
struct PasteboardContents {
    std::u16string text;
    /// The text is whole lines, copied with nothing selected; pasted, they go above the line.
    bool isWholeLines = false;

    bool operator==(const PasteboardContents&) const = default;
};

/// The place that copied text is kept in. Main thread only.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;
    /// Nothing where there is no text on it. Line ends come as they were put there.
    virtual std::optional<PasteboardContents> contents() const = 0;
    /// Replaces whatever was there.
    virtual void setContents(PasteboardContents contents) = 0;
};

/// A pasteboard of its own, which no other program sees.
class MemoryPasteboard final : public Pasteboard {
public:
    std::optional<PasteboardContents> contents() const override { return contents_; }
    void setContents(PasteboardContents contents) override { contents_ = std::move(contents); }

private:
    std::optional<PasteboardContents> contents_;
};

}  // namespace tavrel
