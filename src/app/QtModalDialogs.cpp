#include "app/QtModalDialogs.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace tavrel {

namespace {

constexpr int fieldWidth = 260;
constexpr int fieldHeight = 24;

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

std::optional<std::u16string> QtModalDialogs::askForText(const Alert& alert,
                                                         std::u16string_view text)
{
    QDialog dialog(window_);
    dialog.setWindowTitle(QStringLiteral("Tavrel Code"));
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(new QLabel(QString::fromStdU16String(alert.message)));
    auto* field = new QLineEdit(QStringView(text).toString());
    field->setFixedSize(fieldWidth, fieldHeight);
    field->setAccessibleName(QString::fromStdU16String(alert.message));
    field->selectAll();
    layout->addWidget(field);
    auto* box = new QDialogButtonBox;
    for (std::size_t i = 0; i < alert.buttons.size(); ++i)
        box->addButton(QString::fromStdU16String(alert.buttons[i]),
                       i == 0 ? QDialogButtonBox::AcceptRole : QDialogButtonBox::RejectRole);
    layout->addWidget(box);
    QObject::connect(box, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(box, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    field->setFocus();
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return field->text().toStdU16String();
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
