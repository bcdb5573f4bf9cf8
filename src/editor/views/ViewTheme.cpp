#include "editor/views/ViewTheme.h"

#include "config/EditorTheme.h"

namespace tavrel {

namespace {

constexpr std::array tokenColors{
    &EditorTheme::foreground,    &EditorTheme::keyword,      &EditorTheme::string,
    &EditorTheme::comment,       &EditorTheme::number,       &EditorTheme::identifier,
    &EditorTheme::typeName,      &EditorTheme::className,    &EditorTheme::functionName,
    &EditorTheme::methodName,    &EditorTheme::propertyName, &EditorTheme::macro,
    &EditorTheme::preprocessor,  &EditorTheme::constant,     &EditorTheme::decorator,
    &EditorTheme::operatorColor, &EditorTheme::punctuation,  &EditorTheme::link,
    &EditorTheme::gitAdded,      &EditorTheme::gitModified,  &EditorTheme::gitRemoved,
    &EditorTheme::accent,
};

QRgb rgb(Color color)
{
    return qRgb(color.red, color.green, color.blue);
}

}  // namespace

ViewTheme viewTheme(const EditorTheme& theme)
{
    ViewTheme view{.background = rgb(theme.background),
                   .foreground = rgb(theme.foreground),
                   .gutter = rgb(theme.gutter),
                   .selection = rgb(theme.selection),
                   .cursor = rgb(theme.cursor),
                   .marker = rgb(theme.accent),
                   .panelBackground = rgb(theme.panelBackground),
                   .sidebarBackground = rgb(theme.sidebarBackground)};
    static_assert(tokenColors.size() == ViewTheme{}.tokens.size());
    for (std::size_t token = 0; token < tokenColors.size(); ++token)
        view.tokens[token] = rgb(theme.*tokenColors[token]);
    return view;
}

}  // namespace tavrel
