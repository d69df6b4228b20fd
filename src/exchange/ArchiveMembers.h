#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringView>

#include <optional>

/// The files of an unpacked archive that nobody vouches for, by their member names. Only regular files reached through
/// real folders are found, so that nothing outside of the folder is ever read.
class ArchiveMembers {
public:
    explicit ArchiveMembers(QString folder);

    /// The path of the file that is the member `name`, as "sources/a.txt": the one of exactly that name, else one whose
    /// name differs in case or in the form of its accents. Absent for a name that leads upwards.
    [[nodiscard]] std::optional<QString> path(QStringView name) const;

private:
    using Listing = QHash<QString, QString>; ///< from the folded to the real name

    [[nodiscard]] std::optional<QString> entry(const QString &folder, const QString &name) const;
    [[nodiscard]] const Listing &listing(const QString &folder) const;

    QString m_folder;
    mutable QHash<QString, Listing> m_listings; ///< of the folders that were searched
};
