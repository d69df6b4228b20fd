#include "exchange/UnpackedArchive.h"
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
QString refusal(const QString &archive, const UnpackLimits &limits = {})
{
    return complaintAbout([&] { const UnpackedArchive unpacked(archive, limits); });
}

constexpr QStringView noArchive(u"/usr/bin/unzip failed with status 9");

class Archives : public testing::Test {
protected:
    ~Archives() override { EXPECT_FALSE(m_folder.hasLeftovers()); }

    QString path(const QString &name) const { return m_folder.path(name); }
    QString made(const QString &name, const QByteArray &bytes) const
    {
        QDir().mkpath(QFileInfo(path(name)).path());
        AtomicFile::write(path(name), bytes);
        return path(name);
    }
    QString made(const TestArchive &archive) const { return made(u"a.qdpx"_s, archive.bytes()); }

private:
    OwnTemporaryFolder m_folder;
};

/// The text of a member; "(none)" if there is none.
QByteArray textOf(const UnpackedArchive &archive, const QString &name)
{
    const std::optional<QString> path = archive.path(name);
    return path ? AtomicFile::readFile(*path) : "(none)";
}

} // namespace

TEST_F(Archives, NamesAreTakenLiterally)
{
    const QList<std::pair<QString, QString>> cases{// with a sibling that the name would match as a pattern
        {u"study [ab].qdpx"_s, u"study a.qdpx"_s}, {u"*.qdpx"_s, u"a.qdpx"_s}, {u"why?.qdpx"_s, u"why1.qdpx"_s},
        {u"a[.qdpx"_s, u"a[[].qdpx"_s}, {u"[!a]^].qdpx"_s, u"b^].qdpx"_s}, {u"a\\*b.qdpx"_s, u"a*b.qdpx"_s},
        {u"d\\[x/a\\b.qdpx"_s, u"d[x/ab.qdpx"_s}, {u"-d.qdpx"_s, u"d.qdpx"_s},
        {u"Ünïcode 研究 [1]\U0001F600.qdpx"_s, u"Ünïcode 研究 1\U0001F600.qdpx"_s}};
    for (const auto &[name, sibling] : cases) {
        made(sibling, archiveHolding("wrong"));
        EXPECT_EQ(refusal(path(name)), noArchive) << name.toStdString();
        const UnpackedArchive archive(made(name, archiveHolding("right")));
        EXPECT_EQ(textOf(archive, u"member.txt"_s), "right") << name.toStdString();
    }
}

struct NoArchiveCase {
    const char *name;
    void (*make)(const QString &path);
};
class NoArchive : public Archives, public testing::WithParamInterface<NoArchiveCase> { };

TEST_P(NoArchive, IsRefusedAndNotReplacedByAnother)
{
    made(u"a.qdpx.zip"_s, archiveHolding("wrong"));
    GetParam().make(path(u"a.qdpx"_s));
    EXPECT_EQ(refusal(path(u"a.qdpx"_s)), noArchive);
}

INSTANTIATE_TEST_SUITE_P(Files, NoArchive,
    testing::Values(NoArchiveCase{"missing", [](const QString &) {}},
        NoArchiveCase{"text", [](const QString &path) { AtomicFile::write(path, "PK\x05\x06 but no more"); }},
        NoArchiveCase{"truncated",
            [](const QString &path) { AtomicFile::write(path, archiveHolding(QByteArray(99, 'x')).chopped(5)); }},
        NoArchiveCase{"folder", [](const QString &path) { QDir().mkpath(path); }},
        NoArchiveCase{"pipe", [](const QString &path) { ::mkfifo(QFile::encodeName(path).constData(), 0600); }}),
    rowName);

TEST_F(Archives, ThatAreStrangeAreUsedAsFarAsPossible)
{
    // Names that lead out of the folder, for which unzip only warns; no permissions; a long comment at the end.
    QByteArray bytes = TestArchive()
                           .add("/absolute.txt", "a")
                           .add("../../escaped.txt", "b")
                           .add("f/", {}, 0040000)
                           .add("f/member.txt", "text", 0100000)
                           .bytes();
    bytes.chop(2);
    const UnpackedArchive archive(made(u"a.qdpx"_s, bytes + "\xFF\xFF" + QByteArray(0xFFFF, 'c')));
    EXPECT_EQ(textOf(archive, u"f/member.txt"_s), "text");
    EXPECT_FALSE(QFile::exists(u"/absolute.txt"_s));
    QByteArray damaged = archiveHolding("She said nothing at all that day.");
    damaged[50] = char(damaged[50] ^ 0x5A);
    EXPECT_TRUE(refusal(made(u"b.qdpx"_s, damaged)).startsWith(u"/usr/bin/unzip failed with status "));
}

TEST_F(Archives, ThatUnpackToTooMuchAreRefused)
{
    const QString tooMuch = u"Not a usable REFI-QDA file: it unpacks to more than a project can hold"_s;
    const QString archive =
        made(TestArchive().add("a/b/large.txt", QByteArray(3'000'000, 'x')).add("a/small.txt", "x"));
    EXPECT_EQ(refusal(archive, {.bytes = 3'000'000, .archiveSizes = 1}), tooMuch);
    EXPECT_EQ(refusal(archive, {.bytes = 3'000'001, .archiveSizes = 1, .entries = 3}), tooMuch);
    EXPECT_EQ(refusal(archive, {.bytes = 3'000'001, .archiveSizes = 1, .entries = 4}), QString());
    EXPECT_EQ(refusal(archive, {.bytes = 0, .archiveSizes = 10'000}), QString());
    TestArchive bomb; // is stopped on the way: all of it takes far longer
    for (char name = 'a'; name <= 'j'; ++name)
        bomb.add(QByteArray(1, name), QByteArray(20'000'000, 'x'));
    EXPECT_EQ(refusal(made(bomb), {.bytes = 1'000'000, .archiveSizes = 1}), tooMuch);
}

TEST_F(Archives, LinksAreNotFollowed)
{
    const QByteArray outside = path({}).toUtf8();
    made(u"secret.txt"_s, "secret");
    const auto link = TestArchive::symbolicLink;
    const UnpackedArchive archive(made(TestArchive()
                                           .add("sources/real.txt", "text")
                                           .add("folder", outside, link)
                                           .add("sources/secret.txt", outside + "secret.txt", link)
                                           .add("sources/inside.txt", "real.txt", link)
                                           .add("inside", "sources", link)));
    EXPECT_EQ(textOf(archive, u"sources/real.txt"_s), "text");
    for (const QString &name :
        {u"folder/secret.txt"_s, u"sources/secret.txt"_s, u"sources/inside.txt"_s, u"inside/real.txt"_s,
            u"sources/../sources/real.txt"_s, u"sources"_s, u""_s, u"/"_s, u"Folder/secret.txt"_s,
            u"SOURCES/SECRET.TXT"_s, path(u"secret.txt"_s), u"sources/real.txt"_s + QChar(0) + u'x'})
        EXPECT_EQ(textOf(archive, name), "(none)") << name.toStdString();
}

TEST_F(Archives, GiveTheMemberOfExactlyThatNameOrElseASimilarOne)
{
    TestArchive made;
    for (const char *name : {"a.txt", "A.TXT", "b.txt", "B.TXT", "Übung.txt"})
        made.add(QByteArray("Sources/") + name, name);
    const UnpackedArchive archive(this->made(made));
    const QList<std::pair<QString, QByteArray>> cases{{u"Sources/a.txt"_s, "a.txt"}, {u"sources/A.TXT"_s, "A.TXT"},
        {u"sources/a.Txt"_s, "A.TXT"}, {u"sources/b.Txt"_s, "B.TXT"}, // of two similar ones always the same
        {u"SOURCES//U\u0308BUNG.txt"_s, "Übung.txt"}, {u"./sources/./a.txt"_s, "a.txt"},
        {u"sources/ab.txt"_s, "(none)"}};
    for (const auto &[name, text] : cases)
        EXPECT_EQ(textOf(archive, name), text) << name.toStdString();
}
