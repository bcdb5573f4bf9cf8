#pragma once

#include "config/cson/CSONToken.h"

#include <string>
#include <string_view>

namespace tavrel {

/// The text of a word or string with its backslash sequences replaced by what they stand for.
std::string unescapedText(const CSONToken& token);

/// The same for the raw text of a string; `text` does not end in a lone backslash.
/// `appendRun(bytes)` receives bytes that stand for themselves, `appendByte(byte)` each other one.
template<class AppendRun, class AppendByte>
void unescape(std::string_view text, AppendRun appendRun, AppendByte appendByte)
{
    const char* position = text.data();
    const char* const end = position + text.size();
    while (position != end) {
        const char* stop = position;
        while (stop != end && *stop != '\\' && *stop != '\n' && *stop != '\r' && *stop != '\t')
            ++stop;
        appendRun(std::string_view(position, static_cast<std::size_t>(stop - position)));
        position = stop;
        if (position == end)
            return;
        if (*position != '\\') {
            appendByte(*position++);
            continue;
        }
        constexpr std::string_view letters = "bfnrt";
        constexpr std::string_view meanings = "\b\f\n\r\t";
        const std::size_t letter = letters.find(position[1]);
        appendByte(letter == std::string_view::npos ? position[1] : meanings[letter]);
        position += 2;
    }
}

/// Whether the bytes are UTF-8, by the strict rules: no surrogates, no overlong forms.
bool isUTF8(std::string_view text);

}  // namespace tavrel
