#pragma once

#include "highlight/CharacterClass.h"
#include "highlight/ScannedText.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tavrel {

/// What a word means to a scanner: bits, since one word may stand in several tables.
using WordRoles = std::uint16_t;

constexpr WordRoles keywordRole = 1;        // In the mode's keywords.
constexpr WordRoles typeRole = 2;           // In the mode's types, which are in small letters.
constexpr WordRoles builtinRole = 4;        // A keyword whatever the mode says.
constexpr WordRoles constantRole = 8;       // In small letters.
constexpr WordRoles declarationRole = 16;   // The word behind it names a class.
constexpr WordRoles functionRole = 32;      // The word behind it names a function.
constexpr WordRoles typeContextRole = 64;   // The word behind it names a type.
constexpr WordRoles beforeRegexRole = 128;  // A regular expression may follow it.
constexpr WordRoles callLikeRole = 256;     // Never a function, even before "(".

/// A word of ASCII characters in the scanned text.
struct ScannedWord {
    std::size_t location = 0;
    std::size_t length = 0;
    CharacterClasses classes = 0;  // Of all its characters together.
    char16_t first = 0;
    std::uint64_t head = 0;  // Characters 0 to 7 and 8 to 15, a byte each, the rest zero.
    std::uint64_t tail = 0;

    std::size_t end() const { return location + length; }

    /// Like `SomeClass`: an uppercase letter first, and a lowercase one in it.
    bool looksLikeClass() const
    {
        return (classesOf(first) & uppercaseClass) && (classes & lowercaseClass);
    }
    /// Like `SOME_MACRO` or `MAX`.
    bool looksLikeMacro() const
    {
        return length >= 2 && (classes & uppercaseClass) && !(classes & lowercaseClass) &&
               ((classes & underscoreClass) || length > 2);
    }
};

/// The word at `location`, which runs over the units in `classes`.
ScannedWord wordAt(ScannedText& text, std::size_t location, CharacterClasses classes);

/// The words that a language gives a meaning to. Read-only once it is filled; O(1) a look-up.
class WordTable {
public:
    struct Roles {
        WordRoles asWritten = 0;
        WordRoles lowered = 0;  // Of the word in small letters.

        bool isModeKeyword() const { return ((asWritten | lowered) & keywordRole) != 0; }
        bool isType() const { return (lowered & typeRole) != 0; }
        bool isConstant() const { return (lowered & constantRole) != 0; }
        bool has(WordRoles role) const { return (asWritten & role) != 0; }
    };

    WordTable();

    /// Adds `roles` to those of `word`, UTF-8. One that is not of ASCII is never found.
    void add(std::string_view word, WordRoles roles);

    Roles rolesOf(ScannedText& text, const ScannedWord& word) const;

private:
    struct Entry {
        std::uint64_t head = 0;
        std::uint64_t tail = 0;
        WordRoles roles = 0;  // 0 in a free entry.
    };

    std::size_t slotOf(std::uint64_t head, std::uint64_t tail) const;
    WordRoles find(std::uint64_t head, std::uint64_t tail) const;
    Roles rolesOfLongWord(ScannedText& text, const ScannedWord& word) const;
    void grow();

    std::vector<Entry> entries_;  // A power of two, at most half of them taken.
    std::size_t count_ = 0;
    unsigned shift_ = 0;  // What brings a hash to the size of the table.
    std::unordered_map<std::string, WordRoles> longWords_;  // Those of more than 16 characters.
    std::size_t longestWord_ = 0;
};

}  // namespace tavrel
