#include "platform/AtomicFile.h"

#include "platform/LocalizedError.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 maxFileSize = qint64(1) << 30; // bytes

} // namespace

QByteArray AtomicFile::readFile(const QString &path)
{
    // Opening a pipe or a device could block for ever.
    if (const QFileInfo info(path); info.exists() && !info.isFile())
        throw FileError(path, u"It isn't a file"_s);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw FileError(file);
    if (file.size() > maxFileSize)
        throw FileError(path, u"It is too large"_s);
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        throw FileError(file);
    return bytes;
}

void AtomicFile::write(const QString &path, QByteArrayView bytes)
{
    writeInPieces(path, [bytes](const Append &append) { append(bytes); });
}

void AtomicFile::writeInPieces(const QString &path, const std::function<void(const Append &append)> &fill)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        throw FileError(file);
    fill([&](QByteArrayView piece) { writeAll(file, piece); });
    if (!file.commit())
        throw FileError(file);
}

void AtomicFile::writeAll(QFileDevice &file, QByteArrayView bytes)
{
    // On a full disk the first write is merely short, and only the next one reports why. A buffered file would write
    // once and lose the reason.
    while (!bytes.isEmpty()) {
        const qint64 count = file.write(bytes.data(), bytes.size());
        if (count <= 0)
            throw FileError(file);
        bytes = bytes.sliced(count);
    }
    if (!file.flush())
        throw FileError(file);
}
