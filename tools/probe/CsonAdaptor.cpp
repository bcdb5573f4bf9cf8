#include "config/cson/TavrelCSONBackend.h"
#include "probe/Adaptors.h"
#include "probe/CsonJson.h"

namespace tavrel::probe {

Json csonAdaptor(ProbeRequest& request)
{
    const std::string text = bytesMember(request.body(), "text");
    const auto input = [&] { return std::string_view(text); };
    if (booleanMember(request.body(), "value", false)) {
        const auto value = request.measured(input, TavrelCSONBackend::parseCSON);
        return value ? Json{{"value", jsonFromValue(*value)}} : jsonFromError(value.error());
    }
    const auto json = request.measured(input, TavrelCSONBackend::normalizedJSONFromCSON);
    return json ? Json{{"json", jsonFromUtf8(*json)}} : jsonFromError(json.error());
}

}  // namespace tavrel::probe
