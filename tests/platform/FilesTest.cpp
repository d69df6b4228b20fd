#include "platform/AtomicFile.h"
#include "platform/FileError.h"
#include "platform/StagingFolder.h"
#include "support/FailingDisk.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cerrno>
#include <cstring>

using namespace Qt::StringLiterals;

TEST(AtomicFile, ReplacesAFileOrLeavesItAsItWas)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"report.md"_s);
    AtomicFile::write(path, "first");
    AtomicFile::write(path, "second");
    EXPECT_EQ(AtomicFile::read(path), "second");

    QDir(folder.path()).mkdir(u"taken"_s);
    EXPECT_THROW(AtomicFile::write(folder.filePath(u"taken"_s), "text"), FileError);
    EXPECT_THROW(AtomicFile::write(folder.filePath(u"missing/report.md"_s), "text"), FileError);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
        (QStringList{u"report.md"_s, u"taken"_s}));
}

TEST(AtomicFile, TellsWhyAFileWasWrittenOnlyInPart)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"report.md"_s);
    AtomicFile::write(path, "first");
    for (const rlim_t limit : {rlim_t(0), rlim_t(10), rlim_t(100'000)}) { // around the size of every buffer
        QString complaint;
        try {
            const FileSizeLimit disk(limit);
            AtomicFile::write(path, QByteArray(qsizetype(limit) + 1'000, 'x'));
        } catch (const FileError &error) {
            complaint = error.description();
        }
        EXPECT_EQ(complaint, u"“report.md”: "_s + QString::fromLocal8Bit(std::strerror(EFBIG)));
        EXPECT_EQ(AtomicFile::read(path), "first");
    }
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
        QStringList{u"report.md"_s});
}

TEST(AtomicFile, ReadsOnlyRealFiles)
{
    const QTemporaryDir folder;
    const QString pipe = folder.filePath(u"pipe.txt"_s);
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_THROW(static_cast<void>(AtomicFile::read(pipe)), FileError); // opening it would wait for ever
    EXPECT_THROW(static_cast<void>(AtomicFile::read(folder.path())), FileError);
    EXPECT_THROW(static_cast<void>(AtomicFile::read(folder.filePath(u"none"_s))), FileError);
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
