#include "highlight/GenericScan.h"

#include "platform/Utf8.h"

#include <utility>

namespace tavrel {

GenericScan::GenericScan(const LanguageMode& mode)
{
    for (const std::string& delimiter : mode.stringDelimiters)
        add(makeStringPass(utf16FromUtf8(delimiter)));
    for (const std::string& marker : mode.lineComments)
        add(makeLineCommentPass(utf16FromUtf8(marker)));
    for (const auto& [open, close] : mode.blockComments)
        add(makeBlockCommentPass(utf16FromUtf8(open), utf16FromUtf8(close)));
    add(makeNumberPass());
    if (!mode.keywords.empty())
        add(makeKeywordPass(mode.keywords));
    if (!mode.punctuation.empty())
        add(makePunctuationPass(utf16FromUtf8(mode.punctuation)));
}

void GenericScan::run(std::u16string_view text, TokenCanvas& canvas) const
{
    for (const GenericPassPtr& pass : passes_)
        pass->run(text, canvas);
}

/// A pass whose pattern does not compile is left out.
void GenericScan::add(GenericPassPtr pass)
{
    if (pass)
        passes_.push_back(std::move(pass));
}

}  // namespace tavrel
