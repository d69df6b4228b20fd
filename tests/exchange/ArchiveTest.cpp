#include "exchange/ArchiveMembers.h"
#include "exchange/RefiQdpx.h"
#include "exchange/RefiQdpxUnpack.h"
#include "platform/AtomicFile.h"
#include "support/Cases.h"
#include "support/Complaint.h"
#include "support/Printing.h"
#include "support/TestArchive.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

QByteArray archiveHolding(const QByteArray &text)
{
    return TestArchive().add("member.txt", text).bytes();
}

/// What the archive is refused with, or "" if it isn't.
QString refusal(const QString &archive, const QString &folder, const RefiQdpx::UnpackLimits &limits = {})
{
    return complaintAbout([&] { RefiQdpx::unpackArchive(archive, folder, limits); });
}

constexpr QStringView noArchive(u"/usr/bin/unzip failed with status 9");

class Archives : public testing::Test {
protected:
    QString path(const QString &name) const { return m_files.filePath(name); }
    QString made(const QString &name, const QByteArray &bytes) const
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        AtomicFile::write(path(name), bytes);
        return path(name);
    }
    QString emptyFolder() const
    {
        QDir(path(u"unpacked"_s)).removeRecursively();
        QDir().mkpath(path(u"unpacked"_s));
        return path(u"unpacked"_s);
    }

private:
    QTemporaryDir m_files;
};

} // namespace

struct NameCase {
    const char *name;
    QString archive;
    QString sibling; ///< that the archive's name would match as a pattern
};
class ArchiveNames : public Archives, public testing::WithParamInterface<NameCase> { };

TEST_P(ArchiveNames, AreTakenLiterally)
{
    made(GetParam().sibling, archiveHolding("wrong"));
    const QString archive = made(GetParam().archive, archiveHolding("right"));
    const QString folder = emptyFolder();
    ASSERT_EQ(refusal(archive, folder), QString());
    EXPECT_EQ(AtomicFile::readFile(folder + u"/member.txt"_s), "right");
    QFile::remove(archive);
    EXPECT_EQ(refusal(archive, emptyFolder()), noArchive);
}

INSTANTIATE_TEST_SUITE_P(Names, ArchiveNames,
    testing::Values(NameCase{"class", u"study [ab].qdpx"_s, u"study a.qdpx"_s}, //
        NameCase{"star", u"*.qdpx"_s, u"a.qdpx"_s}, //
        NameCase{"question_mark", u"why?.qdpx"_s, u"why1.qdpx"_s},
        NameCase{"open_bracket", u"a[.qdpx"_s, u"a[[].qdpx"_s},
        NameCase{"negated_class", u"[!a]^].qdpx"_s, u"b^].qdpx"_s}, NameCase{"backslash", u"a\\b.qdpx"_s, u"ab.qdpx"_s},
        NameCase{"class_in_the_folder", u"[x]/a.qdpx"_s, u"x/a.qdpx"_s},
        NameCase{"class_behind_a_backslash_in_the_folder", u"d\\[x/a\\b.qdpx"_s, u"d[x/ab.qdpx"_s},
        NameCase{"leading_dash", u"-d.qdpx"_s, u"d.qdpx"_s}, //
        NameCase{"leading_dot", u".a*.qdpx"_s, u".ab.qdpx"_s},
        NameCase{"beyond_ascii", u"Ünïcode 研究 [1]\U0001F600.qdpx"_s, u"Ünïcode 研究 1\U0001F600.qdpx"_s}),
    rowName);

struct NoArchiveCase {
    const char *name;
    void (*make)(const QString &path);
};
class NoArchive : public Archives, public testing::WithParamInterface<NoArchiveCase> { };

TEST_P(NoArchive, IsToldAndNotReplacedByAnother)
{
    made(u"a.qdpx.zip"_s, archiveHolding("wrong"));
    GetParam().make(path(u"a.qdpx"_s));
    EXPECT_EQ(refusal(path(u"a.qdpx"_s), emptyFolder()), noArchive);
}

INSTANTIATE_TEST_SUITE_P(Files, NoArchive,
    testing::Values(NoArchiveCase{"missing", [](const QString &) {}},
        NoArchiveCase{"text", [](const QString &path) { AtomicFile::write(path, "PK\x05\x06 but no more"); }},
        NoArchiveCase{"cut_off",
            [](const QString &path) { AtomicFile::write(path, archiveHolding(QByteArray(99, 'x')).chopped(5)); }},
        NoArchiveCase{"folder", [](const QString &path) { QDir().mkpath(path); }},
        NoArchiveCase{"pipe", [](const QString &path) { ::mkfifo(QFile::encodeName(path).constData(), 0600); }}),
    rowName);

TEST_F(Archives, ThatWarnAreUsable)
{
    const QString archive = made(u"a.qdpx"_s,
        TestArchive().add("/absolute.txt", "a").add("../../escaped.txt", "b").add("member.txt", "c").bytes());
    const QString folder = emptyFolder();
    EXPECT_EQ(refusal(archive, folder), QString());
    EXPECT_EQ(AtomicFile::readFile(folder + u"/member.txt"_s), "c");
    EXPECT_FALSE(QFile::exists(path(u"escaped.txt"_s)));
    EXPECT_FALSE(QFile::exists(u"/absolute.txt"_s));
}

TEST_F(Archives, ThatAreDamagedAreTold)
{
    QByteArray bytes = archiveHolding("She said nothing at all that day.");
    bytes[50] = char(bytes[50] ^ 0x5A);
    EXPECT_TRUE(refusal(made(u"a.qdpx"_s, bytes), emptyFolder()).startsWith(u"/usr/bin/unzip failed with status "));
}

TEST_F(Archives, ThatForbidTheirFilesAreReadAllTheSame)
{
    const QString archive =
        made(u"a.qdpx"_s, TestArchive().add("f/", {}, 0040000).add("f/member.txt", "text", 0100000).bytes());
    const QString folder = emptyFolder();
    EXPECT_EQ(refusal(archive, folder), QString());
    EXPECT_TRUE(QFile::permissions(folder + u"/f/member.txt"_s) & QFile::ReadOwner);
    EXPECT_TRUE(QFile::permissions(folder + u"/f"_s) & QFile::ExeOwner);
}

TEST_F(Archives, ThatUnfoldToTooMuchAreRefused)
{
    const QString tooMuch = u"Not a usable REFI-QDA file: it unpacks to more than a project can hold"_s;
    const QString archive = made(
        u"a.qdpx"_s, TestArchive().add("a/b/large.txt", QByteArray(3'000'000, 'x')).add("a/small.txt", "x").bytes());
    EXPECT_EQ(refusal(archive, emptyFolder(), {.bytes = 2'000'000, .archiveSizes = 1}), tooMuch);
    EXPECT_EQ(refusal(archive, emptyFolder(), {.bytes = 4'000'000, .archiveSizes = 1, .entries = 3}), tooMuch);
    EXPECT_EQ(refusal(archive, emptyFolder(), {.bytes = 4'000'000, .archiveSizes = 1, .entries = 4}), QString());
    EXPECT_EQ(refusal(archive, emptyFolder(), {.bytes = 0, .archiveSizes = 10'000}), QString());
}

TEST_F(Archives, ThatUnfoldToTooMuchAreStoppedOnTheWay)
{
    TestArchive bomb;
    const QByteArray member(30'000'000, 'x');
    for (const char *name : {"1", "2", "3", "4", "5", "6", "7", "8", "9"})
        bomb.add(name, member);
    const QString folder = emptyFolder();
    EXPECT_NE(refusal(made(u"a.qdpx"_s, bomb.bytes()), folder, {.bytes = 1'000'000, .archiveSizes = 1}), QString());
    EXPECT_LT(QDir(folder).entryList(QDir::Files).size(), 9);
}

TEST(ArchiveMembers, FollowsNoLink)
{
    const QTemporaryDir files;
    QDir(files.path()).mkpath(u"in/sources"_s);
    QDir(files.path()).mkpath(u"out"_s);
    AtomicFile::write(files.filePath(u"out/secret.txt"_s), "secret");
    AtomicFile::write(files.filePath(u"in/sources/real.txt"_s), "text");
    const auto link = [&](const QString &target, const QString &name) {
        QFile::link(target, files.filePath(u"in/"_s + name));
    };
    link(files.filePath(u"out"_s), u"folder"_s);
    link(files.filePath(u"out/secret.txt"_s), u"sources/secret.txt"_s);
    link(u"real.txt"_s, u"sources/inside.txt"_s);
    link(files.filePath(u"in/sources"_s), u"inside"_s);
    ::mkfifo(QFile::encodeName(files.filePath(u"in/pipe"_s)).constData(), 0600);

    const ArchiveMembers members(files.filePath(u"in"_s));
    EXPECT_TRUE(members.path(u"sources/real.txt"));
    for (const QStringView name : {u"folder/secret.txt", u"sources/secret.txt", u"sources/inside.txt",
             u"inside/real.txt", u"../out/secret.txt", u"sources/../../out/secret.txt", u"sources", u"", u"/", u"pipe",
             u"Folder/secret.txt", u"SOURCES/SECRET.TXT"})
        EXPECT_EQ(members.path(name), std::nullopt) << name.toString().toStdString();
    EXPECT_EQ(members.path(files.filePath(u"out/secret.txt"_s)), std::nullopt);
    EXPECT_EQ(members.path(QString(u"sources/real.txt"_s + QChar(0) + u"x"_s)), std::nullopt);
}

TEST(ArchiveMembers, PrefersTheExactName)
{
    const QTemporaryDir files;
    QDir(files.path()).mkpath(u"Sources"_s);
    for (const QString &name : {u"a.txt"_s, u"A.TXT"_s, u"b.txt"_s, u"B.TXT"_s, u"Übung.txt"_s})
        AtomicFile::write(files.filePath(u"Sources/"_s + name), {});
    const ArchiveMembers members(files.path());
    const QList<std::pair<QString, QString>> cases{{u"Sources/a.txt"_s, u"Sources/a.txt"_s},
        {u"sources/A.TXT"_s, u"Sources/A.TXT"_s}, {u"sources/a.Txt"_s, u"Sources/A.TXT"_s}, // the same of two, always
        {u"sources/b.Txt"_s, u"Sources/B.TXT"_s}, {u"SOURCES//U\u0308BUNG.txt"_s, u"Sources/Übung.txt"_s},
        {u"./sources/./a.txt"_s, u"Sources/a.txt"_s}, {u"sources/ab.txt"_s, u"."_s}};
    for (const auto &[name, found] : cases)
        EXPECT_EQ(QDir(files.path()).relativeFilePath(members.path(name).value_or(files.path())), found);
}
