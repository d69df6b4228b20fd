#include "exchange/UnpackedArchive.h"

#include "exchange/ImportStep.h"
#include "exchange/RefiQdpx.h"
#include "exchange/Unzip.h"

#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <vector>

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

fs::path filePath(const QString &path)
{
    return fs::path(QFile::encodeName(path).toStdString());
}

/// Of the entry itself: links aren't followed.
fs::file_type typeOf(const fs::path &path)
{
    std::error_code error;
    return fs::symlink_status(path, error).type();
}

/// Calls `visit(path, type)` for everything in the folder at any depth until it returns false; returns whether it never
/// did. Only one folder is open at a time: archives may nest deeper than a process may open files.
template <typename Visit>
bool forEachEntry(const fs::path &root, Visit visit)
{
    std::vector<fs::path> waiting{root};
    while (!waiting.empty()) {
        const fs::path folder = std::move(waiting.back());
        waiting.pop_back();
        std::error_code error;
        for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
            const fs::file_type type = typeOf(entry->path());
            if (!visit(entry->path(), type))
                return false;
            if (type == fs::file_type::directory)
                waiting.push_back(entry->path());
        }
    }
    return true;
}

/// Watches a folder that is being filled.
class FolderWatch {
public:
    FolderWatch(const QString &folder, qint64 maxBytes, qint64 maxEntries)
        : m_folder(filePath(folder)),
          m_maxBytes(maxBytes),
          m_maxEntries(maxEntries)
    {
        m_clock.start();
    }

    /// As `isWithinLimits`, but only looks now and then: counting takes at most a tenth of the time.
    [[nodiscard]] bool seemsWithinLimits()
    {
        const qint64 now = m_clock.elapsed();
        if (now < m_nextLook)
            return true;
        const bool result = isWithinLimits();
        const qint64 end = m_clock.elapsed();
        m_nextLook = end + (end - now) * 9;
        return result;
    }

    [[nodiscard]] bool isWithinLimits() const
    {
        qint64 bytes = 0;
        qint64 entries = 0;
        return forEachEntry(m_folder, [&](const fs::path &path, fs::file_type type) {
            std::error_code error;
            const std::uintmax_t size = type == fs::file_type::regular ? fs::file_size(path, error) : 0;
            bytes += error ? 0 : qint64(size); // the file may be gone by now
            return bytes <= m_maxBytes && ++entries <= m_maxEntries;
        });
    }

private:
    fs::path m_folder;
    qint64 m_maxBytes;
    qint64 m_maxEntries;
    QElapsedTimer m_clock;
    qint64 m_nextLook = 0;
};

/// The archives of some tools grant no permissions at all.
void makeReadable(const QString &folder)
{
    (void)forEachEntry(filePath(folder), [](const fs::path &path, fs::file_type type) {
        std::error_code error;
        if (type == fs::file_type::directory)
            fs::permissions(path, fs::perms::owner_all, fs::perm_options::add, error);
        else if (type == fs::file_type::regular)
            fs::permissions(path, fs::perms::owner_read, fs::perm_options::add, error);
        return true;
    });
}

bool exists(const QString &path)
{
    const fs::file_type type = typeOf(filePath(path));
    return type != fs::file_type::not_found && type != fs::file_type::none;
}

QString folded(const QString &name)
{
    return name.normalized(QString::NormalizationForm_C).toCaseFolded();
}

} // namespace

UnpackedArchive::UnpackedArchive(
    const QString &archive, const UnpackLimits &limits, const std::function<bool()> &mayGoOn)
    : m_folder(u"vorn-qdpx-import-"_s)
{
    const qint64 maxBytes = std::max(limits.bytes, QFileInfo(archive).size() * limits.archiveSizes);
    FolderWatch watch(m_folder.path(), maxBytes, limits.entries);
    bool isWanted = true;
    const ChildProcess::Result result = Unzip::run(
        {.archive = archive, .options = {u"-o"_s, u"-q"_s}, .rest = {u"-d"_s, m_folder.path()}, .mayGoOn = [&] {
             return (isWanted = mayGoOn()) && watch.seemsWithinLimits();
         }});
    makeReadable(m_folder.path());
    if (!isWanted)
        throw ImportStopped();
    if (result.end == ChildProcess::Result::End::stopped || !watch.isWithinLimits())
        throw RefiQdpx::RefiError::notUsable(u"it unpacks to more than a project can hold"_s);
    if (result.end != ChildProcess::Result::End::exited || result.status != Unzip::warned)
        RefiQdpx::throwUnlessSucceeded(u"/usr/bin/unzip"_s, result);
}

std::optional<QString> UnpackedArchive::path(QStringView name) const
{
    if (name.contains(QChar::Null)) // would end the name for the file system
        return {};
    QString found = m_folder.path();
    for (const QStringView component : name.split(u'/', Qt::SkipEmptyParts)) {
        if (component == u".")
            continue;
        if (component == u".." || typeOf(filePath(found)) != fs::file_type::directory)
            return {};
        const std::optional<QString> next = entry(found, component.toString());
        if (!next)
            return {};
        found = *next;
    }
    return typeOf(filePath(found)) == fs::file_type::regular ? std::optional(found) : std::nullopt;
}

std::optional<QString> UnpackedArchive::entry(const QString &folder, const QString &name) const
{
    const QString exact = folder + u'/' + name;
    if (exists(exact))
        return exact;
    const Listing &names = listing(folder);
    const auto other = names.constFind(folded(name));
    return other == names.constEnd() ? std::nullopt : std::optional(QString(folder + u'/' + *other));
}

const UnpackedArchive::Listing &UnpackedArchive::listing(const QString &folder) const
{
    const auto known = m_listings.constFind(folder);
    if (known != m_listings.constEnd())
        return *known;
    Listing names;
    QDirIterator entries(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    while (entries.hasNext()) {
        entries.next();
        QString &name = names[folded(entries.fileName())];
        if (name.isEmpty() || entries.fileName() < name) // the order of a listing depends on the file system
            name = entries.fileName();
    }
    return *m_listings.insert(folder, names);
}
