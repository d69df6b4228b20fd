#include "exchange/ArchiveMembers.h"

#include <QDirIterator>
#include <QFile>

#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace {

/// What is at `path` itself: links aren't followed.
fs::file_type typeOf(const QString &path)
{
    std::error_code error;
    return fs::symlink_status(fs::path(QFile::encodeName(path).toStdString()), error).type();
}

bool exists(const QString &path)
{
    const fs::file_type type = typeOf(path);
    return type != fs::file_type::not_found && type != fs::file_type::none;
}

QString folded(const QString &name)
{
    return name.normalized(QString::NormalizationForm_C).toCaseFolded();
}

} // namespace

ArchiveMembers::ArchiveMembers(QString folder) : m_folder(std::move(folder))
{
}

std::optional<QString> ArchiveMembers::path(QStringView name) const
{
    if (name.contains(QChar::Null)) // would end the name for the file system
        return {};
    QString found = m_folder;
    for (const QStringView component : name.split(u'/', Qt::SkipEmptyParts)) {
        if (component == u".")
            continue;
        if (component == u".." || typeOf(found) != fs::file_type::directory)
            return {};
        const std::optional<QString> next = entry(found, component.toString());
        if (!next)
            return {};
        found = *next;
    }
    return typeOf(found) == fs::file_type::regular ? std::optional(found) : std::nullopt;
}

std::optional<QString> ArchiveMembers::entry(const QString &folder, const QString &name) const
{
    const QString exact = folder + u'/' + name;
    if (exists(exact))
        return exact;
    const Listing &names = listing(folder);
    const auto other = names.constFind(folded(name));
    return other == names.constEnd() ? std::nullopt : std::optional(QString(folder + u'/' + *other));
}

const ArchiveMembers::Listing &ArchiveMembers::listing(const QString &folder) const
{
    const auto known = m_listings.constFind(folder);
    if (known != m_listings.constEnd())
        return *known;
    Listing names;
    QDirIterator entries(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    while (entries.hasNext()) {
        entries.next();
        QString &name = names[folded(entries.fileName())];
        if (name.isEmpty() || entries.fileName() < name) // of several the same one every time
            name = entries.fileName();
    }
    return *m_listings.insert(folder, names);
}
