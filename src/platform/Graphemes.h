#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

struct UBreakIterator;

namespace tavrel {

/// The user-perceived characters of a text: where a cursor may stand between its units.
///
/// Borrows the text, which must outlive this object and stay the same. A boundary is an offset in
/// UTF-16 units; 0 and the length are always boundaries, also in an empty text. Offsets past the
/// end count as the end.
///
/// An answer looks at no more than `maximumReach` units to each side, so its cost does not grow
/// with the text; a cluster longer than that is cut. Between plain letters it is a comparison of
/// two units. One thread at a time.
class Graphemes {
public:
    static constexpr std::size_t maximumReach = 1024;

    explicit Graphemes(std::u16string_view text);
    ~Graphemes();
    Graphemes(Graphemes&&) noexcept;
    Graphemes& operator=(Graphemes&&) noexcept;

    bool isBoundary(std::size_t offset);

    /// The first boundary behind `offset`; the length when there is none.
    std::size_t next(std::size_t offset);

    /// The last boundary before `offset`; 0 when there is none.
    std::size_t previous(std::size_t offset);

    /// `offset` where it is a boundary, else the nearer one; the one before where both are as near.
    std::size_t nearest(std::size_t offset);

    /// Number of clusters. Walks the whole text.
    std::size_t count();

private:
    struct Close {
        void operator()(UBreakIterator* iterator) const;
    };

    bool isCertainBoundary(std::size_t offset) const;
    void look(std::size_t offset);

    std::u16string_view text_;
    std::unique_ptr<UBreakIterator, Close> iterator_;  // Made when the first hard case comes up.
    std::size_t windowStart_ = 0;                      // What the iterator sees of the text.
    std::size_t windowEnd_ = 0;
};

}  // namespace tavrel
