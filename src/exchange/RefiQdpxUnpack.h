#pragma once

#include <QString>

#include <functional>

namespace RefiQdpx {

/// What an archive may unpack to. One of a few kilobytes can hold any amount.
struct UnpackLimits {
    qint64 bytes = qint64(2) << 30;
    qint64 archiveSizes = 20; ///< or as many times the archive's own size, if that is more
    qint64 entries = 500'000; ///< files and folders
};

/// Unpacks the archive into a folder that is there and empty. Its files can be read and its folders be entered
/// afterwards, whatever the archive says; links may be among them. `mayGoOn` is asked now and then. Throws RefiError,
/// and ImportStopped when the answer is false.
void unpackArchive(
    const QString &archive, const QString &folder, const UnpackLimits &limits = {},
    const std::function<bool()> &mayGoOn = [] { return true; });

} // namespace RefiQdpx
