#pragma once

#include "editor/TextSnapshot.h"
#include "platform/TextRange.h"

#include <cstddef>

namespace tavrel {

/// What a click selects, by how often the button went down in one place.
enum class SelectionUnit {
    character,
    word,
    line,
};

/// The stretch that a double click at `location` selects: the word there, else the run of blanks or
/// of other signs of the same kind; never past the ends of the line, and nothing on an empty line.
TextRange wordSelectionAt(const TextSnapshot& text, std::size_t location);

/// The stretch of one unit of selection at `location`: nothing, a word, or a line with its
/// terminator.
TextRange selectionUnitAt(const TextSnapshot& text, std::size_t location, SelectionUnit unit);

/// A selection that is being made: one end stays, the other follows the mouse or the keys.
class SelectionDrag {
public:
    SelectionDrag() = default;
    /// Begins with one unit at `location`.
    SelectionDrag(const TextSnapshot& text, std::size_t location, SelectionUnit unit);
    /// Goes on from a selection that exists: the end of it that lies farther from `location` stays.
    static SelectionDrag extending(TextRange selection, std::size_t location);

    /// The selection once the moving end has reached `location`, in whole units.
    TextRange movedTo(const TextSnapshot& text, std::size_t location);

    TextRange range() const { return range_; }
    /// Where the moving end stands.
    std::size_t head() const { return head_; }
    /// Where the other one stands.
    std::size_t anchor() const { return head_ == range_.location ? range_.end() : range_.location; }

private:
    TextRange origin_;  // The unit that stays selected.
    TextRange range_;
    std::size_t head_ = 0;
    SelectionUnit unit_ = SelectionUnit::character;
};

}  // namespace tavrel
