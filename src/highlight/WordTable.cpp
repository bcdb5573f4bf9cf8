#include "highlight/WordTable.h"

#include <algorithm>

namespace tavrel {
namespace {

constexpr std::size_t keyLength = 16;
constexpr std::size_t smallestTable = 64;

/// The same bytes with the uppercase letters of ASCII in lower case.
std::uint64_t loweredBytes(std::uint64_t bytes)
{
    constexpr std::uint64_t each = 0x0101'0101'0101'0101;
    // The bytes are below 0x80, so no sum carries into the next one.
    const std::uint64_t fromA = bytes + each * (0x80 - 'A');
    const std::uint64_t pastZ = bytes + each * (0x7F - 'Z');
    return bytes | ((fromA & ~pastZ & (each * 0x80)) >> 2);
}

std::pair<std::uint64_t, std::uint64_t> keyOf(std::string_view word)
{
    std::uint64_t head = 0;
    std::uint64_t tail = 0;
    for (std::size_t i = 0; i < word.size(); ++i) {
        const std::uint64_t byte = static_cast<unsigned char>(word[i]);
        (i < 8 ? head : tail) |= byte << (8 * (i % 8));
    }
    return {head, tail};
}

}  // namespace

ScannedWord wordAt(ScannedText& text, std::size_t location, CharacterClasses classes)
{
    ScannedWord word;
    word.location = location;
    word.first = text.unitAt(location);
    std::size_t length = 0;
    CharacterClasses seen = 0;
    for (;;) {
        const std::u16string_view units = text.piece(location + length);
        std::size_t i = 0;
        for (; i < units.size(); ++i) {
            const CharacterClasses unitClasses = classesOf(units[i]);
            if (!(unitClasses & classes))
                break;
            seen |= unitClasses;
            const std::size_t index = length + i;
            if (index < 8)
                word.head |= std::uint64_t{units[i]} << (8 * index);
            else if (index < keyLength)
                word.tail |= std::uint64_t{units[i]} << (8 * (index - 8));
        }
        length += i;
        if (i < units.size() || units.empty())
            break;
    }
    word.length = length;
    word.classes = seen;
    return word;
}

WordTable::WordTable()
{
    entries_.resize(smallestTable);
    shift_ = 64 - 6;
}

void WordTable::add(std::string_view word, WordRoles roles)
{
    if (word.empty() || word.find('\0') != std::string_view::npos)
        return;
    longestWord_ = std::max(longestWord_, word.size());
    if (word.size() > keyLength) {
        longWords_[std::string(word)] |= roles;
        return;
    }
    if (2 * (count_ + 1) > entries_.size())
        grow();
    const auto [head, tail] = keyOf(word);
    Entry& entry = entries_[slotOf(head, tail)];
    count_ += entry.roles == 0;
    entry.head = head;
    entry.tail = tail;
    entry.roles |= roles;
}

WordTable::Roles WordTable::rolesOf(ScannedText& text, const ScannedWord& word) const
{
    if (word.length > longestWord_)
        return {};
    if (word.length > keyLength)
        return rolesOfLongWord(text, word);
    Roles roles;
    roles.asWritten = find(word.head, word.tail);
    roles.lowered = word.classes & uppercaseClass
                        ? find(loweredBytes(word.head), loweredBytes(word.tail))
                        : roles.asWritten;
    return roles;
}

/// The slot that holds the key, or the free one where it belongs.
std::size_t WordTable::slotOf(std::uint64_t head, std::uint64_t tail) const
{
    const std::uint64_t hash = (head ^ (tail * 0x9E37'79B9'7F4A'7C15)) * 0xD6E8'FEB8'6659'FD93;
    std::size_t slot = hash >> shift_;
    while (entries_[slot].roles != 0 &&
           (entries_[slot].head != head || entries_[slot].tail != tail))
        slot = (slot + 1) & (entries_.size() - 1);
    return slot;
}

WordRoles WordTable::find(std::uint64_t head, std::uint64_t tail) const
{
    return entries_[slotOf(head, tail)].roles;
}

WordTable::Roles WordTable::rolesOfLongWord(ScannedText& text, const ScannedWord& word) const
{
    std::string written;
    std::string lowered;
    for (std::size_t i = 0; i < word.length; ++i) {
        const char16_t unit = text.unitAt(word.location + i);
        written.push_back(static_cast<char>(unit));
        lowered.push_back(static_cast<char>(classesOf(unit) & uppercaseClass ? unit + 32 : unit));
    }
    const auto rolesIn = [&](const std::string& key) {
        const auto found = longWords_.find(key);
        return found == longWords_.end() ? WordRoles{0} : found->second;
    };
    return {rolesIn(written), rolesIn(lowered)};
}

void WordTable::grow()
{
    std::vector<Entry> old(entries_.size() * 2);
    old.swap(entries_);
    --shift_;
    for (const Entry& entry : old) {
        if (entry.roles != 0)
            entries_[slotOf(entry.head, entry.tail)] = entry;
    }
}

}  // namespace tavrel
