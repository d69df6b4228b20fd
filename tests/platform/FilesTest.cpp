#include "platform/AtomicFile.h"
#include "platform/LocalizedError.h"
#include "platform/StagingFolder.h"
#include "support/FailingDisk.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <ctime>

using namespace Qt::StringLiterals;

namespace {

QStringList entries(const QTemporaryDir &folder)
{
    return QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

} // namespace

TEST(AtomicFile, ReplacesAFileOrLeavesItAsItWas)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"report.md"_s);
    AtomicFile::write(path, "first");
    const auto writeInPieces = [&](bool isStopped) {
        AtomicFile::writeInPieces(path, [isStopped](const AtomicFile::Append &append) {
            append("sec");
            if (isStopped)
                throw std::runtime_error("stopped");
            append("ond");
        });
    };
    EXPECT_THROW(writeInPieces(true), std::runtime_error);
    EXPECT_EQ(AtomicFile::readFile(path), "first");
    writeInPieces(false);
    EXPECT_EQ(AtomicFile::readFile(path), "second");

    QDir(folder.path()).mkdir(u"taken"_s);
    EXPECT_THROW(AtomicFile::write(folder.filePath(u"taken"_s), "text"), FileError);
    EXPECT_THROW(AtomicFile::write(folder.filePath(u"missing/report.md"_s), "text"), FileError);
    for (const qint64 limit : {0, 10, 100'000}) { // around the size of every buffer
        QString complaint;
        try {
            const FailingDisk disk(FailingDisk::Kind::full, folder.path(), limit);
            AtomicFile::write(path, QByteArray(limit + 1'000, 'x'));
        } catch (const FileError &error) {
            complaint = error.description();
        }
        EXPECT_EQ(complaint, u"“report.md”: "_s + QString::fromLocal8Bit(std::strerror(EFBIG)));
        EXPECT_EQ(AtomicFile::readFile(path), "second");
    }
    EXPECT_EQ(entries(folder), (QStringList{u"report.md"_s, u"taken"_s}));
}

TEST(AtomicFile, ReadsOnlyRealFiles)
{
    const QTemporaryDir folder;
    const QString pipe = folder.filePath(u"pipe.txt"_s);
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QFile huge(folder.filePath(u"huge"_s)); // without any block on the disk
    ASSERT_TRUE(huge.open(QFile::WriteOnly) && huge.resize((qint64(1) << 30) + 1));
    for (const QString &path : {pipe, folder.path(), folder.filePath(u"none"_s), huge.fileName()})
        EXPECT_THROW((void)AtomicFile::readFile(path), FileError) << path.toStdString();
}

TEST(StagingFolder, IsPrivateAndGoesWithWhateverIsInIt)
{
    const QTemporaryDir elsewhere;
    AtomicFile::write(elsewhere.filePath(u"kept.txt"_s), "kept");
    QString path;
    {
        const StagingFolder staging(u"vorn-test-"_s);
        path = staging.path();
        EXPECT_EQ(
            QFile::permissions(path) & (QFile::ReadGroup | QFile::ReadOther | QFile::ExeOther), QFile::Permissions());
        staging.makeFolder(u"closed/inner"_s);
        AtomicFile::write(staging.path(u"closed/inner/file"_s), "text");
        QFile::link(elsewhere.path(), staging.path(u"closed/link"_s));
        QFile::setPermissions(staging.path(u"closed/inner"_s), QFile::Permissions());
        QFile::setPermissions(staging.path(u"closed"_s), QFile::Permissions());
    }
    EXPECT_FALSE(QFileInfo::exists(path));
    EXPECT_TRUE(QFileInfo::exists(elsewhere.filePath(u"kept.txt"_s)));
}

namespace {

/// The folder of a process that ended without any chance to remove it, as if `age` seconds ago.
QString abandonedFolder(qint64 age)
{
    int ends[2];
    if (::pipe(ends) != 0)
        return {};
    const pid_t process = ::fork();
    if (process == 0) {
        const StagingFolder staging(u"vorn-test-"_s);
        staging.makeFolder(u"sources"_s);
        AtomicFile::write(staging.path(u"sources/interview.txt"_s), "text");
        QFile::setPermissions(staging.path(u"sources"_s), QFile::Permissions());
        const QByteArray path = QFile::encodeName(staging.path());
        const bool isTold = ::write(ends[1], path.constData(), size_t(path.size())) == path.size();
        ::_exit(isTold ? 0 : 1);
    }
    int status = 0;
    ::waitpid(process, &status, 0);
    QByteArray path(4'096, '\0');
    path.resize(::read(ends[0], path.data(), size_t(path.size())));
    ::close(ends[0]);
    ::close(ends[1]);
    const timespec then{.tv_sec = ::time(nullptr) - age, .tv_nsec = 0};
    const timespec times[] = {then, then};
    ::utimensat(AT_FDCWD, path.constData(), times, 0);
    return QFile::decodeName(path);
}

} // namespace

TEST(StagingFolder, IsRemovedLaterWhenItsProcessWasKilled)
{
    const QTemporaryDir temporary;
    const QByteArray before = qgetenv("TMPDIR");
    qputenv("TMPDIR", QFile::encodeName(temporary.path()));
    const QString old = abandonedFolder(3'600);
    const QString young = abandonedFolder(10); // its process may be about to lock it
    const StagingFolder living(u"vorn-test-"_s);
    const timespec longAgo[] = {{}, {}};
    ASSERT_EQ(::utimensat(AT_FDCWD, QFile::encodeName(living.path()).constData(), longAgo, 0), 0);
    const QString link = temporary.filePath(u"vorn-test-link"_s);
    const QTemporaryDir elsewhere;
    QFile::link(elsewhere.path(), link);
    ASSERT_TRUE(QFileInfo(old).isDir());
    ASSERT_TRUE(QFileInfo(young).isDir());

    StagingFolder::removeAbandoned(u"vorn-test-"_s);
    EXPECT_FALSE(QFileInfo::exists(old));
    EXPECT_TRUE(QFileInfo::exists(young));
    EXPECT_TRUE(QFileInfo::exists(living.path()));
    EXPECT_TRUE(QFileInfo::exists(elsewhere.path()));
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    QFile::setPermissions(young + u"/sources"_s, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("TMPDIR", before);
}
