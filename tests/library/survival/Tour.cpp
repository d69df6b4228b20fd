#include "library/survival/Tour.h"

#include "library/PassageTrimming.h"
#include "platform/AtomicFile.h"
#include "platform/LocalizedError.h"
#include "records/AppDatabase.h"

#include <algorithm>

using namespace Qt::StringLiterals;

void Tour::look()
{
    expectSpeech();
    m_store.refresh();
    lookAtTree();
    lookAtPassages();
    query();
    countWords();
    m_store.searchText().set(u"some words"_s);
    expect(m_store.visibleDocuments().size() <= m_store.documents()->size(), u"the search found too much"_s);
    exportReports();
    exportArchive();
    expectSpeech();
}

void Tour::work()
{
    QHash<QUuid, QStringList> texts; // a hostile file may have several of one identifier
    for (const Document &each : m_store.documents().get())
        texts[each.id].append(each.text);
    workOnDocuments();
    workOnCodes();
    m_store.importURLs({QUrl::fromLocalFile(m_folder + u"/report.md"_s)});
    expectSpeech();
    m_store.importQdpx(m_folder + u"/study.qdpx"_s);
    expectSpeech();
    m_store.createProject(u"Another"_s);
    m_store.loadSampleContent();
    for (const Project &project : QList<Project>(m_store.projects().get())) {
        m_store.selectProject(project.id);
        m_store.renameProject(project, u"Renamed"_s);
        expectSpeech();
        for (const Document &each : m_store.documents().get())
            expect(!texts.contains(each.id) || texts.value(each.id).contains(each.text), u"a text has changed"_s);
        lookAtTree();
        lookAtPassages();
    }
}

void Tour::lookAtTree()
{
    const QList<FlatCode> lines = m_store.orderedCodes();
    QSet<QUuid> listed;
    QSet<QUuid> known;
    for (const FlatCode &line : lines) {
        expect(line.depth >= 0 && line.depth <= 4, u"a code stands too deep"_s);
        listed.insert(line.code.id);
    }
    for (const Code &code : m_store.codes().get())
        known.insert(code.id);
    expect(listed == known, u"the tree lost a code"_s);
}

void Tour::lookAtPassages()
{
    for (const Document &each : m_store.documents().get())
        std::ignore = m_store.codings(each); // as stored; who draws them cuts them
    constexpr qsizetype enough = 30; // each is a query of its own
    for (const Code &code : m_store.codes()->first(std::min(m_store.codes()->size(), enough))) {
        for (const ExcerptHit &hit : m_store.excerpts(code.id))
            expectPassage(hit.documentID, hit.range(), u"an excerpt lies outside its text"_s);
    }
}

void Tour::query()
{
    QSet<QUuid> chosen;
    for (const Code &code : m_store.codes().get()) {
        if (chosen.size() < 3)
            chosen.insert(code.id);
    }
    for (const auto mode : {QuerySpec::Mode::any, QuerySpec::Mode::all}) {
        for (const auto &filter : {u""_s, u"o"_s}) {
            m_store.runQuery({QList<QUuid>(chosen.begin(), chosen.end()), mode, filter});
            for (const QueryResult &result : m_store.queryResults().get())
                expectPassage(result.documentID, result.range, u"a query's result lies outside its text"_s);
            std::ignore = m_store.querySummary();
        }
    }
}

void Tour::countWords()
{
    QList<WordFrequency::Scope> scopes{WordFrequency::AllDocuments{}};
    if (!m_store.documents()->isEmpty())
        scopes.append(WordFrequency::InDocument{m_store.documents()->first().id});
    for (const Code &code : m_store.codes()->first(std::min<qsizetype>(m_store.codes()->size(), 3)))
        scopes.append(WordFrequency::InCode{code.id});
    for (const WordFrequency::Scope &scope : scopes) {
        m_store.runWordFrequency(scope, 2, true, 50);
        if (m_store.wordFreqItems()->isEmpty())
            continue;
        m_store.selectWordFreqTerm(m_store.wordFreqItems()->first().term);
        const OccurrenceList &places = m_store.wordFreqOccurrences().get();
        expect(places.size() == m_store.wordFreqItems()->first().count, u"a word was counted and isn't found"_s);
        for (qsizetype index = 0; index < places.size(); ++index) {
            const WordFrequency::Occurrence place = places.at(index);
            expectPassage(place.documentID, place.range, u"a word lies outside its text"_s);
        }
    }
}

void Tour::exportReports()
{
    const QList<ExportCodeGroup> groups = m_store.exportGroups({});
    expect(groups.size() == m_store.codes()->size(), u"a report leaves out a code"_s);
    for (const ExportCodeGroup &group : groups) {
        for (const ExcerptHit &hit : group.hits)
            expectPassage(hit.documentID, hit.range(), u"a report shows what lies outside its text"_s);
    }
    for (const ExportFormat format : ExportFormats::formats()) {
        const QString path = m_folder + u"/report."_s + ExportFormats::fileExtension(format);
        m_store.writeExport(groups, format, path);
        expect(!AtomicFile::readFile(path).isEmpty(), u"a report is empty"_s);
    }
}

void Tour::exportArchive()
{
    if (!m_store.project().get())
        return;
    const QString path = m_folder + u"/study.qdpx"_s;
    try {
        m_store.exportQdpx(path);
    } catch (const LocalizedError &error) {
        expect(!error.description().isEmpty(), u"an export failed without a word"_s);
        return;
    }
    TestLibrary other;
    other.store.importQdpx(path);
    expect(
        !other.store.lastError().get(), u"an export can't be read: "_s + other.store.lastError()->value_or(QString()));
    const auto hasText = [](const Document &each) { return !each.text.isEmpty(); }; // none is imported without
    expect(other.store.documents()->size() == std::ranges::count_if(m_store.documents().get(), hasText),
        u"an archive leaves out a document"_s);
}

void Tour::workOnDocuments()
{
    for (const Document &each : QList<Document>(m_store.documents().get())) {
        m_store.setDocumentMemo(each, u"a thought"_s);
        m_store.renameDocument(each, u"Renamed"_s);
        expectSpeech();
    }
    m_store.addPastedDocument(u"Pasted"_s, u"some words"_s);
    if (!m_store.documents()->isEmpty())
        m_store.deleteDocument(m_store.documents()->last());
    expectSpeech();
}

void Tour::workOnCodes()
{
    m_store.createCode(u"New"_s);
    const QList<Code> codes = m_store.codes().get();
    for (const Code &code : codes.first(std::min<qsizetype>(codes.size(), 6))) {
        for (const Document &each : m_store.documents().get())
            m_store.assignCode(code, each, {-5, 9});
        m_store.setCodeMemo(code, u"why"_s);
        m_store.renameCode(code, code.name + u"!"_s);
        m_store.setCodeColor(code, u"#123456"_s);
        m_store.nestCode(code.id, codes.last().id);
        expectSpeech();
    }
    for (const Document &each : m_store.documents().get()) {
        for (const Coding &coding : m_store.codings(each).first(std::min<qsizetype>(1, m_store.codings(each).size())))
            m_store.removeCoding(coding);
    }
    if (codes.size() > 2) {
        m_store.mergeCodes(codes.at(0), codes.at(1));
        m_store.deleteCode(codes.at(1));
        m_store.moveCodeToTopLevel(codes.at(2));
    }
    expectSpeech();
}

void Tour::expect(bool isSo, const QString &fault)
{
    if (!isSo && !m_faults.contains(fault))
        m_faults.append(fault);
}

void Tour::expectSpeech()
{
    for (Observable<std::optional<QString>> *told : {&m_store.lastError(), &m_store.statusMessage()}) {
        expect(!told->get() || !told->get()->trimmed().isEmpty(), u"something was told without a word"_s);
        told->set({});
    }
}

void Tour::expectPassage(const QUuid &documentID, const TextRange &range, const QString &fault)
{
    const auto holds = [&](const Document &each) {
        return each.id == documentID && PassageTrimming::liesIn(each.text, range);
    };
    expect(std::ranges::any_of(m_store.documents().get(), holds), fault);
}
