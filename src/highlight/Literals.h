#pragma once

#include "highlight/ScannedText.h"

#include <cstddef>

namespace tavrel {

// Where the tokens that many languages share end. Each takes a location in the text and gives one
// from there to the text's length. A token that is never closed runs to the end of the text.

enum class LineFeed { ends, isPart };
enum class Backslash { hidesOne, isPlain };

/// A comment "/*" at `location`: behind the first "*/".
std::size_t blockCommentEnd(ScannedText& text, std::size_t location);
/// The same where each "/*" inside wants a "*/" of its own.
std::size_t nestedCommentEnd(ScannedText& text, std::size_t location);

/// A literal whose opening quote is at `location`: behind the same quote. A line feed that ends it
/// is not part of it.
std::size_t quotedEnd(ScannedText& text, std::size_t location, LineFeed lineFeed,
                      Backslash backslash = Backslash::hidesOne);

/// Whether three of the same quote stand at `location`.
bool hasTripleQuote(ScannedText& text, std::size_t location);
/// A literal whose three opening quotes are at `location`: behind three of the same.
std::size_t tripleQuotedEnd(ScannedText& text, std::size_t location,
                            Backslash backslash = Backslash::hidesOne);

/// Behind the first `quotes` times `"` followed by `hashes` times "#" from `location` on, with no
/// escapes.
std::size_t hashedQuoteEnd(ScannedText& text, std::size_t location, std::size_t quotes,
                           std::size_t hashes, LineFeed lineFeed);

/// Behind the closing bracket that balances the `open` one at `location`.
std::size_t balancedEnd(ScannedText& text, std::size_t location, char16_t open, char16_t close);

}  // namespace tavrel
