#pragma once

namespace tavrel {

/// What `character` stands for in the charset of lines and symbols; all but 24 stand for
/// themselves.
char32_t drawingCharacter(char32_t character);

}  // namespace tavrel
