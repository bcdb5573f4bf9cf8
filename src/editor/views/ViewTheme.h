#pragma once

#include "highlight/SyntaxToken.h"

#include <QRgb>

#include <array>
#include <cstddef>

namespace tavrel {

struct EditorTheme;

/// The colours that the editor's views draw with; at first those of the built-in theme.
struct ViewTheme {
    QRgb background = 0xFF1F2430;
    QRgb foreground = 0xFFCBD2DC;
    QRgb gutter = 0xFF5C6773;
    QRgb selection = 0xFF33415E;
    QRgb cursor = 0xFFFFCC66;
    QRgb marker = 0xFFFFA759;
    QRgb panelBackground = 0xFF1A202B;
    QRgb sidebarBackground = 0xFF171B24;

    /// The colour of each `SyntaxToken`, in the order of its enumerators.
    std::array<QRgb, 22> tokens = {
        0xFFCBD2DC, 0xFFFFA759, 0xFFBAE67E, 0xFF5C6773, 0xFFE6B450, 0xFFCBD2DC,
        0xFF5CCFE6, 0xFFFFD580, 0xFF73D0FF, 0xFF95E6CB, 0xFFDCBFFF, 0xFFF28779,
        0xFFF29E74, 0xFFFFCC66, 0xFFFFAD66, 0xFFF29E74, 0xFF8A9199, 0xFF73D0FF,
        0xFF4DB85C, 0xFFD9B84D, 0xFFCC4040, 0xFFFFA759,
    };

    QRgb color(SyntaxToken token) const
    {
        const auto index = static_cast<std::size_t>(withoutUnderline(token));
        return index < tokens.size() ? tokens[index] : foreground;
    }
};

ViewTheme viewTheme(const EditorTheme& theme);

static_assert(static_cast<std::size_t>(SyntaxToken::accent) + 1 == ViewTheme{}.tokens.size());

}  // namespace tavrel
