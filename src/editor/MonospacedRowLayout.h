#pragma once

#include "editor/RowLayout.h"
#include "editor/TextSnapshot.h"

#include <cstddef>
#include <functional>

namespace tavrel {

/// Rows without a window: every character is one column wide and a tab reaches the next tab stop.
///
/// Lines wrap behind the last blank that fits into `columnWidth` columns, or inside a word that is
/// longer than a row; blanks at the end of a row may hang over. Stands in for the view's layout
/// where there is no view. A question costs time in proportion to the line.
class MonospacedRowLayout final : public RowLayout {
public:
    struct Metrics {
        std::size_t columnWidth = 80;
        std::size_t tabWidth = 2;
        std::size_t rowsPerPage = 50;
    };

    /// `text` gives the text as it is at each question.
    MonospacedRowLayout(std::function<TextSnapshot()> text, Metrics metrics);

    TextRange rowAt(std::size_t location) const override;
    double xAt(std::size_t location) const override;
    std::size_t locationAt(TextRange row, double x) const override;
    std::size_t rowsPerPage() const override { return metrics_.rowsPerPage; }

private:
    struct Character;
    class Characters;

    std::size_t nextRowStart(Characters& characters, std::size_t rowStart) const;
    std::size_t columnBehind(std::size_t column, const Character& character) const;

    std::function<TextSnapshot()> text_;
    Metrics metrics_;
};

}  // namespace tavrel
