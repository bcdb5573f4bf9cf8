#pragma once

#include "editor/WordCounts.h"

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tavrel {

class FileSystem;

/// The words of a project's files, by language. A value: built away from the main thread, and
/// handed over whole.
class CompletionIndex {
public:
    static constexpr std::size_t maximumFileCount = 50'000;
    static constexpr std::size_t maximumFileBytes = 1'000'000;

    /// Reads the files, at most `maximumFileCount` of them. `languageByExtension` maps an extension
    /// in small letters to the id of its language; all others are "text". A file that is too large,
    /// cannot be read or is no UTF-8 is passed over. Stops early where `isCancelled` says so, with
    /// what it has. Any thread.
    static CompletionIndex build(FileSystem& fileSystem,
                                 const std::vector<std::filesystem::path>& files,
                                 const std::map<std::string, std::string>& languageByExtension,
                                 const std::function<bool()>& isCancelled = {});

    /// The words of one language; none for an id that is not there. Lives as long as the index.
    const WordCounts& wordsForLanguage(std::string_view id) const;

private:
    std::map<std::string, WordCounts, std::less<>> wordsByLanguage_;
};

/// Adds the words of a UTF-8 text to `words`.
void countWords(std::string_view utf8, WordCounts& words);

}  // namespace tavrel
