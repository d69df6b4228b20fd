#include "workspace/DesktopFileDialogs.h"

#include "workspace/FolderOpenPanel.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

QString filterFor(const QString &extension)
{
    return u"*."_s + extension;
}

void prepare(QFileDialog &dialog, const FileDialogs::OpenRequest &request)
{
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setLabelText(QFileDialog::Accept, request.prompt);
    dialog.setFileMode(request.allowsSeveral ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
    if (!request.extension.isEmpty())
        dialog.setNameFilter(filterFor(request.extension));
}

} // namespace

QStringList DesktopFileDialogs::chooseToOpen(const OpenRequest &request)
{
    if (request.allowsFolders) {
        FolderOpenPanel panel(QApplication::activeWindow(), request.title, request.prompt);
        prepare(panel, request);
        return panel.exec() == QDialog::Accepted ? panel.chosen() : QStringList();
    }
    QFileDialog dialog(QApplication::activeWindow(), request.title);
    prepare(dialog, request);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles() : QStringList();
}

std::optional<QString> DesktopFileDialogs::chooseToSave(const SaveRequest &request)
{
    QFileDialog dialog(QApplication::activeWindow(), request.title);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setLabelText(QFileDialog::Accept, request.prompt);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setNameFilter(filterFor(request.extension));
    dialog.setDefaultSuffix(request.extension);
    dialog.selectFile(request.proposedName);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    return dialog.selectedFiles().constFirst();
}
