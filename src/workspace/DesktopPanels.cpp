#include "workspace/DesktopPanels.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

QString filterFor(const QString &extension)
{
    return u"*."_s + extension;
}

} // namespace

QStringList DesktopPanels::chooseToOpen(const OpenRequest &request)
{
    QFileDialog dialog(QApplication::activeWindow(), request.title);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setLabelText(QFileDialog::Accept, request.prompt);
    dialog.setFileMode(request.allowsSeveral ? QFileDialog::ExistingFiles : QFileDialog::ExistingFile);
    if (!request.extension.isEmpty())
        dialog.setNameFilter(filterFor(request.extension));
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles() : QStringList();
}

std::optional<QString> DesktopPanels::chooseToSave(const SaveRequest &request)
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
