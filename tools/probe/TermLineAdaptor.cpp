#include "probe/Adaptors.h"
#include "probe/CsonJson.h"
#include "terminal/ShellLine.h"

namespace tavrel::probe {
namespace {

EditorCommand commandFromJson(const Json& body)
{
    EditorCommand command{utf8Member(body, "command"), {}};
    if (const Json* arguments = member(body, "arguments"))
        for (const auto& [name, value] : arguments->items())
            command.arguments.emplace(utf8FromJson(Json(name)), valueFromJson(value));
    return command;
}

}  // namespace

Json termLineAdaptor(ProbeRequest& request)
{
    const Json& body = request.body();
    const ShellLine line{textMember(body, "left"), textMember(body, "right"),
                         booleanMember(body, "applicationCursorKeys", false)};
    const EditorCommand command = commandFromJson(body);
    return {{"hex", hexFromBytes(request.measured(
                        [&] { return line; },
                        [&](const ShellLine& shown) { return shellLineInput(shown, command); }))}};
}

}  // namespace tavrel::probe
