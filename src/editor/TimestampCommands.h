#pragma once

#include "platform/Calendar.h"

#include <string>

namespace tavrel {

class EditorPane;
struct EditorCommand;

/// "=== Sat Nov 21 10:46:15 2026": names in English whatever the locale. Has no line feed.
std::u16string dateLine(const CalendarDate& date);

/// Inserts the date line for now at every cursor, or in place of the selection.
void timestamp(EditorPane& pane, const EditorCommand& command);

}  // namespace tavrel
