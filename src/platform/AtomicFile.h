#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

class QFileDevice;

/// Whole files in one stroke.
namespace AtomicFile {
/// All bytes of the file. Throws FileError, also for a folder, and for more than a gigabyte: nobody has such a text.
[[nodiscard]] QByteArray readFile(const QString &path);
/// Puts a file with these bytes at `path`, in place of one that is there, or changes nothing. Throws FileError.
void write(const QString &path, QByteArrayView bytes);
/// The same with bytes that never stand in memory as a whole: `fill` hands them over piece by piece. Throws FileError
/// and what `fill` throws.
using Append = std::function<void(QByteArrayView piece)>;
void writeInPieces(const QString &path, const std::function<void(const Append &append)> &fill);
/// Writes all bytes to an open, unbuffered file. Throws FileError.
void writeAll(QFileDevice &file, QByteArrayView bytes);
} // namespace AtomicFile
