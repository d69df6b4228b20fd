#include "workspace/DesktopFileDialogs.h"

#include "workspace/FilePanel.h"

#include <QApplication>
#include <QDir>
#include <QStandardPaths>

namespace {

/// The first one that exists.
QString firstFolder(const QStringList &paths)
{
    for (const QString &path : paths) {
        if (!path.isEmpty() && QDir(path).exists())
            return path;
    }
    return QDir::homePath();
}

} // namespace

template <typename Request>
QStringList DesktopFileDialogs::ask(const Request &request)
{
    FilePanel panel(QApplication::activeWindow(), request,
        firstFolder({m_lastFolder, QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)}));
    panel.exec();
    QStringList chosen = panel.chosen();
    // A path that was typed whole may lead elsewhere than the folder that is shown.
    m_lastFolder = chosen.isEmpty() ? panel.directory().absolutePath() : QFileInfo(chosen.constFirst()).absolutePath();
    return chosen;
}

QStringList DesktopFileDialogs::chooseToOpen(const OpenRequest &request)
{
    return ask(request);
}

std::optional<QString> DesktopFileDialogs::chooseToSave(const SaveRequest &request)
{
    const QStringList paths = ask(request);
    return paths.isEmpty() ? std::nullopt : std::optional(paths.first());
}
