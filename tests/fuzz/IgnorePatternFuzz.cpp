#include "git/GitIgnoreFile.h"
#include "platform/RegularExpression.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

using namespace tavrel;

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

/// The path as one below a folder can be: no empty component, no NUL, valid UTF-8.
std::string relativePath(std::string_view bytes)
{
    std::string path;
    for (const char byte : utf8FromUtf16(utf16FromUtf8(bytes))) {
        if (byte != '\0' && (byte != '/' || (!path.empty() && path.back() != '/')))
            path += byte;
    }
    while (path.ends_with('/'))
        path.pop_back();
    return path;
}

}  // namespace

/// The text of an ignore file, ended by NUL, and a path. Every rule must answer as the regular
/// expression that defines it, unless that takes too long, and the file as its last matching rule.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::size_t end = std::min(bytes.find('\0'), bytes.size());
    const std::string path = relativePath(bytes.substr(std::min(end + 1, bytes.size())));
    if (path.empty())
        return 0;
    const std::u16string text = utf16FromUtf8(path);
    const GitIgnoreFile file("/r", utf16FromUtf8(bytes.substr(0, end)));
    const IgnorePath asked{path, std::string_view(path).substr(path.rfind('/') + 1),
                           isPlainPath(path)};
    std::optional<bool> expected;
    for (const GitIgnoreRule& rule : file.rules()) {
        const bool matches = rule.matches(asked);
        const auto compiled = RegularExpression::compile(rule.regex());
        require(compiled.has_value());
        RegularExpressionMatcher matcher(*compiled, {.steps = 10});
        matcher.setText(text);
        const MatchOutcome outcome = matcher.next();
        require(outcome == MatchOutcome::stopped || matches == (outcome == MatchOutcome::match));
        if (matches)
            expected = !rule.negated();
    }
    require(file.decision("/r/" + path, true) == expected);
    static_cast<void>(file.decision(bytes, false));
    return 0;
}
