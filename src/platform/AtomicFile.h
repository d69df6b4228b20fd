#pragma once

#include <QByteArray>
#include <QString>

class QFileDevice;

/// Whole files in one stroke.
namespace AtomicFile {
/// All bytes of the file. Throws FileError, also for a folder.
[[nodiscard]] QByteArray read(const QString &path);
/// Puts a file with these bytes at `path`, in place of one that is there, or changes nothing. Throws FileError.
void write(const QString &path, QByteArrayView bytes);
/// Writes all bytes to an open, unbuffered file. Throws FileError.
void writeAll(QFileDevice &file, QByteArrayView bytes);
} // namespace AtomicFile
