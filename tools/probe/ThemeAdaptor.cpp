#include "config/EditorTheme.h"
#include "probe/Adaptors.h"
#include "probe/CsonJson.h"
#include "probe/SettingsJson.h"

namespace tavrel::probe {

Json themeAdaptor(ProbeRequest& request)
{
    const Json& body = request.body();
    if (member(body, "hex")) {
        const std::string hex = utf8Member(body, "hex");
        const auto color = request.measured([&] { return std::string_view(hex); }, parseHexColor);
        return {{"color", color ? Json(hexText(*color)) : Json()}};
    }
    const CSONValue colors = valueFromJson(requiredMember(body, "colors"));
    const EditorTheme theme = request.measured(
        [&] { return colors; }, [](const CSONValue& map) { return EditorTheme(map); });
    return {{"theme", jsonFromTheme(theme)}};
}

}  // namespace tavrel::probe
