// Any text in each language of code.

#include "HighlightCheck.h"

#include <vector>

using namespace tavrel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const std::vector<LexicalHighlighter> highlighters = [] {
        std::vector<LexicalHighlighter> made;
        for (const char* id : {"cpp", "javascript", "python", "swift", "rust", "perl", "java", "go",
                               "csharp", "kotlin"})
            made.emplace_back(smallMode(id));
        return made;
    }();
    if (size > 0)
        checkHighlighter(highlighters[data[0] / 8 % highlighters.size()], data, size);
    return 0;
}
