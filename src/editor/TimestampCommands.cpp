#include "editor/TimestampCommands.h"

#include "editor/EditorPane.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace tavrel {

namespace {

constexpr std::array weekdayNames{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr std::array monthNames{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

/// The name for `number`, which counts from 1; the nearest one where it has none.
template<typename Names>
const char* nameOf(int number, const Names& names)
{
    const int last = static_cast<int>(names.size());
    return names[static_cast<std::size_t>(std::clamp(number, 1, last) - 1)];
}

}  // namespace

std::u16string dateLine(const CalendarDate& date)
{
    std::array<char, 128> line{};
    std::snprintf(line.data(), line.size(), "=== %s %s %2d %02d:%02d:%02d %04d",
                  nameOf(date.weekday, weekdayNames), nameOf(date.month, monthNames), date.day,
                  date.hour, date.minute, date.second, date.year);
    return utf16FromUtf8(line.data());
}

void timestamp(EditorPane& pane, const EditorCommand&)
{
    const TextSnapshot line(dateLine(pane.services().calendar.now()));
    if (!pane.insertAtCursors(line))
        pane.replaceText(pane.selectedRange(), line);
}

}  // namespace tavrel
