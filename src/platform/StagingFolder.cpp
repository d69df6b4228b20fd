#include "platform/StagingFolder.h"

#include "platform/FileError.h"

#include <QDir>
#include <QFile>
#include <QUuid>

#include <filesystem>
#include <system_error>

using namespace Qt::StringLiterals;
namespace fs = std::filesystem;

namespace {

void makePrivate(const QString &path)
{
    std::error_code error;
    const fs::path folder(QFile::encodeName(path).toStdString());
    fs::create_directories(folder.parent_path(), error);
    if (!fs::create_directory(folder, error) && error)
        throw FileError(path, QString::fromStdString(error.message()));
    fs::permissions(folder, fs::perms::owner_all, error);
}

/// An unpacked archive may hold folders that nobody may enter; they are opened first. Links aren't followed.
void openFolders(const fs::path &root)
{
    std::error_code error;
    std::vector<fs::path> waiting{root};
    while (!waiting.empty()) {
        const fs::path folder = std::move(waiting.back());
        waiting.pop_back();
        fs::permissions(folder, fs::perms::owner_all, fs::perm_options::add | fs::perm_options::nofollow, error);
        for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
            if (entry->symlink_status(error).type() == fs::file_type::directory)
                waiting.push_back(entry->path());
        }
        error.clear();
    }
}

} // namespace

StagingFolder::StagingFolder(const QString &prefix)
    : m_path(QDir::tempPath() + u'/' + prefix + QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper())
{
    makePrivate(m_path);
}

StagingFolder::~StagingFolder()
{
    std::error_code error;
    const fs::path folder(QFile::encodeName(m_path).toStdString());
    fs::remove_all(folder, error);
    if (error) {
        openFolders(folder);
        fs::remove_all(folder, error);
    }
}

void StagingFolder::makeFolder(const QString &relative) const
{
    std::error_code error;
    fs::create_directories(fs::path(QFile::encodeName(path(relative)).toStdString()), error);
    if (error)
        throw FileError(path(relative), QString::fromStdString(error.message()));
}
