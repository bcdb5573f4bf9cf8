#pragma once

#include "platform/Pasteboard.h"

namespace tavrel {

/// The desktop's clipboard. That a text is whole lines travels beside it in a type of our own, so
/// it survives between two windows and is lost where another program copies the text again.
class QtPasteboard final : public Pasteboard {
public:
    std::optional<PasteboardContents> contents() const override;
    void setContents(PasteboardContents contents) override;
};

}  // namespace tavrel
