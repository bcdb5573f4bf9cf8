#include "probe/Adaptors.h"

#include <algorithm>
#include <array>

namespace tavrel::probe {
namespace {

struct Engine {
    std::string_view name;
    Json (*adaptor)(ProbeRequest& request);
};

// One row a line, so that a new one touches no other.
// clang-format off
constexpr std::array engines{
    Engine{"chord", chordAdaptor},
    Engine{"complete", completeAdaptor},
    Engine{"cson", csonAdaptor},
    Engine{"edit", editAdaptor},
    Engine{"highlight", highlightAdaptor},
    Engine{"ignore", ignoreAdaptor},
    Engine{"linediff", lineDiffAdaptor},
    Engine{"mode", modeAdaptor},
    Engine{"settings", settingsAdaptor},
    Engine{"term", termAdaptor},
    Engine{"theme", themeAdaptor},
    Engine{"tree", treeAdaptor},
    Engine{"walk", walkAdaptor},
};
// clang-format on

Json errorAnswer(const std::string& why)
{
    return {{"error", jsonFromUtf8(why)}};
}

}  // namespace

Json respond(const Json& request)
try {
    if (!request.is_object())
        throw RequestError("unreadable request: not an object");
    const std::string name = utf8Member(request, "engine");
    const auto engine = std::find_if(engines.begin(), engines.end(),
                                     [&](const Engine& known) { return known.name == name; });
    if (engine == engines.end())
        throw RequestError("unknown engine '" + name + "'");
    ProbeRequest read(request);
    Json response = engine->adaptor(read);
    read.addTimes(response);
    return response;
} catch (const std::exception& error) {
    return errorAnswer(error.what());
}

std::string respondToLine(std::string_view line)
{
    const auto request = readLine(line);
    return writeLine(request ? respond(*request) : errorAnswer(request.error()));
}

}  // namespace tavrel::probe
