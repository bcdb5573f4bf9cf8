#pragma once

#include "highlight/SyntaxToken.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace tavrel {

/// The theme's field for each token, in the order of the enumerators.
inline constexpr std::array<std::string_view, 22> syntaxTokenNames{
    "foreground",   "keyword",     "string",       "comment",       "number",       "identifier",
    "typeName",     "className",   "functionName", "methodName",    "propertyName", "macro",
    "preprocessor", "constant",    "decorator",    "operatorColor", "punctuation",  "link",
    "gitAdded",     "gitModified", "gitRemoved",   "accent",
};
static_assert(syntaxTokenNames.size() == static_cast<std::size_t>(SyntaxToken::accent) + 1);

/// The field of the theme that `token` is painted in, underlined or not.
constexpr std::string_view syntaxTokenName(SyntaxToken token)
{
    return syntaxTokenNames[static_cast<std::size_t>(withoutUnderline(token))];
}

}  // namespace tavrel
