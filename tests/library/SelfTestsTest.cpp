#include "records/database/Request.h"
#include "support/TestLibrary.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(SampleContent, FillsAnEmptyLibraryOnceAndShowsItsFirstCode)
{
    TestLibrary library({u"--seed-demo"_s});
    LibraryStore &store = library.store;
    QStringList codes;
    for (const Code &code : store.codes().get())
        codes.append(code.name + u' ' + code.colorHex + u' ' + QString::number(store.codeCounts()->value(code.id)));
    EXPECT_EQ(codes,
        (QStringList{
            u"Tools & friction #5E5CE6 3"_s, u"Attention habits #34C759 2"_s, u"Environment matters #FF9500 3"_s}));
    QStringList ranges;
    for (const Coding &coding : library.storedCodings())
        ranges.append(u"%1+%2"_s.arg(coding.start).arg(coding.length));
    EXPECT_EQ(ranges.join(u' '), u"221+59 205+21 291+63 183+59 571+25 185+13 221+28 299+39"_s);
    EXPECT_EQ(store.sidebarSelection().get(), SidebarSelection(CodeSelection{store.codes()->first().id}));
    EXPECT_EQ(library.document(u"Field notes — week 1"_s).charCount, 625);
    EXPECT_EQ(library.document(u"Field notes — week 1"_s).memo->left(5), u"Site:"_s);

    const QList<Document> documents = store.documents().get();
    store.loadSampleContent();
    EXPECT_EQ(store.documents().get(), documents);
    EXPECT_EQ(library.storedCodings().size(), 8);
    EXPECT_TRUE(store.statusMessage()->value().startsWith(u"Sample content loaded — click"_s));
}

TEST(SampleContent, LeavesALibraryWithCodesItsCodesAndAnEmptyMemoItsMemo)
{
    TestLibrary library;
    library.makeCodes({u"Tools & friction"_s});
    library.store.loadSampleContent();
    EXPECT_EQ(library.store.documents()->size(), 4);
    EXPECT_EQ(library.store.codes()->size(), 1);
    EXPECT_TRUE(library.code(u"Tools & friction"_s).memo->startsWith(u"Instances where"_s));
    library.queue->write([](Database &database) { database.execute("UPDATE code SET memo = ''"); });
    library.store.loadSampleContent();
    EXPECT_EQ(library.code(u"Tools & friction"_s).memo, u""_s);
}

TEST(SelfTests, PrintTheirLines)
{
    const QTemporaryDir folder;
    const QString path = folder.path();
    const QString text = path + u"/notes.txt"_s;
    QFile file(text);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    file.write("One\r\ntwo\n" + QByteArray("👨‍👩‍👧 ").repeated(300));
    const QStringList roundTrip{
        u"QDPX-TEST OK expected codes=3 docs=4 codings=8 · got codes=3 docs=4 codings=8 · file="_s + path
            + u"/roundtrip.qdpx"_s,
        u"QDPX-TEST first-code name=OK color=OK memo=OK"_s, u"QDPX-TEST coding-ranges OK"_s};
    const std::pair<QStringList, QStringList> rows[]{
        {{u"--seed-demo"_s, u"--freq-test"_s, u"--freq-demo"_s},
            {u"FREQ-TEST terms=50"_s,
                u"FREQ-TEST top: 分钟:4  every:3  phone:3  重要:3  back:2  need:2  sentence:2  table:2"_s,
                u"FREQ-TEST occurrences(分钟)=4"_s}},
        {{u"--seed-demo"_s, u"--query-test"_s, u"--freq-test"_s}, {u"QUERY-TEST any=3 all=1 filtered-phone=1"_s}},
        {{u"--query-test"_s}, {u"QUERY-TEST skip: fewer than 2 codes"_s}},
        {{u"--freq-test"_s}, {u"FREQ-TEST terms=0"_s, u"FREQ-TEST top: "_s}},
        {{u"--seed-demo"_s, u"--export-demo"_s, path + u"/new/deep"_s, u"--qdpx-test"_s, path},
            {u"EXPORT-DEMO OK codes=3 hits=8 dir="_s + path + u"/new/deep"_s}},
        {{u"--seed-demo"_s, u"--qdpx-test"_s, path + u'/'}, roundTrip},
        {{u"--export-demo"_s}, {}},
        {{u"--import-test"_s, path + u"/gone.docx"_s}, {u"IMPORT-TEST FAIL Couldn't read gone.docx."_s}},
        {{u"--import-test"_s, text},
            {u"IMPORT-TEST OK kind=txt chars=608 words=2"_s,
                u"IMPORT-TEST preview: One ⏎ two ⏎ "_s + u"👨‍👩‍👧 "_s.repeated(86)}},
    };
    for (const auto &[arguments, lines] : rows)
        EXPECT_EQ(TestLibrary(arguments).printed, lines) << arguments.join(u' ').toStdString();
    for (const QString &name : {u"md"_s, u"csv"_s, u"html"_s})
        EXPECT_TRUE(QFileInfo::exists(path + u"/new/deep/vorn-demo."_s + name));

    ASSERT_TRUE(QFile::copy(path + u"/roundtrip.qdpx"_s, path + u"/external.qdpx"_s));
    EXPECT_EQ(TestLibrary({u"--qdpx-test"_s, path}).printed.last(),
        u"QDPX-TEST external-import codes=3 docs=4 codings=8 first=Tools & friction"_s);
}

TEST(Switches, SetUpTheScreensThatStayOpen)
{
    TestLibrary query({u"--seed-demo"_s, u"--query-demo"_s, u"--query-sheet"_s});
    EXPECT_EQ(query.store.queryResults()->first().range, (TextRange{299, 39}));
    EXPECT_EQ(query.store.querySummary(), u"Tools & friction + Attention habits · overlapping passages"_s);
    EXPECT_TRUE(query.store.showQuerySheet().get());
    TestLibrary count({u"--seed-demo"_s, u"--freq-demo-term"_s});
    EXPECT_EQ(count.store.wordFreqSelectedTerm().get(), u"分钟"_s);
    EXPECT_EQ(count.store.wordFreqOccurrences()->size(), 4);
    TestLibrary empty({u"--query-demo"_s});
    EXPECT_FALSE(empty.store.activeQuery().get());
}
