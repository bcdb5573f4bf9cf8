#include "config/EditorTheme.h"

#include "config/EditorThemeFields.h"

namespace tavrel {
namespace {

/// The colour that the entry `value` of the map stands for; null is an absent entry.
Color resolvedColor(const CSONValue* value, std::string_view builtIn)
{
    const auto text = value ? value->string() : std::nullopt;
    const auto color = text ? parseHexColor(*text) : std::nullopt;
    return color ? *color : parseHexColor(builtIn).value_or(Color{});
}

const CSONValue* entryOf(const EditorThemeField& field, const CSONValue& colors)
{
    const CSONValue* value = colors.find(field.key);
    return value || field.secondKey.empty() ? value : colors.find(field.secondKey);
}

}  // namespace

EditorTheme::EditorTheme(const CSONValue& colors)
{
    for (const EditorThemeField& field : editorThemeFields)
        this->*field.color = resolvedColor(entryOf(field, colors), field.builtIn);
    for (std::size_t index = 0; index < ansiColors.size(); ++index) {
        const AnsiColorField& field = ansiColorFields[index];
        ansiColors[index] = resolvedColor(colors.find(field.key), field.builtIn);
    }
}

const EditorTheme& EditorTheme::builtIn()
{
    static const EditorTheme theme{CSONValue()};
    return theme;
}

}  // namespace tavrel
