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

#include <algorithm>

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

std::size_t QtModalDialogs::ask(const EditorPaneAlert& alert)
{
    if (alert.buttons.empty())
        return 0;
    QMessageBox box(window_);
    box.setWindowTitle(QStringLiteral("Tavrel Code"));
    box.setTextFormat(Qt::PlainText);  // A file's name is no markup.
    box.setText(QString::fromStdU16String(alert.message));
    box.setInformativeText(QString::fromStdU16String(alert.information));
    std::vector<QAbstractButton*> buttons;
    for (std::size_t i = 0; i < alert.buttons.size(); ++i) {
        // Buttons of one role stand in the order in which they come.
        const QString title = QString::fromStdU16String(alert.buttons[i]);
        QPushButton* button = box.addButton(title, QMessageBox::ActionRole);
        button->setAccessibleName(title);
        if (i == 0)
            box.setDefaultButton(button);
        if (i == alert.escapeButton)
            box.setEscapeButton(button);
        buttons.push_back(button);
    }
    box.exec();
    const auto clicked = std::find(buttons.begin(), buttons.end(), box.clickedButton());
    if (clicked == buttons.end())
        return alert.escapeButton;
    return static_cast<std::size_t>(clicked - buttons.begin());
}

std::optional<std::u16string> QtModalDialogs::askForText(const EditorPaneAlert& alert,
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
