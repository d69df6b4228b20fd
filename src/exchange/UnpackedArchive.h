#pragma once

#include "platform/StagingFolder.h"

#include <QHash>
#include <QStringView>

#include <functional>
#include <optional>

/// What an archive may unpack to: one of a few kilobytes can hold any amount.
struct UnpackLimits {
    qint64 bytes = qint64(2) << 30;
    qint64 archiveSizes = 20; ///< or this many times the archive's own size, if that is more
    qint64 entries = 500'000; ///< files and folders
};

/// The files of an untrusted archive, unpacked into a temporary folder for this object's lifetime. Finds only regular
/// files in real folders: links are never followed, so that nothing outside of the folder is read.
class UnpackedArchive {
public:
    /// `mayGoOn` is asked now and then. Throws RefiError, FileError, and ImportStopped when the answer is false.
    explicit UnpackedArchive(
        const QString &archive, const UnpackLimits &limits = {},
        const std::function<bool()> &mayGoOn = [] { return true; });

    /// The path of the file that is the member `name`, as "sources/a.txt": the one of exactly that name, else one whose
    /// name differs only in case or in the composition of accents. Absent for a name with "..".
    [[nodiscard]] std::optional<QString> path(QStringView name) const;

private:
    using Listing = QHash<QString, QString>; ///< from folded to real names

    [[nodiscard]] std::optional<QString> entry(const QString &folder, const QString &name) const;
    [[nodiscard]] const Listing &listing(const QString &folder) const;

    const StagingFolder m_folder;
    mutable QHash<QString, Listing> m_listings; ///< of the folders searched so far
};
