#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tavrel {

/// How often each word occurs: UTF-8 words in one hash table, listed by their first letter.
///
/// A value. Made for millions of additions: one costs a look-up, and words lie in one string.
class WordCounts {
public:
    /// Adds `count` occurrences of `word`, which is not empty. A negative count takes some back,
    /// at most those that are there.
    void add(std::string_view word, std::int64_t count);
    void clear() { *this = WordCounts(); }

    /// How often `word` has been added.
    std::uint64_t count(std::string_view word) const;
    /// The number of words that occur, and of those that did and no longer do.
    std::size_t size() const { return entries_.size() - vanished_; }
    std::size_t vanishedCount() const { return vanished_; }

    /// Calls `visit(word, count)` for each word that occurs and whose first byte, in small letters
    /// if it is an ASCII letter, is `first`, in no particular order.
    template<typename Visit>
    void forEachBeginningWith(unsigned char first, Visit visit) const
    {
        for (const std::uint32_t index : byFirst_[lowercasedByte(first)]) {
            const Entry& entry = entries_[index];
            if (entry.count > 0)
                visit(wordOf(entry), entry.count);
        }
    }

private:
    struct Entry {
        std::size_t start;  // In `letters_`.
        std::uint32_t length;
        std::uint32_t hash;
        std::uint64_t count;
    };
    static constexpr std::uint32_t noEntry = UINT32_MAX;

    static unsigned char lowercasedByte(unsigned char byte)
    {
        return byte >= 'A' && byte <= 'Z' ? static_cast<unsigned char>(byte + ('a' - 'A')) : byte;
    }
    static std::uint32_t hashOf(std::string_view word);
    std::string_view wordOf(const Entry& entry) const
    {
        return std::string_view(letters_).substr(entry.start, entry.length);
    }
    /// The slot that holds `word`, or the free one where it belongs.
    std::size_t slotOf(std::string_view word, std::uint32_t hash) const;
    void grow();

    std::string letters_;  // Of all words, one after another.
    std::vector<Entry> entries_;
    std::vector<std::uint32_t> slots_;  // Indices of entries; a power of two, at most half full.
    std::array<std::vector<std::uint32_t>, 256> byFirst_;
    std::size_t vanished_ = 0;
};

}  // namespace tavrel
