#include "platform/StagingFolder.h"

#include "platform/LocalizedError.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QUuid>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <vector>

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

/// Makes a private folder and returns `path`. Throws FileError.
QString madePrivate(const QString &path)
{
    std::error_code error;
    const fs::path folder(QFile::encodeName(path).toStdString());
    fs::create_directories(folder.parent_path(), error);
    // mkdir makes it private at once and fails if something is there already.
    if (::mkdir(folder.c_str(), S_IRWXU) != 0)
        throw FileError(path, QString::fromStdString(std::generic_category().message(errno)));
    fs::permissions(folder, fs::perms::owner_all, error); // whatever the umask took away
    return path;
}

/// Also removes folders without permissions and folders nested deeper than file descriptors last: an archive may hold
/// both. Links aren't followed.
void removeStubbornly(const fs::path &root)
{
    std::error_code error;
    std::vector<fs::path> folders{root}; // parents before children
    for (size_t index = 0; index < folders.size(); ++index) {
        const fs::path folder = folders[index];
        fs::permissions(folder, fs::perms::owner_all, fs::perm_options::add | fs::perm_options::nofollow, error);
        for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
            std::error_code ignored;
            if (entry->symlink_status(ignored).type() == fs::file_type::directory)
                folders.push_back(entry->path());
            else
                fs::remove(entry->path(), ignored);
        }
    }
    std::for_each(folders.rbegin(), folders.rend(), [&](const fs::path &folder) { fs::remove(folder, error); });
}

/// Opens the folder and locks it for this process; -1 if it isn't a folder of this user or another process holds it.
int lockedFolder(const QString &path)
{
    const int folder = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (folder < 0)
        return -1;
    struct stat status { };
    if (::fstat(folder, &status) == 0 && status.st_uid == ::geteuid() && ::flock(folder, LOCK_EX | LOCK_NB) == 0)
        return folder;
    ::close(folder);
    return -1;
}

} // namespace

StagingFolder::StagingFolder(const QString &prefix)
    : m_path(
        madePrivate(QDir::tempPath() + u'/' + prefix + QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper())),
      m_lock(lockedFolder(m_path))
{
}

StagingFolder::~StagingFolder()
{
    std::error_code error;
    const fs::path folder(QFile::encodeName(m_path).toStdString());
    fs::remove_all(folder, error);
    if (error)
        removeStubbornly(folder);
    if (m_lock >= 0)
        ::close(m_lock);
}

void StagingFolder::makeFolder(const QString &relative) const
{
    std::error_code error;
    fs::create_directories(fs::path(QFile::encodeName(path(relative)).toStdString()), error);
    if (error)
        throw FileError(path(relative), QString::fromStdString(error.message()));
}

void StagingFolder::removeAbandoned(const QString &prefix)
{
    constexpr qint64 minAge = 60; // seconds
    const QDateTime now = QDateTime::currentDateTime();
    const QFileInfoList folders =
        QDir(QDir::tempPath()).entryInfoList({prefix + u'*'}, QDir::Dirs | QDir::Hidden | QDir::NoSymLinks);
    for (const QFileInfo &folder : folders) {
        if (folder.lastModified().secsTo(now) < minAge)
            continue;
        const int lock = lockedFolder(folder.absoluteFilePath());
        if (lock < 0)
            continue;
        removeStubbornly(fs::path(QFile::encodeName(folder.absoluteFilePath()).toStdString()));
        ::close(lock);
    }
}
