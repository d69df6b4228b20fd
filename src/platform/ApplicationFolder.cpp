#include "platform/ApplicationFolder.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

QString ApplicationFolder::prepared()
{
    const QString path = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/Vorn"_s;
    if (!QDir(path).exists() && QDir().mkpath(path))
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return path;
}
