#pragma once

#include "config/EditorTheme.h"

#include <array>
#include <string_view>

namespace tavrel {

/// A colour of the theme: its name in code, and where settings give it.
struct EditorThemeField {
    std::string_view name;
    std::string_view key;
    std::string_view builtIn;
    Color EditorTheme::*color;
    std::string_view secondKey = {};  // Asked only where `key` is absent.
};

/// All colours of a theme but `ansiColors`, in the order of its fields.
inline constexpr std::array editorThemeFields{
    EditorThemeField{"background", "background", "#1F2430", &EditorTheme::background},
    EditorThemeField{"foreground", "foreground", "#CBD2DC", &EditorTheme::foreground},
    EditorThemeField{"gutter", "gutter", "#5C6773", &EditorTheme::gutter},
    EditorThemeField{"selection", "selection", "#33415E", &EditorTheme::selection},
    EditorThemeField{"keyword", "keyword", "#FFA759", &EditorTheme::keyword},
    EditorThemeField{"string", "string", "#BAE67E", &EditorTheme::string},
    EditorThemeField{"comment", "comment", "#5C6773", &EditorTheme::comment},
    EditorThemeField{"number", "number", "#E6B450", &EditorTheme::number},
    EditorThemeField{"identifier", "identifier", "#CBD2DC", &EditorTheme::identifier},
    EditorThemeField{"typeName", "type", "#5CCFE6", &EditorTheme::typeName},
    EditorThemeField{"className", "className", "#FFD580", &EditorTheme::className},
    EditorThemeField{"functionName", "functionName", "#73D0FF", &EditorTheme::functionName},
    EditorThemeField{"methodName", "methodName", "#95E6CB", &EditorTheme::methodName},
    EditorThemeField{"propertyName", "propertyName", "#DCBFFF", &EditorTheme::propertyName},
    EditorThemeField{"macro", "macro", "#F28779", &EditorTheme::macro},
    EditorThemeField{"preprocessor", "preprocessor", "#F29E74", &EditorTheme::preprocessor},
    EditorThemeField{"constant", "constant", "#FFCC66", &EditorTheme::constant},
    EditorThemeField{"decorator", "decorator", "#FFAD66", &EditorTheme::decorator},
    EditorThemeField{"operatorColor", "operator", "#F29E74", &EditorTheme::operatorColor},
    EditorThemeField{"punctuation", "punctuation", "#8A9199", &EditorTheme::punctuation},
    EditorThemeField{"sidebarBackground", "sidebarBackground", "#171B24",
                     &EditorTheme::sidebarBackground},
    EditorThemeField{"panelBackground", "panelBackground", "#1A202B",
                     &EditorTheme::panelBackground},
    EditorThemeField{"terminalForeground", "terminalForeground", "#CBD2DC",
                     &EditorTheme::terminalForeground, "foreground"},
    EditorThemeField{"terminalBackground", "terminalBackground", "#171B24",
                     &EditorTheme::terminalBackground, "background"},
    EditorThemeField{"toolbarForeground", "toolbarForeground", "#CBD2DC",
                     &EditorTheme::toolbarForeground, "foreground"},
    EditorThemeField{"accent", "accent", "#FFA759", &EditorTheme::accent},
    EditorThemeField{"cursor", "cursor", "#FFCC66", &EditorTheme::cursor},
    EditorThemeField{"gitAdded", "gitAdded", "#4DB85C", &EditorTheme::gitAdded},
    EditorThemeField{"gitModified", "gitModified", "#D9B84D", &EditorTheme::gitModified},
    EditorThemeField{"gitRemoved", "gitRemoved", "#CC4040", &EditorTheme::gitRemoved},
    EditorThemeField{"link", "link", "#73D0FF", &EditorTheme::link},
};

/// A colour of the terminal's palette.
struct AnsiColorField {
    std::string_view key;
    std::string_view builtIn;
};

/// By the terminal's colour number.
inline constexpr std::array<AnsiColorField, EditorTheme::ansiColorCount> ansiColorFields{{
    {"ansiBlack", "#1A1A1A"},
    {"ansiRed", "#CC4040"},
    {"ansiGreen", "#4DB85C"},
    {"ansiYellow", "#D9B84D"},
    {"ansiBlue", "#528CE6"},
    {"ansiMagenta", "#B86BD1"},
    {"ansiCyan", "#4DBFC7"},
    {"ansiWhite", "#D9D9D9"},
    {"ansiBrightBlack", "#666666"},
    {"ansiBrightRed", "#F26666"},
    {"ansiBrightGreen", "#73E080"},
    {"ansiBrightYellow", "#F2DE73"},
    {"ansiBrightBlue", "#80B3FF"},
    {"ansiBrightMagenta", "#D994F0"},
    {"ansiBrightCyan", "#73E6EB"},
    {"ansiBrightWhite", "#FFFFFF"},
}};

}  // namespace tavrel
