#include "library/SelfTests.h"

#include "exchange/DocumentImporter.h"
#include "library/LibraryStore.h"
#include "platform/LocalizedError.h"
#include "platform/Terminator.h"
#include "records/TextStats.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 demoMinLength = 3;
constexpr qint64 demoLimit = 50;
constexpr qsizetype topTermsShown = 8;
constexpr qint64 previewCharacters = 180;

QString withVisibleLineBreaks(const QString &text)
{
    static const QString mark = u" ⏎ "_s;
    QString result = text;
    result.replace(u"\r\n"_s, u"\n"_s);
    for (const QChar lineBreak : {u'\n', u'\r', u'\v', u'\f', u'\x85', u'\x2028', u'\x2029'})
        result.replace(lineBreak, mark);
    return result;
}

} // namespace

SelfTests::SelfTests(LibraryStore &store, CommandLine commandLine)
    : m_store(store),
      m_commandLine(std::move(commandLine))
{
}

void SelfTests::dispatch()
{
    if (m_commandLine.has(CommandLine::seedDemo))
        selectFirstCode();
    if (dispatchQuitting())
        m_store.m_services.terminator.terminate();
}

bool SelfTests::dispatchQuitting()
{
    if (const auto path = m_commandLine.valueOf(CommandLine::exportDemo))
        runExportDemo(*path);
    else if (const auto folder = m_commandLine.valueOf(CommandLine::qdpxTest))
        runQdpxSelfTest(*folder);
    else if (const auto file = m_commandLine.valueOf(CommandLine::importTest))
        runImportTest(*file);
    else if (m_commandLine.has(CommandLine::queryTest))
        runQueryTest();
    else {
        dispatchStaying();
        if (!m_commandLine.has(CommandLine::freqTest))
            return false;
        runFrequencyTest();
    }
    return true;
}

void SelfTests::dispatchStaying()
{
    if (m_commandLine.has(CommandLine::queryDemo))
        runQueryDemo();
    if (m_commandLine.has(CommandLine::querySheet))
        m_store.showQuerySheet().set(true);
    if (m_commandLine.has(CommandLine::freqTest))
        return;
    if (m_commandLine.has(CommandLine::freqDemo))
        runCount();
    if (m_commandLine.has(CommandLine::freqDemoTerm)) {
        runCount();
        selectTopTerm();
    }
}

void SelfTests::selectFirstCode()
{
    const auto &selection = m_store.sidebarSelection();
    const bool hasCode = selection.get() && std::holds_alternative<CodeSelection>(**selection);
    if (!hasCode && !m_store.codes()->isEmpty())
        m_store.sidebarSelection().set(CodeSelection{m_store.codes()->first().id});
}

void SelfTests::runQueryDemo()
{
    QuerySpec spec{.codeIDs = {}, .mode = QuerySpec::Mode::all, .textFilter = {}};
    for (const Code &code : m_store.codes()->first(std::min<qsizetype>(2, m_store.codes()->size())))
        spec.codeIDs.append(code.id);
    m_store.runQuery(spec);
}

void SelfTests::runCount()
{
    m_store.runWordFrequency(WordFrequency::AllDocuments{}, demoMinLength, true, demoLimit);
}

void SelfTests::selectTopTerm()
{
    if (!m_store.wordFreqItems()->isEmpty())
        m_store.selectWordFreqTerm(m_store.wordFreqItems()->first().term);
}

void SelfTests::runExportDemo(const QString &path)
{
    const QList<ExportCodeGroup> groups = m_store.exportGroups({});
    qsizetype hits = 0;
    for (const ExportCodeGroup &group : groups)
        hits += group.hits.size();
    QDir().mkpath(path);
    for (const ExportFormat format : ExportFormats::formats()) {
        try {
            m_store.writeExport(groups, format, path + u"/vorn-demo."_s + ExportFormats::fileExtension(format));
        } catch (const LocalizedError &error) {
            print(u"EXPORT-DEMO FAIL "_s + ExportFormats::rawValue(format) + u": "_s + error.description());
            return;
        }
    }
    print(u"EXPORT-DEMO OK codes=%1 hits=%2 dir="_s.arg(groups.size()).arg(hits) + path);
}

void SelfTests::runImportTest(const QString &path)
{
    try {
        const DocumentImporter::Extracted extracted = DocumentImporter::extract(path);
        print(u"IMPORT-TEST OK kind="_s + extracted.sourceKind
            + u" chars=%1 words=%2"_s.arg(TextStats::characterCount(extracted.text))
                  .arg(TextStats::wordCount(extracted.text)));
        const QStringView preview = TextStats::leadingCharacters(extracted.text, previewCharacters);
        print(u"IMPORT-TEST preview: "_s + withVisibleLineBreaks(preview.toString()));
    } catch (const LocalizedError &error) {
        print(u"IMPORT-TEST FAIL "_s + error.description());
    }
}

void SelfTests::runQueryTest()
{
    if (m_store.codes()->size() < 2) {
        print(u"QUERY-TEST skip: fewer than 2 codes"_s);
        return;
    }
    const QUuid first = m_store.codes()->at(0).id;
    const QUuid second = m_store.codes()->at(1).id;
    const auto found = [this](const QuerySpec &spec) {
        m_store.runQuery(spec);
        return m_store.queryResults()->size();
    };
    const qsizetype any = found({.codeIDs = {first}, .mode = QuerySpec::Mode::any, .textFilter = {}});
    const qsizetype all = found({.codeIDs = {first, second}, .mode = QuerySpec::Mode::all, .textFilter = {}});
    const qsizetype filtered = found({.codeIDs = {first}, .mode = QuerySpec::Mode::any, .textFilter = u"phone"_s});
    print(u"QUERY-TEST any=%1 all=%2 filtered-phone=%3"_s.arg(any).arg(all).arg(filtered));
}

void SelfTests::runFrequencyTest()
{
    runCount();
    const QList<WordFrequency::Item> items = m_store.wordFreqItems().get();
    print(u"FREQ-TEST terms=%1"_s.arg(items.size()));
    QStringList top;
    for (const WordFrequency::Item &item : items.mid(0, topTermsShown))
        top.append(item.term + u':' + QString::number(item.count));
    print(u"FREQ-TEST top: "_s + top.join(u"  "_s));
    if (items.isEmpty())
        return;
    selectTopTerm();
    print(u"FREQ-TEST occurrences("_s + items.first().term + u")="_s
        + QString::number(m_store.wordFreqOccurrences()->size()));
}

void SelfTests::print(const QString &line) const
{
    m_store.m_services.print(line);
}
