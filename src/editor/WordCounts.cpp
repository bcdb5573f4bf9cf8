#include "editor/WordCounts.h"

#include <algorithm>
#include <cstring>

namespace tavrel {

void WordCounts::add(std::string_view word, std::int64_t count)
{
    if (2 * (entries_.size() + 1) > slots_.size())
        grow();
    const std::uint32_t hash = hashOf(word);
    std::uint32_t& slot = slots_[slotOf(word, hash)];
    if (slot == noEntry) {
        if (count <= 0)
            return;
        slot = static_cast<std::uint32_t>(entries_.size());
        entries_.push_back({letters_.size(), static_cast<std::uint32_t>(word.size()), hash, 0});
        letters_ += word;
        byFirst_[lowercasedByte(static_cast<unsigned char>(word.front()))].push_back(slot);
        ++vanished_;  // Until it is counted, below.
    }
    std::uint64_t& present = entries_[slot].count;
    const bool occurred = present > 0;
    if (count > 0)
        present += static_cast<std::uint64_t>(count);
    else
        present -= std::min(present, std::uint64_t{0} - static_cast<std::uint64_t>(count));
    const bool occurs = present > 0;
    if (occurs != occurred)
        vanished_ += occurs ? std::size_t{0} - 1 : 1;
}

std::uint64_t WordCounts::count(std::string_view word) const
{
    if (slots_.empty() || word.empty())
        return 0;
    const std::uint32_t slot = slots_[slotOf(word, hashOf(word))];
    return slot == noEntry ? 0 : entries_[slot].count;
}

/// Takes the length and the first and last eight bytes in; what lies between tells few words apart
/// and would cost the most.
std::uint32_t WordCounts::hashOf(std::string_view word)
{
    std::uint64_t head = 0;
    std::uint64_t tail = 0;
    const std::size_t taken = std::min<std::size_t>(word.size(), 8);
    std::memcpy(&head, word.data(), taken);
    std::memcpy(&tail, word.data() + word.size() - taken, taken);
    std::uint64_t mixed = (head ^ word.size()) * 0x9E3779B97F4A7C15U;
    mixed = (mixed ^ (mixed >> 29U) ^ tail) * 0xBF58476D1CE4E5B9U;
    return static_cast<std::uint32_t>(mixed >> 32U);
}

std::size_t WordCounts::slotOf(std::string_view word, std::uint32_t hash) const
{
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t slot = hash & mask;; slot = (slot + 1) & mask) {
        if (slots_[slot] == noEntry)
            return slot;
        const Entry& entry = entries_[slots_[slot]];
        if (entry.hash == hash && wordOf(entry) == word)
            return slot;
    }
}

void WordCounts::grow()
{
    constexpr std::size_t fewest = 64;
    slots_.assign(std::max(fewest, 2 * slots_.size()), noEntry);
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t index = 0; index < entries_.size(); ++index) {
        std::size_t slot = entries_[index].hash & mask;
        while (slots_[slot] != noEntry)
            slot = (slot + 1) & mask;
        slots_[slot] = static_cast<std::uint32_t>(index);
    }
}

}  // namespace tavrel
