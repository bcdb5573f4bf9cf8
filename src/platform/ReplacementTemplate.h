#pragma once

#include "platform/RegularExpression.h"

#include <string>
#include <string_view>

namespace tavrel {

/// `text` as a template that expands to just that text: a backslash before "$" and "\".
std::u16string escapedTemplate(std::u16string_view text);

/// Appends what `replacement` stands for with `match`, a match in `text`, to `result`.
///
/// - "$" and digits stand for the text of a group. Of the digits as many are read as still name a
///   group that exists, at least one; a group that does not exist or took no part gives nothing.
/// - A backslash is left out and the character behind it is taken as it is; one at the very end
///   gives nothing.
/// - Every other character stands for itself, also a "$" without a digit behind it.
void appendExpandedTemplate(std::u16string_view replacement, const RegularExpressionMatch& match,
                            std::u16string_view text, std::u16string& result);

}  // namespace tavrel
