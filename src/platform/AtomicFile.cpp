#include "platform/AtomicFile.h"

#include "platform/FileError.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

using namespace Qt::StringLiterals;

QByteArray AtomicFile::read(const QString &path)
{
    // A pipe or a device would keep its reader waiting.
    if (const QFileInfo info(path); info.exists() && !info.isFile())
        throw FileError(path, u"It isn't a file"_s);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw FileError(file);
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        throw FileError(file);
    return bytes;
}

void AtomicFile::write(const QString &path, QByteArrayView bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes.data(), bytes.size()) != bytes.size() || !file.commit())
        throw FileError(file);
}
