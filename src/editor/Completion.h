#pragma once

#include "config/LanguageMode.h"
#include "editor/TextSnapshot.h"
#include "editor/WordCounts.h"
#include "platform/TextRange.h"

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tavrel {

/// Where the candidates come from. Everything is borrowed.
struct CompletionSources {
    const WordCounts& bufferWords;
    const WordCounts* projectWords = nullptr;  // Null where the project has not been read.
    const std::set<std::string>& keywords;
    const std::set<std::string>& types;
};

/// The keywords that a language offers: those of its mode, and for C++ the built-in ones too.
std::set<std::string> completionKeywords(const LanguageMode& language);

/// What a completion at `location` would replace: the "_", letters, marks and numbers before it.
/// Half of a surrogate pair ends it.
TextRange partialWordRange(const TextSnapshot& text, std::size_t location);

/// The words that begin like `partial`, whatever the case, the likeliest first; at most 50.
///
/// Those that begin with `partial` as it is written come first, then those with the higher score:
/// 100 for each occurrence in the buffer, 1 for each in the project, 500 for a keyword, 400 for a
/// type. `partial` itself is never one.
std::vector<std::u16string> completionCandidates(std::u16string_view partial,
                                                 const CompletionSources& sources);

}  // namespace tavrel
