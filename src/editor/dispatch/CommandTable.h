#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace tavrel {

/// An argument that a command reads, and what it is when absent.
struct CommandArgument {
    enum class Kind {
        none,     // The command reads no argument.
        integer,  // Read with `EditorCommand::integer`.
        truth,    // Read with `EditorCommand::truth`; the default is 0 or 1.
    };
    Kind kind = Kind::none;
    std::string_view name;
    std::int64_t defaultValue = 0;
};

/// A command that an editor pane knows.
struct CommandTableRow {
    std::string_view name;
    CommandArgument argument;
};

namespace command_table {
constexpr CommandArgument integer(std::string_view name, std::int64_t defaultValue)
{
    return {CommandArgument::Kind::integer, name, defaultValue};
}
constexpr CommandArgument truth(std::string_view name, bool defaultValue)
{
    return {CommandArgument::Kind::truth, name, defaultValue ? 1 : 0};
}
}  // namespace command_table

/// Every command that can be bound to a key. Names are compared exactly, case included; a name
/// that is not here does nothing.
inline constexpr std::array commandTable{
    CommandTableRow{"moveCursor", command_table::integer("offset", 0)},
    CommandTableRow{"erase", {}},
    CommandTableRow{"eraseWord", {}},
    CommandTableRow{"eraseFullWord", {}},
    CommandTableRow{"skipWord", command_table::truth("forward", true)},
    CommandTableRow{"copy", {}},
    CommandTableRow{"duplicate", {}},
    CommandTableRow{"paste", {}},
    CommandTableRow{"cut", {}},
    CommandTableRow{"page", command_table::truth("down", true)},
    CommandTableRow{"line", command_table::truth("down", true)},
    CommandTableRow{"newLine", {}},
    CommandTableRow{"indent", {}},
    CommandTableRow{"unindent", {}},
    CommandTableRow{"lineBegin", {}},
    CommandTableRow{"lineEnd", {}},
    CommandTableRow{"setMarker", {}},
    CommandTableRow{"selectFromMarker", {}},
    CommandTableRow{"deselect", {}},
    CommandTableRow{"undo", {}},
    CommandTableRow{"redo", {}},
    CommandTableRow{"selectWord", {}},
    CommandTableRow{"selectWordAll", {}},
    CommandTableRow{"camelCase", command_table::integer("words", 2)},
    CommandTableRow{"typeCase", command_table::integer("words", 2)},
    CommandTableRow{"titleCase", command_table::integer("words", 2)},
    CommandTableRow{"upperChar", {}},
    CommandTableRow{"lowerChar", {}},
    CommandTableRow{"upperWord", {}},
    CommandTableRow{"allLowerWord", {}},
    CommandTableRow{"allUpperWord", {}},
    CommandTableRow{"strip", {}},
    CommandTableRow{"setCursor", command_table::integer("cursor", 0)},
    CommandTableRow{"comment", {}},
    CommandTableRow{"timestamp", {}},
    CommandTableRow{"selectAll", {}},
    CommandTableRow{"find", {}},
    CommandTableRow{"replace", {}},
    CommandTableRow{"goto", {}},
    CommandTableRow{"nextGitChange", {}},
    CommandTableRow{"refreshTree", {}},
    CommandTableRow{"newTerminalTab", {}},
    CommandTableRow{"findAgain", {}},
    CommandTableRow{"toggleTree", {}},
    CommandTableRow{"closeFile", {}},
    CommandTableRow{"closeAllFiles", {}},
    CommandTableRow{"newView", {}},
    CommandTableRow{"closeWindow", {}},
    CommandTableRow{"nextView", {}},
    CommandTableRow{"previousView", {}},
    CommandTableRow{"editor1", {}},
    CommandTableRow{"editor2", {}},
    CommandTableRow{"editor3", {}},
    CommandTableRow{"editor4", {}},
    CommandTableRow{"moveToEditor", command_table::integer("editor", 1)},
    CommandTableRow{"sortLines", {}},
    CommandTableRow{"autocomplete", {}},
};

/// The row of `name`, or null. Costs O(rows).
constexpr const CommandTableRow* commandTableRow(std::string_view name)
{
    for (const CommandTableRow& row : commandTable)
        if (row.name == name)
            return &row;
    return nullptr;
}

}  // namespace tavrel
