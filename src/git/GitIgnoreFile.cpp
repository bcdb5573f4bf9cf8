#include "git/GitIgnoreFile.h"

#include "platform/Unicode.h"
#include "platform/Utf8.h"

#include <algorithm>

namespace tavrel {
namespace {

/// The path as rules see it. `repaired` holds its bytes where they had to be changed.
IgnorePath prepared(std::string_view path, std::string& repaired)
{
    IgnorePath result{path, path, true};
    const bool isSimple = std::all_of(path.begin(), path.end(), [](char byte) {
        return static_cast<unsigned char>(byte) < 0x80 && !isNewline(static_cast<char32_t>(byte));
    });
    if (!isSimple) {
        if (!isValidUtf8(path)) {
            repaired = utf8FromUtf16(utf16FromUtf8(path));
            result.path = repaired;
        }
        result.isPlain = isPlainPath(result.path);
    }
    result.name = result.path.substr(result.path.rfind('/') + 1);
    return result;
}

}  // namespace

GitIgnoreFile::GitIgnoreFile(std::string_view baseFolder, std::u16string_view text)
    : base_(baseFolder)
{
    if (!base_.ends_with('/'))
        base_ += '/';
    while (!text.empty()) {
        const auto end =
            std::find_if(text.begin(), text.end(), [](char16_t unit) { return isNewline(unit); });
        const auto length = static_cast<std::size_t>(end - text.begin());
        if (auto rule = GitIgnoreRule::make(text.substr(0, length)))
            rules_.push_back(std::move(*rule));
        text.remove_prefix(std::min(length + 1, text.size()));
    }
}

std::optional<bool> GitIgnoreFile::decision(std::string_view path, bool isDirectory) const
{
    if (rules_.empty() || !path.starts_with(base_))
        return std::nullopt;
    std::string repaired;
    const IgnorePath relative = prepared(path.substr(base_.size()), repaired);
    for (auto rule = rules_.rbegin(); rule != rules_.rend(); ++rule) {
        if ((isDirectory || !rule->directoryOnly()) && rule->matches(relative))
            return !rule->negated();
    }
    return std::nullopt;
}

bool isIgnored(std::string_view path, bool isDirectory, const GitIgnoreChain& chain)
{
    // The deepest file with a decision has the last word.
    for (auto file = chain.rbegin(); file != chain.rend(); ++file) {
        if (const auto decision = (*file)->decision(path, isDirectory))
            return *decision;
    }
    return false;
}

}  // namespace tavrel
