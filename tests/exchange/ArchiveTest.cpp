#include "exchange/ImportStep.h"
#include "exchange/UnpackedArchive.h"
#include "platform/AtomicFile.h"
#include "support/Complaint.h"
#include "support/TestArchive.h"

#include <QFile>

#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

class Archives : public testing::Test, protected OwnTemporaryFolder {
protected:
    ~Archives() override { EXPECT_FALSE(hasLeftovers()); }
};

QByteArray archiveHolding(const QByteArray &text)
{
    return TestArchive().add("member.txt", text).bytes();
}

/// What the archive is refused with, or "" if it isn't.
QString refusal(const QString &archive, const UnpackLimits &limits = {})
{
    return complaintAbout([&] { const UnpackedArchive unpacked(archive, limits); });
}

/// The text of a member; "(none)" if there is none.
QByteArray textOf(const UnpackedArchive &archive, const QString &name)
{
    const std::optional<QString> path = archive.path(name);
    return path ? AtomicFile::readFile(*path) : "(none)";
}

constexpr QStringView noArchive(u"/usr/bin/unzip failed with status 9");

} // namespace

TEST_F(Archives, NamesAreTakenLiterally)
{
    const QList<std::pair<QString, QString>> cases{// with a sibling that the name would match as a pattern
        {u"study [ab].qdpx"_s, u"study a.qdpx"_s}, {u"*.qdpx"_s, u"a.qdpx"_s}, {u"why?.qdpx"_s, u"why1.qdpx"_s},
        {u"a[.qdpx"_s, u"a[[].qdpx"_s}, {u"[!a]^].qdpx"_s, u"b^].qdpx"_s}, {u"a\\*b.qdpx"_s, u"a*b.qdpx"_s},
        {u"d\\[x/a\\b.qdpx"_s, u"d[x/ab.qdpx"_s}, {u"-d.qdpx"_s, u"d.qdpx"_s}, {u"z.qdpx"_s, u"z.qdpx.zip"_s},
        {u"Ünïcode 研究 [1]\U0001F600.qdpx"_s, u"Ünïcode 研究 1\U0001F600.qdpx"_s}};
    for (const auto &[name, sibling] : cases) {
        SCOPED_TRACE(name.toStdString());
        write(sibling, archiveHolding("wrong"));
        EXPECT_EQ(refusal(path(name)), noArchive);
        EXPECT_EQ(refusal(write(name, "PK\x05\x06 but no more")), noArchive);
        EXPECT_EQ(textOf(UnpackedArchive(write(name, archiveHolding("right"))), u"member.txt"_s), "right");
    }
}

TEST_F(Archives, AreRefusedOrReadAsFarAsPossible)
{
    EXPECT_EQ(refusal(write(u"cut"_s, archiveHolding(QByteArray(99, 'x')).chopped(5))), noArchive);
    EXPECT_EQ(refusal(path({})), noArchive);
    ::mkfifo(QFile::encodeName(path(u"pipe"_s)).constData(), 0600);
    EXPECT_EQ(refusal(path(u"pipe"_s)), noArchive);
    QByteArray damaged = archiveHolding("She said nothing at all that day.");
    damaged[50] = char(damaged[50] ^ 0x5A);
    EXPECT_TRUE(refusal(write(u"damaged"_s, damaged)).startsWith(u"/usr/bin/unzip failed with status "));

    // Names that lead out of the folder, for which unzip only warns; no permissions; a long comment at the end.
    TestArchive strange;
    strange.add("/absolute.txt", "a").add("../../escaped.txt", "b");
    strange.add("f/", {}, 0040000).add("f/member.txt", "text", 0100000);
    const QByteArray bytes = strange.bytes().chopped(2) + "\xFF\xFF" + QByteArray(0xFFFF, 'c');
    EXPECT_EQ(textOf(UnpackedArchive(write(u"a.qdpx"_s, bytes)), u"f/member.txt"_s), "text");
}

TEST_F(Archives, ThatUnpackToTooMuchAreRefused)
{
    const QString tooMuch = u"Not a usable REFI-QDA file: it unpacks to more than a project can hold"_s;
    const QString archive = write(
        u"a.qdpx"_s, TestArchive().add("a/b/large.txt", QByteArray(3'000'000, 'x')).add("a/small.txt", "x").bytes());
    EXPECT_EQ(refusal(archive, {.bytes = 3'000'000, .archiveSizes = 1}), tooMuch);
    EXPECT_EQ(refusal(archive, {.bytes = 3'000'001, .archiveSizes = 1, .entries = 3}), tooMuch);
    EXPECT_EQ(refusal(archive, {.bytes = 3'000'001, .archiveSizes = 1, .entries = 4}), QString());
    EXPECT_EQ(refusal(archive, {.bytes = 0, .archiveSizes = 10'000}), QString());
    TestArchive slow; // enough that there is time for a question
    for (char name = 'a'; name <= 'j'; ++name)
        slow.add(QByteArray(1, name), QByteArray(20'000'000, 'x'));
    EXPECT_EQ(refusal(write(u"a.qdpx"_s, slow.bytes()), {.bytes = 1'000'000, .archiveSizes = 1}), tooMuch);
    EXPECT_THROW(UnpackedArchive(path(u"a.qdpx"_s), {}, [] { return false; }), ImportStopped);
}

TEST_F(Archives, GiveTheMemberOfThatNameOrASimilarOneAndFollowNoLinks)
{
    const QByteArray outside = path({}).toUtf8();
    write(u"secret.txt"_s, "secret");
    TestArchive made;
    for (const char *name : {"a.txt", "A.TXT", "b.txt", "B.TXT", "Übung.txt"})
        made.add(QByteArray("Sources/") + name, name);
    made.add("folder", outside, TestArchive::symbolicLink).add("inside", "Sources", TestArchive::symbolicLink);
    made.add("Sources/secret.txt", outside + "secret.txt", TestArchive::symbolicLink);
    made.add("Sources/inside.txt", "a.txt", TestArchive::symbolicLink);
    const UnpackedArchive archive(write(u"a.qdpx"_s, made.bytes()));
    const QList<std::pair<QString, QByteArray>> cases{{u"Sources/a.txt"_s, "a.txt"}, {u"sources/A.TXT"_s, "A.TXT"},
        {u"sources/a.Txt"_s, "A.TXT"}, {u"sources/b.Txt"_s, "B.TXT"}, // of two similar ones always the same
        {u"SOURCES//U\u0308BUNG.txt"_s, "Übung.txt"}, {u"./sources/./a.txt"_s, "a.txt"}};
    for (const auto &[name, text] : cases)
        EXPECT_EQ(textOf(archive, name), text) << name.toStdString();
    for (const QString &name :
        {u"sources/ab.txt"_s, u"folder/secret.txt"_s, u"sources/secret.txt"_s, u"sources/inside.txt"_s,
            u"inside/a.txt"_s, u"Sources/../Sources/a.txt"_s, u"Sources"_s, u""_s, u"/"_s, u"Folder/secret.txt"_s,
            u"SOURCES/SECRET.TXT"_s, path(u"secret.txt"_s), u"Sources/a.txt"_s + QChar(0) + u'x'})
        EXPECT_EQ(textOf(archive, name), "(none)") << name.toStdString();
}
