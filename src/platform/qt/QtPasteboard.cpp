#include "platform/qt/QtPasteboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QString>

#include <memory>

namespace tavrel {

namespace {

QString wholeLinesType()
{
    return QStringLiteral("application/x-tavrel-code-whole-lines");
}

}  // namespace

std::optional<PasteboardContents> QtPasteboard::contents() const
{
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    if (!data || !data->hasText())
        return std::nullopt;
    return PasteboardContents{data->text().toStdU16String(), data->hasFormat(wholeLinesType())};
}

void QtPasteboard::setContents(PasteboardContents contents)
{
    auto data = std::make_unique<QMimeData>();
    data->setText(QString::fromStdU16String(contents.text));
    if (contents.isWholeLines)
        data->setData(wholeLinesType(), QByteArrayLiteral("1"));
    QGuiApplication::clipboard()->setMimeData(data.release());  // The clipboard owns it from here.
}

}  // namespace tavrel
