#include "editor/CompletionIndex.h"

#include "editor/WordScanner.h"
#include "platform/FileReader.h"
#include "platform/Unicode.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <cstdint>

namespace tavrel {

namespace {

std::string lowercasedExtension(const std::filesystem::path& file)
{
    const std::string extension = file.extension().native();
    if (extension.empty())
        return {};
    return utf8FromUtf16(lowercased(utf16FromUtf8(extension.substr(1))));
}

}  // namespace

CompletionIndex
CompletionIndex::build(FileSystem& fileSystem, const std::vector<std::filesystem::path>& files,
                       const std::map<std::string, std::string>& languageByExtension,
                       const std::function<bool()>& isCancelled)
{
    CompletionIndex index;
    const std::size_t count = std::min(files.size(), maximumFileCount);
    for (std::size_t number = 0; number < count; ++number) {
        if (isCancelled && isCancelled())
            break;
        const auto bytes = readFile(fileSystem, files[number], maximumFileBytes);
        if (!bytes || !isValidUtf8(*bytes))
            continue;
        const auto language = languageByExtension.find(lowercasedExtension(files[number]));
        const bool isKnown = language != languageByExtension.end();
        countWords(*bytes, index.wordsByLanguage_[isKnown ? language->second : "text"]);
    }
    return index;
}

const WordCounts& CompletionIndex::wordsForLanguage(std::string_view id) const
{
    static const WordCounts none;
    const auto found = wordsByLanguage_.find(id);
    return found != wordsByLanguage_.end() ? found->second : none;
}

void countWords(std::string_view utf8, WordCounts& words)
{
    WordScanner scanner([&words](std::string_view word) { words.add(word, 1); });
    scanner.scan(reinterpret_cast<const std::uint8_t*>(utf8.data()), utf8.size());
    scanner.finish();
}

}  // namespace tavrel
