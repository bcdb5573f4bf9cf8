// Any text in each language of markup and data.

#include "HighlightCheck.h"

#include <vector>

using namespace tavrel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const std::vector<LexicalHighlighter> highlighters = [] {
        std::vector<LexicalHighlighter> made;
        for (const char* id : {"html", "css", "markdown", "shell", "sql", "yaml", "toml", "json"})
            made.emplace_back(smallMode(id));
        return made;
    }();
    if (size > 0)
        checkHighlighter(highlighters[data[0] / 8 % highlighters.size()], data, size);
    return 0;
}
