#include "platform/AtomicFile.h"
#include "platform/LocalizedError.h"
#include "platform/StagingFolder.h"
#include "support/FailingDisk.h"
#include "support/TestArchive.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

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
        const mode_t before = ::umask(0777);
        const StagingFolder staging(u"vorn-test-"_s);
        ::umask(before);
        path = staging.path();
        struct stat status { };
        ASSERT_EQ(::stat(QFile::encodeName(path).constData(), &status), 0);
        EXPECT_EQ(status.st_mode & 0777U, 0700U);
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

void makeOld(const QString &path, qint64 seconds)
{
    const timespec then{.tv_sec = ::time(nullptr) - seconds, .tv_nsec = 0};
    const timespec times[] = {then, then};
    ::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, 0);
}

/// A folder as a killed process leaves it, last changed `age` seconds ago.
QString abandonedFolder(const QString &name, qint64 age)
{
    const QString path = QDir::tempPath() + u'/' + name;
    QDir().mkpath(path + u"/sources"_s);
    AtomicFile::write(path + u"/sources/interview.txt"_s, "text");
    QFile::setPermissions(path + u"/sources"_s, QFile::Permissions());
    makeOld(path, age);
    return path;
}

} // namespace

TEST(StagingFolder, IsRemovedLaterWhenItsProcessWasKilled)
{
    const OwnTemporaryFolder elsewhere;
    const QString old = abandonedFolder(u"vorn-test-old"_s, 3'600);
    const QString young = abandonedFolder(u"vorn-test-young"_s, 10); // its process may be about to lock it
    const QString other = abandonedFolder(u"other"_s, 3'600);
    const StagingFolder living(u"vorn-test-"_s);
    makeOld(living.path(), 3'600);
    const QString link = QDir::tempPath() + u"/vorn-test-link"_s;
    QFile::link(elsewhere.path({}), link);

    StagingFolder::removeAbandoned(u"vorn-test-"_s);
    EXPECT_FALSE(QFileInfo::exists(old));
    for (const QString &kept : {young, other, living.path(), elsewhere.path({}), link})
        EXPECT_TRUE(QFileInfo::exists(kept)) << kept.toStdString();
    for (const QString &closed : {young, other})
        QFile::setPermissions(closed + u"/sources"_s, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}
