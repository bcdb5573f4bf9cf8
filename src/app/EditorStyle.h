#pragma once

#include <QProxyStyle>

namespace tavrel {

/// The toolkit's plain style without what the program has no use for.
class EditorStyle final : public QProxyStyle {
public:
    EditorStyle() : QProxyStyle(QStringLiteral("fusion")) {}

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override
    {
        // A lone Alt is a key like any other, wherever the focus is.
        if (hint == SH_MenuBar_AltKeyNavigation)
            return 0;
        return QProxyStyle::styleHint(hint, option, widget, returned);
    }

    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                       const QWidget* widget) const override
    {
        // The menu bar asks for the sign of its overflow button as soon as it is made. Reading it
        // would load every picture format that is installed, and the bar never overflows.
        if (icon == SP_ToolBarHorizontalExtensionButton)
            return {};
        return QProxyStyle::standardIcon(icon, option, widget);
    }
};

}  // namespace tavrel
