#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

class QFileDevice;

/// Reads and writes whole files.
namespace AtomicFile {
/// All bytes of the file. Throws FileError, also for a folder or a pipe and for more than a gigabyte.
[[nodiscard]] QByteArray readFile(const QString &path);
/// Puts a file with these bytes at `path`, in place of one that is there, or changes nothing. Throws FileError.
void write(const QString &path, QByteArrayView bytes);
/// The same for bytes that `fill` hands over piece by piece, so that they needn't be in memory as a whole. Throws
/// FileError and what `fill` throws.
using Append = std::function<void(QByteArrayView piece)>;
void writeInPieces(const QString &path, const std::function<void(const Append &append)> &fill);
/// Writes all bytes to an open, unbuffered file. Throws FileError.
void writeAll(QFileDevice &file, QByteArrayView bytes);
} // namespace AtomicFile
