// Any text in a language without a scanner, and in none.

#include "HighlightCheck.h"

using namespace tavrel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const LexicalHighlighter generic(smallMode("unknown"));
    static const LexicalHighlighter plain(LanguageMode::plain());
    if (size > 0)
        checkHighlighter(data[0] / 8 % 2 ? plain : generic, data, size);
    return 0;
}
