#include "library/CodeTree.h"
#include "records/CodePalette.h"
#include "records/database/Request.h"
#include "support/TestLibrary.h"

#include <QSet>

#include <gtest/gtest.h>

#include <random>

using namespace Qt::StringLiterals;

namespace {

QStringList outline(const QList<FlatCode> &lines)
{
    QStringList result;
    for (const FlatCode &line : lines)
        result.append(QString(line.depth, u'.') + line.code.name);
    return result;
}

} // namespace

TEST(Codes, TakeThePalettesColoursInTurnAndKeepGivenOnes)
{
    TestLibrary library;
    EXPECT_EQ(library.store.createCode(u"  "_s), std::nullopt);
    for (int index = 0; index < 11; ++index) {
        const auto code = library.store.createCode(u" code "_s);
        EXPECT_EQ(code->name, u"code"_s);
        EXPECT_EQ(code->colorHex, CodePalette::colors()[size_t(index % 9)].hex);
    }
    EXPECT_EQ(library.store.createCode(u"own"_s, u"nonsense"_s)->colorHex, u"nonsense"_s);
    EXPECT_EQ(library.store.codes().get(), library.storedCodes());
}

TEST(Codes, EditingKeepsTheRestAndMemosAnnounceInPlace)
{
    TestLibrary library;
    Code code = library.makeCodes({u"One"_s}).first();
    library.store.renameCode(code, u"\n"_s);
    EXPECT_EQ(library.code(u"One"_s), code);
    library.store.renameCode(code, u" Two "_s);
    library.store.setCodeColor(library.code(u"Two"_s), u"#123456"_s);
    const ChangeCounter changes(library.store.codes());
    library.store.setCodeMemo(library.code(u"Two"_s), u"why"_s);
    library.store.setCodeMemo(library.code(u"Two"_s), u"why"_s);
    EXPECT_EQ(changes.count(), 2);
    code.name = u"Two"_s;
    code.colorHex = u"#123456"_s;
    code.memo = u"why"_s;
    EXPECT_EQ(library.storedCodes(), QList<Code>{code});
    library.store.setCodeMemo(code, {});
    EXPECT_EQ(library.storedCodes().first().memo, std::nullopt);
}

TEST(CodeTree, NestsWithoutCyclesAndComesBackToTheTop)
{
    TestLibrary library;
    const QList<Code> codes = library.makeCodes({u"a"_s, u"b"_s, u"c"_s});
    library.store.nestCode(codes[1].id, codes[0].id);
    library.store.nestCode(codes[2].id, codes[1].id);
    const QStringList nested{u"a"_s, u".b"_s, u"..c"_s};
    EXPECT_EQ(outline(library.store.orderedCodes()), nested);
    library.store.nestCode(codes[0].id, codes[0].id);
    library.store.nestCode(codes[0].id, codes[2].id);
    library.store.nestCode(QUuid::createUuid(), codes[0].id);
    library.store.nestCode(codes[0].id, QUuid::createUuid());
    EXPECT_EQ(outline(library.store.orderedCodes()), nested);
    library.store.moveCodeToTopLevel(library.code(u"b"_s));
    EXPECT_EQ(outline(library.store.orderedCodes()), (QStringList{u"a"_s, u"b"_s, u".c"_s}));
}

TEST(CodeTree, ListsEveryCodeOnceOnAnyData)
{
    std::mt19937 random(5);
    for (int round = 0; round < 300; ++round) {
        QList<Code> codes(1 + int(random() % 12));
        for (Code &code : codes) {
            code.id = QUuid::createUuid();
            code.createdAt = QDateTime::fromMSecsSinceEpoch(qint64(random() % 3), Qt::UTC);
        }
        for (Code &code : codes) { // parents at random: chains, cycles, itself, and some that don't exist
            const auto pick = random() % size_t(codes.size() + 2);
            if (pick < size_t(codes.size()))
                code.parentID = codes[qsizetype(pick)].id;
            else if (pick == size_t(codes.size()))
                code.parentID = QUuid::createUuid();
        }
        QSet<QUuid> seen;
        for (const FlatCode &line : CodeTree::ordered(codes)) {
            EXPECT_LE(line.depth, 4);
            seen.insert(line.id());
        }
        EXPECT_EQ(seen.size(), codes.size());
        EXPECT_EQ(CodeTree::ordered(codes).size(), codes.size());
    }
}

TEST(CodeTree, PutsTheSixthLevelFlatAtTheEndAndSiblingsOldestFirst)
{
    TestLibrary library;
    const QList<Code> codes = library.makeCodes({u"z"_s, u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"a"_s});
    for (int level = 1; level <= 5; ++level)
        library.store.nestCode(codes[level].id, codes[level - 1].id);
    library.store.nestCode(codes[6].id, codes[0].id);
    EXPECT_EQ(outline(library.store.orderedCodes()),
        (QStringList{u"z"_s, u".1"_s, u"..2"_s, u"...3"_s, u"....4"_s, u".a"_s, u"5"_s}));
}

TEST(Codes, DeletingMovesTheChildrenUpAndTakesTheCodings)
{
    TestLibrary library;
    const QList<Code> codes = library.makeCodes({u"top"_s, u"gone"_s, u"x"_s, u"y"_s, u"below"_s});
    library.store.nestCode(codes[1].id, codes[0].id);
    library.store.nestCode(codes[2].id, codes[1].id);
    library.store.nestCode(codes[3].id, codes[1].id);
    library.store.nestCode(codes[4].id, codes[3].id);
    const Document document = library.paste(u"A"_s, u"some text"_s);
    library.store.assignCode(library.code(u"gone"_s), document, {0, 4});
    library.store.assignCode(library.code(u"x"_s), document, {0, 4});
    library.store.sidebarSelection().set(CodeSelection{codes[1].id});
    const qint64 revision = library.store.codingRevision().get();

    library.store.deleteCode(library.code(u"gone"_s));
    EXPECT_EQ(outline(library.store.orderedCodes()), (QStringList{u"top"_s, u".x"_s, u".y"_s, u"..below"_s}));
    EXPECT_EQ(library.storedCodings().size(), 1);
    EXPECT_EQ(library.store.codingRevision().get(), revision + 1);
    EXPECT_EQ(library.store.sidebarSelection().get(),
        SidebarSelection(ProjectSelection{library.store.project()->value().id}));
}

TEST(Codes, MergingMovesCodingsAndChildrenAndKeepsDuplicates)
{
    TestLibrary library;
    const QList<Code> codes = library.makeCodes({u"from"_s, u"into"_s, u"child"_s});
    library.store.nestCode(codes[2].id, codes[0].id);
    library.store.setCodeMemo(library.code(u"from"_s), u"dropped"_s);
    const Document document = library.paste(u"A"_s, u"some text"_s);
    library.store.assignCode(codes[0], document, {0, 4});
    library.store.assignCode(codes[1], document, {0, 4});
    library.store.sidebarSelection().set(CodeSelection{codes[0].id});
    const qint64 revision = library.store.codingRevision().get();

    library.store.mergeCodes(library.code(u"from"_s), library.code(u"from"_s));
    EXPECT_EQ(library.store.codingRevision().get(), revision);
    library.store.mergeCodes(library.code(u"from"_s), library.code(u"into"_s));
    EXPECT_EQ(outline(library.store.orderedCodes()), (QStringList{u"into"_s, u".child"_s}));
    EXPECT_EQ(library.store.codeCounts()->value(codes[1].id), 2);
    EXPECT_EQ(library.store.excerpts(codes[1].id).size(), 2);
    EXPECT_EQ(library.code(u"into"_s).memo, std::nullopt);
    EXPECT_EQ(library.store.sidebarSelection().get(), SidebarSelection(CodeSelection{codes[1].id}));
    EXPECT_EQ(library.store.codingRevision().get(), revision + 1);
}

TEST(Codes, MergingIntoADescendantPutsItInTheSourcesPlace)
{
    TestLibrary library;
    const QList<Code> codes =
        library.makeCodes({u"root"_s, u"source"_s, u"middle"_s, u"target"_s, u"leaf"_s, u"other"_s});
    for (int level = 1; level <= 4; ++level)
        library.store.nestCode(codes[level].id, codes[level - 1].id);
    library.store.nestCode(codes[5].id, codes[1].id);
    library.store.mergeCodes(library.code(u"source"_s), library.code(u"target"_s));
    EXPECT_EQ(outline(library.store.orderedCodes()),
        (QStringList{u"root"_s, u".target"_s, u"..middle"_s, u"..leaf"_s, u"..other"_s}));
}
