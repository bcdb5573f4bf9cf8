#include "app/QtModalDialogs.h"

#include <QFile>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>

namespace tavrel {

namespace {

QString qtPath(const std::filesystem::path& path)
{
    return QFile::decodeName(QByteArray::fromStdString(path.native()));
}

std::filesystem::path enginePath(const QString& path)
{
    return QFile::encodeName(path).toStdString();
}

}  // namespace

std::size_t QtModalDialogs::ask(const Alert& alert)
{
    QMessageBox box(window_);
    box.setIcon(QMessageBox::Warning);
    box.setText(QString::fromStdU16String(alert.message));
    box.setInformativeText(QString::fromStdU16String(alert.information));
    std::vector<QAbstractButton*> buttons;
    for (std::size_t i = 0; i < alert.buttons.size(); ++i) {
        const bool isLast = i + 1 == alert.buttons.size();
        QPushButton* button =
            box.addButton(QString::fromStdU16String(alert.buttons[i]),
                          isLast ? QMessageBox::RejectRole : QMessageBox::AcceptRole);
        if (i == 0)
            box.setDefaultButton(button);
        if (isLast)
            box.setEscapeButton(button);
        buttons.push_back(button);
    }
    box.exec();
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        if (buttons[i] == box.clickedButton())
            return i;
    }
    return buttons.empty() ? 0 : buttons.size() - 1;
}

std::vector<std::filesystem::path> QtModalDialogs::filesToOpen(const std::filesystem::path& folder)
{
    const QStringList names =
        QFileDialog::getOpenFileNames(window_, QStringLiteral("Open File"), qtPath(folder));
    std::vector<std::filesystem::path> paths;
    for (const QString& name : names)
        paths.push_back(enginePath(name));
    return paths;
}

std::optional<std::filesystem::path>
QtModalDialogs::saveLocation(const std::filesystem::path& proposed)
{
    const QString name =
        QFileDialog::getSaveFileName(window_, QStringLiteral("Save As"), qtPath(proposed));
    if (name.isEmpty())
        return std::nullopt;
    return enginePath(name);
}

}  // namespace tavrel
