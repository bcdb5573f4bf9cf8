#pragma once

#include <string>
#include <string_view>

namespace tavrel {

class EditorPane;
struct EditorCommand;

enum class FirstWord { lower, capitalised };

/// The pieces of `text` between white space, in small letters, each but perhaps the first one
/// capitalised, with nothing between them.
std::u16string joinedWords(std::u16string_view text, FirstWord first);

// The last `words` words before every cursor, written as one.

/// All but the first capitalised: "foo bar" becomes "fooBar".
void camelCase(EditorPane& pane, const EditorCommand& command);
/// All of them capitalised: "foo bar" becomes "FooBar".
void typeCase(EditorPane& pane, const EditorCommand& command);

}  // namespace tavrel
