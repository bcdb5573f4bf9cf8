#include "terminal/PasteText.h"

#include "platform/Utf8.h"

namespace tavrel {
namespace {

constexpr std::string_view pasteBegins = "\x1B[200~";
constexpr std::string_view pasteEnds = "\x1B[201~";

/// The bytes without any mark of the end. What an erased mark leaves behind may join into another
/// one, so the end of what is kept is looked at after each byte.
std::string withoutEndMarks(std::string_view bytes)
{
    std::string kept;
    kept.reserve(bytes.size());
    for (const char byte : bytes) {
        kept.push_back(byte);
        if (byte == pasteEnds.back() && kept.ends_with(pasteEnds))
            kept.resize(kept.size() - pasteEnds.size());
    }
    return kept;
}

}  // namespace

std::string pastedBytes(std::u16string_view text, PasteMode mode)
{
    std::u16string lines;
    lines.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n')
            continue;
        lines.push_back(text[i] == u'\n' ? u'\r' : text[i]);
    }
    std::string bytes = utf8FromUtf16(lines);
    if (mode == PasteMode::plain)
        return bytes;
    std::string result(pasteBegins);
    result += withoutEndMarks(bytes);
    result += pasteEnds;
    return result;
}

}  // namespace tavrel
