#include "platform/RegularExpression.h"
#include "platform/ReplacementTemplate.h"

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

/// Cuts the next NUL-terminated piece off `bytes`; each byte is one unit, 0x80 a high surrogate
/// and 0x81 a low one, so that pairs and lone halves both come up.
std::u16string takePiece(std::string_view& bytes)
{
    const std::size_t end = std::min(bytes.find('\0'), bytes.size());
    std::u16string piece;
    for (const char byte : bytes.substr(0, end)) {
        const auto value = static_cast<unsigned char>(byte);
        piece += value == 0x80   ? char16_t{0xD83D}
                 : value == 0x81 ? char16_t{0xDE00}
                                 : static_cast<char16_t>(value);
    }
    bytes.remove_prefix(std::min(end + 1, bytes.size()));
    return piece;
}

}  // namespace

/// A byte of options, then the pattern, the replacement and the text, each ended by NUL.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0)
        return 0;
    const unsigned options = data[0];
    std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::u16string pattern = takePiece(bytes);
    const std::u16string replacement = takePiece(bytes);
    const std::u16string text = takePiece(bytes);

    const auto literal = RegularExpression::compile(escapedPattern(text));
    require(literal.has_value() == !text.empty());
    if (literal) {
        const auto match = firstMatch(*literal, text, {0, text.size()});
        require(match && *match && (*match)->range() == TextRange{0, text.size()});
        std::u16string same;
        appendExpandedTemplate(escapedTemplate(replacement), **match, text, same);
        require(same == replacement);
    }

    const auto expression =
        RegularExpression::compile(pattern, {.caseInsensitive = (options & 1) != 0,
                                             .allowCommentsAndWhitespace = (options & 2) != 0,
                                             .dotMatchesLineSeparators = (options & 4) != 0,
                                             .anchorsMatchLines = (options & 8) != 0});
    if (!expression) {
        require(!expression.error().message.empty());
        require(expression.error().location <= pattern.size());
        return 0;
    }
    RegularExpressionMatcher matcher(*expression,
                                     {.steps = 2, .time = std::chrono::milliseconds(50)});
    matcher.setText(text, {(options >> 4) % (text.size() + 1), text.size()},
                    {.anchoring = (options & 0x40) == 0, .transparent = (options & 0x80) != 0});
    std::size_t last = 0;
    std::u16string result;
    while (matcher.next() == MatchOutcome::match) {
        const RegularExpressionMatch match = matcher.match();
        for (const auto& group : match.groups)
            require(!group || group->end() <= text.size());
        require(match.range().end() >= last);
        last = match.range().end();
        appendExpandedTemplate(replacement, match, text, result);
        if (result.size() > 1 << 20)
            result.clear();
    }
    return 0;
}
