#pragma once

#include "highlight/SyntaxToken.h"
#include "highlight/TokenCanvas.h"
#include "platform/RegularExpression.h"

#include <memory>
#include <set>
#include <string>
#include <string_view>

namespace tavrel {

/// One pass of the generic scan: it paints every match of one expression. Never changes.
///
/// What a pass finds is what the expression beside its maker matches, from left to right and with
/// ICU's meaning of it. Most are walked by hand, many times faster than the library and in time in
/// proportion to the text whatever it holds.
class GenericPass {
public:
    virtual ~GenericPass() = default;
    virtual void run(std::u16string_view text, TokenCanvas& canvas) const = 0;
};

/// Null where the pattern does not compile: such a pass is left out.
using GenericPassPtr = std::unique_ptr<const GenericPass>;

/// Any expression, matched by the library.
GenericPassPtr makeExpressionPass(std::u16string_view pattern, SyntaxToken token);

/// `d(?:\\.|[^d\n])*d` with the delimiter for d; for a backtick "`(?:\\.|[^`])*`".
GenericPassPtr makeStringPass(std::u16string_view delimiter);

/// The marker and `.*`.
GenericPassPtr makeLineCommentPass(std::u16string_view marker);

/// The opening mark, `(?s:.*?)` and the closing mark.
GenericPassPtr makeBlockCommentPass(std::u16string_view open, std::u16string_view close);

/// `\b-?(?:0x[0-9A-Fa-f]+|\d+(?:\.\d+)?)\b`
GenericPassPtr makeNumberPass();

/// `\b(?:…)\b` over the keywords, which are UTF-8 and not none, the longest first.
GenericPassPtr makeKeywordPass(const std::set<std::string>& keywords);

/// A class of just these characters, of which there is one at least.
GenericPassPtr makePunctuationPass(std::u16string_view characters);

}  // namespace tavrel
