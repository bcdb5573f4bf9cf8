#pragma once

#include "highlight/PunctuationSet.h"
#include "highlight/ScannedText.h"
#include "highlight/TokenPainter.h"
#include "highlight/WordTable.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace tavrel {

/// A place between two tokens, and all that a scanner knows there: going on from it paints the same
/// as going on without a break. `flags` mean something to the scanner alone; a text begins with 0.
struct ScanPoint {
    std::size_t location = 0;  // In the scanned text.
    std::uint32_t flags = 0;
    bool operator==(const ScanPoint&) const = default;
};

/// What a scanner works on. Everything is borrowed.
struct ScanJob {
    ScannedText& text;
    TokenPainter& painter;
    const WordTable& words;
    const PunctuationSet& punctuation;
    std::size_t until = 0;  // The scan ends at the first token boundary at or past it.
};

/// Paints the tokens from `from` on. Gives back where the next token would begin.
using ScanFunction = ScanPoint (*)(const ScanJob& job, ScanPoint from);

/// Words that share a role, separated by spaces.
struct WordList {
    std::string_view words;
    WordRoles roles = 0;
};

/// A scanner and the words that it knows by itself.
struct Scanner {
    ScanFunction scan = nullptr;
    std::span<const WordList> words;
};

/// The scanner of the language with this id, or null where its mode's data alone must do.
const Scanner* scannerFor(std::string_view languageId);

extern const Scanner cppScanner;
extern const Scanner javascriptScanner;
extern const Scanner pythonScanner;
extern const Scanner swiftScanner;
extern const Scanner rustScanner;
extern const Scanner perlScanner;
extern const Scanner javaScanner;
extern const Scanner goScanner;
extern const Scanner csharpScanner;
extern const Scanner kotlinScanner;
extern const Scanner htmlScanner;
extern const Scanner cssScanner;
extern const Scanner markdownScanner;
extern const Scanner shellScanner;
extern const Scanner sqlScanner;
extern const Scanner yamlScanner;
extern const Scanner tomlScanner;
extern const Scanner dataScanner;

}  // namespace tavrel
