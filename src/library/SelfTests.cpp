#include "library/SelfTests.h"

#include "exchange/DocumentImporter.h"
#include "exchange/RefiQdpxExport.h"
#include "exchange/RefiQdpxImport.h"
#include "library/CommandLine.h"
#include "library/LibraryStore.h"
#include "platform/AtomicFile.h"
#include "records/AppDatabase.h"
#include "records/TextStats.h"
#include "records/database/Request.h"

#include <QDir>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString withVisibleLineBreaks(QString text)
{
    text.replace(u"\r\n"_s, u"\n"_s);
    for (const QChar lineBreak : {u'\n', u'\r', u'\v', u'\f', u'\x85', u'\x2028', u'\x2029'})
        text.replace(lineBreak, u" ⏎ "_s);
    return text;
}

void countWords(LibraryStore &store)
{
    constexpr qint64 minLength = 3;
    constexpr qint64 limit = 50;
    store.runWordFrequency(WordFrequency::AllDocuments{}, minLength, true, limit);
}

void selectTopTerm(LibraryStore &store)
{
    if (!store.wordFreqItems()->isEmpty())
        store.selectWordFreqTerm(store.wordFreqItems()->first().term);
}

std::optional<Code> earliestCode(DatabaseQueue &queue)
{
    return queue.read([](Database &database) { return Code::all().order(Column("createdAt")).fetchOne(database); });
}

QList<Coding> allCodings(DatabaseQueue &queue)
{
    return queue.read([](Database &database) { return Coding::all().fetchAll(database); });
}

QStringList rangesOf(const QList<Coding> &codings)
{
    QStringList ranges;
    for (const Coding &coding : codings)
        ranges.append(QString::number(coding.start) + u':' + QString::number(coding.length));
    ranges.sort();
    return ranges;
}

QString listed(const QStringList &entries)
{
    return entries.isEmpty() ? u"[]"_s : u"[\""_s + entries.join(u"\", \""_s) + u"\"]"_s;
}

} // namespace

SelfTests::SelfTests(LibraryStore &store, DatabaseQueue &queue, Print print)
    : m_store(store),
      m_queue(queue),
      m_print(std::move(print))
{
}

void SelfTests::run(const CommandLine &commandLine)
{
    if (commandLine.has(CommandLine::seedDemo))
        m_store.seedSampleContent();
    if (const auto folder = commandLine.valueOf(CommandLine::exportDemo))
        runExport(*folder);
    else if (const auto exchangeFolder = commandLine.valueOf(CommandLine::qdpxTest))
        runRoundTrip(*exchangeFolder);
    else if (const auto file = commandLine.valueOf(CommandLine::importTest))
        runImport(*file);
    else if (commandLine.has(CommandLine::queryTest))
        runQueries();
    else if (commandLine.has(CommandLine::freqTest))
        runWordCount();
}

void SelfTests::prepareScreens(LibraryStore &store, const CommandLine &commandLine)
{
    if (!store.project().get())
        return;
    const QList<Code> &codes = store.codes().get();
    if (commandLine.has(CommandLine::seedDemo)) {
        store.seedSampleContent();
        if (!store.selectedCodeID() && !codes.isEmpty())
            store.sidebarSelection().set(CodeSelection{codes.first().id});
    }
    if (commandLine.has(CommandLine::queryDemo)) {
        QuerySpec spec{.mode = QuerySpec::Mode::all};
        for (const Code &code : codes.first(std::min<qsizetype>(2, codes.size())))
            spec.codeIDs.append(code.id);
        store.runQuery(spec);
    }
    if (commandLine.has(CommandLine::querySheet))
        store.showQuerySheet().set(true);
    if (commandLine.has(CommandLine::freqDemo) || commandLine.has(CommandLine::freqDemoTerm))
        countWords(store);
    if (commandLine.has(CommandLine::freqDemoTerm))
        selectTopTerm(store);
}

void SelfTests::runExport(const QString &folder)
{
    const QList<ExportCodeGroup> groups = m_store.exportGroups({});
    qsizetype hits = 0;
    for (const ExportCodeGroup &group : groups)
        hits += group.hits.size();
    QDir().mkpath(folder);
    for (const ExportFormat format : ExportFormats::formats()) {
        try {
            m_store.writeExport(
                groups, format, QDir(folder).filePath(u"vorn-demo."_s + ExportFormats::fileExtension(format)));
        } catch (const LocalizedError &error) {
            return m_print(u"EXPORT-DEMO FAIL "_s + ExportFormats::rawValue(format) + u": "_s + error.description());
        }
    }
    m_print(u"EXPORT-DEMO OK codes=%1 hits=%2 dir="_s.arg(groups.size()).arg(hits) + folder);
}

void SelfTests::runImport(const QString &path)
{
    constexpr qint64 previewCharacters = 180;
    try {
        const DocumentImporter::Extracted extracted = DocumentImporter::extract(path);
        m_print(u"IMPORT-TEST OK kind="_s + extracted.sourceKind
            + u" chars=%1 words=%2"_s.arg(TextStats::characterCount(extracted.text))
                  .arg(TextStats::wordCount(extracted.text)));
        const QStringView preview = TextStats::leadingCharacters(extracted.text, previewCharacters);
        m_print(u"IMPORT-TEST preview: "_s + withVisibleLineBreaks(preview.toString()));
    } catch (const LocalizedError &error) {
        m_print(u"IMPORT-TEST FAIL "_s + error.description());
    }
}

void SelfTests::runQueries()
{
    if (m_store.codes()->size() < 2)
        return m_print(u"QUERY-TEST skip: fewer than 2 codes"_s);
    const QUuid first = m_store.codes()->at(0).id;
    const QUuid second = m_store.codes()->at(1).id;
    const auto found = [this](const QuerySpec &spec) {
        m_store.runQuery(spec);
        return m_store.queryResults()->size();
    };
    const qsizetype any = found({.codeIDs = {first}, .mode = QuerySpec::Mode::any});
    const qsizetype all = found({.codeIDs = {first, second}, .mode = QuerySpec::Mode::all});
    const qsizetype filtered = found({.codeIDs = {first}, .mode = QuerySpec::Mode::any, .textFilter = u"phone"_s});
    m_print(u"QUERY-TEST any=%1 all=%2 filtered-phone=%3"_s.arg(any).arg(all).arg(filtered));
}

void SelfTests::runWordCount()
{
    constexpr qsizetype topTermsShown = 8;
    countWords(m_store);
    const QList<WordFrequency::Item> items = m_store.wordFreqItems().get();
    m_print(u"FREQ-TEST terms=%1"_s.arg(items.size()));
    QStringList top;
    for (const WordFrequency::Item &item : items.mid(0, topTermsShown))
        top.append(item.term + u':' + QString::number(item.count));
    m_print(u"FREQ-TEST top: "_s + top.join(u"  "_s));
    if (items.isEmpty())
        return;
    selectTopTerm(m_store);
    m_print(u"FREQ-TEST occurrences("_s + items.first().term + u")="_s
        + QString::number(m_store.wordFreqOccurrences()->size()));
}

void SelfTests::runRoundTrip(const QString &folder)
{
    if (!m_store.project().get())
        return m_print(u"QDPX-TEST FAIL no project"_s);
    const QDir place(folder);
    const QString archive = place.filePath(u"roundtrip.qdpx"_s);
    const QString external = place.filePath(u"external.qdpx"_s);
    QDir().mkpath(folder);
    QFile::remove(archive);
    try {
        m_store.exportQdpx(archive);
        AtomicFile::write(place.filePath(u"vorn-codebook.qdc"_s), RefiQdpx::buildCodebookXML(m_store.codes().get()));

        const auto fresh = AppDatabase::makeFreshQueue();
        const RefiQdpx::ImportSummary got = RefiQdpx::importQdpx(archive, *fresh, m_store.project()->value().id);
        const qint64 codes = m_store.codes()->size();
        const qint64 documents = m_store.documents()->size();
        const qint64 codings = allCodings(m_queue).size();
        const bool agree = got.codes == codes && got.documents == documents && got.excerpts == codings;
        m_print(u"QDPX-TEST %1 expected codes=%2 docs=%3 codings=%4 · got codes=%5 docs=%6 codings=%7 · file="_s
                    .arg(agree ? u"OK"_s : u"MISMATCH"_s)
                    .arg(codes)
                    .arg(documents)
                    .arg(codings)
                    .arg(got.codes)
                    .arg(got.documents)
                    .arg(got.excerpts)
            + archive);
        compareWithImported(*fresh);
        if (QFileInfo::exists(external))
            runExternalImport(external);
    } catch (const LocalizedError &error) {
        m_print(u"QDPX-TEST FAIL "_s + error.description());
    }
}

void SelfTests::compareWithImported(DatabaseQueue &imported)
{
    const std::optional<Code> got = earliestCode(imported);
    if (!m_store.codes()->isEmpty() && got) {
        const Code &first = m_store.codes()->first();
        const auto verdict = [](const QString &expected, const QString &actual) {
            return expected == actual ? u"OK"_s : u"FAIL("_s + actual + u')';
        };
        m_print(u"QDPX-TEST first-code name="_s + verdict(first.name, got->name) + u" color="_s
            + verdict(first.colorHex, got->colorHex) + u" memo="_s + (first.memo == got->memo ? u"OK"_s : u"DIFF"_s));
    }
    const QStringList expected = rangesOf(allCodings(m_queue));
    const QStringList actual = rangesOf(allCodings(imported));
    m_print(u"QDPX-TEST coding-ranges "_s
        + (expected == actual ? u"OK"_s : u"FAIL "_s + listed(expected) + u" vs "_s + listed(actual)));
}

void SelfTests::runExternalImport(const QString &archive)
{
    const auto fresh = AppDatabase::makeFreshQueue();
    const RefiQdpx::ImportSummary got = RefiQdpx::importQdpx(archive, *fresh, m_store.project()->value().id);
    const std::optional<Code> first = earliestCode(*fresh);
    m_print(u"QDPX-TEST external-import codes=%1 docs=%2 codings=%3 first="_s.arg(got.codes)
                .arg(got.documents)
                .arg(got.excerpts)
        + (first ? first->name : u"nil"_s));
}
