#pragma once

#include "config/HexColor.h"
#include "config/cson/CSONValue.h"

#include <array>
#include <cstddef>

namespace tavrel {

/// The colours of the whole window. A plain value, never partial: what the map it is made from
/// leaves out, or gives in a form that is no colour, has its built-in value.
struct EditorTheme {
    static constexpr std::size_t ansiColorCount = 16;

    /// From a map of colour keys to colour texts; a value that is no map counts as an empty one.
    explicit EditorTheme(const CSONValue& colors);

    /// The theme of an empty map, made at the first call and kept.
    static const EditorTheme& builtIn();

    Color background;
    Color foreground;
    Color gutter;
    Color selection;
    Color keyword;
    Color string;
    Color comment;
    Color number;
    Color identifier;
    Color typeName;
    Color className;
    Color functionName;
    Color methodName;
    Color propertyName;
    Color macro;
    Color preprocessor;
    Color constant;
    Color decorator;
    Color operatorColor;
    Color punctuation;
    Color sidebarBackground;
    Color panelBackground;
    Color terminalForeground;
    Color terminalBackground;
    Color toolbarForeground;
    Color accent;  // Highlights of the chrome.
    Color cursor;
    Color gitAdded;
    Color gitModified;
    Color gitRemoved;
    Color link;
    std::array<Color, ansiColorCount> ansiColors;  // By the terminal's colour number.

    bool operator==(const EditorTheme&) const = default;
};

}  // namespace tavrel
