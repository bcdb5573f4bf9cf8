#include "app/StatusLine.h"

#include <QAccessibleWidget>
#include <QPainter>

namespace tavrel {

namespace {

constexpr int horizontalMargin = 10;
constexpr qsizetype maximumLength = 1024;

QAccessibleInterface* makeAccessible(const QString&, QObject* object)
{
    if (auto* line = dynamic_cast<StatusLine*>(object))
        return new QAccessibleWidget(line, QAccessible::StatusBar);
    return nullptr;
}

}  // namespace

StatusLine::StatusLine(const ViewTheme& theme, QWidget* parent) : QWidget(parent), theme_(theme)
{
    QAccessible::installFactory(makeAccessible);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::NoFocus);
}

void StatusLine::setTheme(const ViewTheme& theme)
{
    theme_ = theme;
    update();
}

void StatusLine::setText(std::u16string_view text)
{
    QString line = QStringView(text).left(maximumLength).toString();
    for (QChar& unit : line) {
        if (unit.category() == QChar::Other_Control || unit == QChar::LineSeparator ||
            unit == QChar::ParagraphSeparator)
            unit = QLatin1Char(' ');
    }
    if (line == text_)
        return;
    text_ = line;
    setAccessibleName(text_);
    update();
}

void StatusLine::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor::fromRgb(theme_.panelBackground));
    QFont small = font();
    small.setPixelSize(11);
    painter.setFont(small);
    painter.setPen(QColor::fromRgb(theme_.foreground));
    const QRect room = rect().adjusted(horizontalMargin, 0, -horizontalMargin, 0);
    const QString shown = painter.fontMetrics().elidedText(text_, Qt::ElideRight, room.width());
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shown);
}

}  // namespace tavrel
