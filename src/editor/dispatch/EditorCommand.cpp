#include "editor/dispatch/EditorCommand.h"

namespace tavrel {

std::int64_t EditorCommand::integer(std::string_view argument, std::int64_t fallback) const
{
    const auto found = arguments.find(argument);
    return found != arguments.end() ? found->second.integer().value_or(fallback) : fallback;
}

bool EditorCommand::truth(std::string_view argument, bool fallback) const
{
    const auto found = arguments.find(argument);
    return found != arguments.end() ? found->second.boolean().value_or(fallback) : fallback;
}

}  // namespace tavrel
