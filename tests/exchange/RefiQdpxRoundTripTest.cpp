#include "exchange/RefiQdpx.h"
#include "exchange/RefiQdpxExport.h"
#include "exchange/RefiQdpxImport.h"
#include "platform/UnpairedSurrogates.h"
#include "records/AppDatabase.h"
#include "records/TextTrimming.h"
#include "records/database/Request.h"
#include "support/NastyText.h"
#include "support/Printing.h"
#include "support/TestArchive.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace RefiQdpx;

namespace {

/// What a project holds, with names for identifiers: codes by path, passages by code and document, cut to the text.
struct Content {
    QStringList codes;
    QStringList documents;
    QStringList passages;
};

/// What XML has no way to say becomes U+FFFD.
QString expressible(QString text)
{
    text = replaceUnpairedSurrogates(text);
    for (QChar &unit : text)
        if ((unit < u' ' && !u"\t\n\r"_s.contains(unit)) || unit >= QChar(0xFFFE))
            unit = QChar::ReplacementCharacter;
    return text;
}

QString memoOf(const std::optional<QString> &memo)
{
    const std::optional<QString> trimmed = trimmedMemo(memo);
    return trimmed ? u" memo="_s + expressible(*trimmed) : QString();
}

Content contentOf(const QList<Code> &codes, const QList<Document> &documents, const QList<Coding> &codings)
{
    Content content;
    QHash<QUuid, QString> paths;
    for (const Code &code : codes) { // parents come first
        const QString path = (code.parentID ? paths.value(*code.parentID) : QString()) + u'/' + expressible(code.name);
        paths.insert(code.id, path);
        content.codes.append(path + u' ' + normalizedColor(code.colorHex) + memoOf(code.memo));
    }
    QHash<QUuid, QString> texts;
    QHash<QUuid, qint64> sizes;
    for (const Document &document : documents) {
        sizes.insert(document.id, document.text.size());
        texts.insert(document.id, expressible(document.title) + u' ' + replaceUnpairedSurrogates(document.text));
        if (!document.text.isEmpty())
            content.documents.append(texts.value(document.id) + memoOf(document.memo));
    }
    for (const Coding &coding : codings) {
        const qint64 start = std::max<qint64>(coding.start, 0);
        const qint64 length = std::min(coding.length, sizes.value(coding.documentID) - start);
        if (length > 0)
            content.passages.append(paths.value(coding.codeID) + u' ' + QString::number(start) + u'+'
                + QString::number(length) + u' ' + texts.value(coding.documentID));
    }
    for (QStringList *list : {&content.codes, &content.documents, &content.passages})
        list->sort();
    return content;
}

/// A project of nasty texts, as random as its seed.
ExportInput randomProject(unsigned seed)
{
    NastyText nasty(seed);
    const auto memo = [&] { return nasty.onceIn(2) ? std::optional(nasty.next(8) + u"\r\n\t\f"_s) : std::nullopt; };
    const QDateTime start = QDateTime::currentDateTimeUtc();
    ExportInput input;
    input.project.name = nasty.next(3);
    QList<int> depths;
    for (int number = nasty.number(1, 30); number > 0; --number) {
        Code code;
        code.id = QUuid::createUuid();
        code.name = nasty.next(4);
        code.colorHex = nasty.onceIn(2) ? nasty.next(2) : u"#12ab3f"_s;
        code.memo = memo();
        code.createdAt = start.addMSecs(nasty.number(0, 5));
        const int parent = nasty.number(0, int(input.codes.size()));
        const bool isNested = parent < input.codes.size() && depths[parent] < 7;
        if (isNested)
            code.parentID = input.codes[parent].id;
        depths.append(isNested ? depths[parent] + 1 : 0);
        input.codes.append(code);
    }
    for (int number = nasty.number(0, 6); number > 0; --number) {
        Document document;
        document.id = QUuid::createUuid();
        document.title = nasty.next(5);
        document.text = (nasty.onceIn(5) ? u"\uFEFF"_s : QString()) + nasty.next(nasty.number(0, 60));
        if (nasty.onceIn(3))
            document.text += QChar(0) + u"\r\n\u0001\uFFFE"_s;
        document.memo = memo();
        document.addedAt = start.addMSecs(nasty.number(0, 5));
        input.documents.append(document);
        for (int coded = document.text.isEmpty() ? 0 : nasty.number(0, 20); coded > 0; --coded) {
            const int end = int(document.text.size()) + 3;
            const int first = nasty.number(-3, end);
            const int length = nasty.onceIn(9) ? -1 : nasty.number(0, end);
            const QUuid code = input.codes[nasty.number(0, int(input.codes.size()) - 1)].id;
            input.codings.append(
                {{}, QUuid::createUuid(), document.id, code, first, length, start.addMSecs(nasty.number(0, 5))});
        }
    }
    return input;
}

} // namespace

using RoundTrip = testing::TestWithParam<unsigned>;

TEST_P(RoundTrip, KeepsTheProject)
{
    const OwnTemporaryFolder folder;
    const ExportInput input = randomProject(GetParam());
    const QString archive = folder.path(u"study.qdpx"_s);
    exportArchive(input, archive);
    const auto queue = AppDatabase::makeFreshQueue();
    const ImportSummary summary = importQdpx(archive, *queue, QUuid::createUuid());

    const Content expected = contentOf(input.codes, input.documents, input.codings);
    const Content got = queue->read([](Database &database) {
        return contentOf(
            Code::all().fetchAll(database), Document::all().fetchAll(database), Coding::all().fetchAll(database));
    });
    EXPECT_EQ(got.codes, expected.codes);
    EXPECT_EQ(got.documents, expected.documents);
    EXPECT_EQ(got.passages, expected.passages);
    EXPECT_EQ(summary, (ImportSummary{expected.codes.size(), expected.documents.size(), expected.passages.size()}));
    EXPECT_FALSE(folder.hasLeftovers());
}

TEST(RoundTripOfNames, TakesTheLongestWithAllOfItEscaped)
{
    const OwnTemporaryFolder folder;
    ExportInput input = randomProject(1);
    input.documents = {{}};
    input.documents.first().id = QUuid::createUuid();
    input.documents.first().text = u"text"_s;
    const QString name(maxNameLength, u'"');
    for (QString *each : {&input.project.name, &input.codes.first().name, &input.documents.first().title})
        *each = name;
    exportArchive(input, folder.path(u"study.qdpx"_s));
    const auto queue = AppDatabase::makeFreshQueue();
    importQdpx(folder.path(u"study.qdpx"_s), *queue, QUuid::createUuid());
    EXPECT_EQ(queue->read([](Database &database) { return Document::all().fetchAll(database).value(0).title; }), name);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RoundTrip, testing::Range(1u, 26u));
