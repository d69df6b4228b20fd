#include "platform/ApplicationFolder.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

QString ApplicationFolder::prepared()
{
    QString path = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/Vorn"_s;
    QDir().mkpath(QFileInfo(path).path());
    QDir().mkdir(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner); // private from its first moment
    return path;
}
