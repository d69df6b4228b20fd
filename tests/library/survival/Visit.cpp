#include "library/survival/Visit.h"

#include "library/PassageTrimming.h"
#include "platform/AtomicFile.h"
#include "platform/LocalizedError.h"
#include "records/AppDatabase.h"
#include "support/TestLibrary.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QString summaryOf(LibraryStore &store)
{
    QStringList documents;
    for (const Document &each : store.documents().get())
        documents.append(each.title + u' ' + QString::number(each.text.size()));
    QStringList codes;
    for (const FlatCode &line : store.orderedCodes().first(std::min<qsizetype>(store.codes()->size(), 20)))
        codes.append(
            QString(line.depth, u'.') + line.code.name + u' ' + QString::number(store.excerpts(line.code.id).size()));
    if (store.codes()->size() > codes.size())
        codes = QStringList{QString::number(store.codes()->size()) + u" codes"_s};
    return documents.join(u", "_s) + u" | "_s + codes.join(u", "_s) + u" | "_s + store.lastError()->value_or(QString());
}

/// A library without one gets its first project at once.
bool hasProject(DatabaseQueue &queue)
{
    try {
        return queue.read([](Database &database) { return database.integer("SELECT COUNT(*) FROM project"); }) > 0;
    } catch (const LocalizedError &) {
        return true; // nothing is written either
    }
}

/// Notes what no library may lead to: passages outside their texts, failures without a word, a tree that lost a code,
/// an export that can't be read, a text that changed.
class Tour {
public:
    Tour(LibraryStore &store, QString folder) : m_store(store), m_folder(std::move(folder)) { }

    [[nodiscard]] const QStringList &faults() const { return m_faults; }

    /// Changes nothing in the library.
    void look()
    {
        QSet<QUuid> listed;
        for (const FlatCode &line : m_store.orderedCodes())
            listed.insert(line.code.id);
        for (const Code &code : m_store.codes().get())
            expect(listed.contains(code.id), u"the tree lost a code"_s);
        for (const Code &code : firstCodes()) {
            for (const ExcerptHit &hit : m_store.excerpts(code.id))
                expectPassage(hit.documentID, hit.range(), u"an excerpt lies outside its text"_s);
        }
        query();
        countWords();
        exportAll();
        expectSpeech();
    }
    /// Changes everything, but no text.
    void work()
    {
        const QList<Document> documents = m_store.documents().get();
        for (const Document &document : documents) {
            m_store.setDocumentMemo(document, u"a thought"_s);
            m_store.renameDocument(document, u"Renamed"_s);
            for (const Code &code : firstCodes())
                m_store.assignCode(code, document, {-5, 9});
            for (const Coding &coding : firstOf(m_store.codings(document), 1))
                m_store.removeCoding(coding);
            expectSpeech();
        }
        workOnCodes();
        for (const Document &document : m_store.documents().get()) {
            const auto isEqual = [&](const Document &each) {
                return each.id == document.id && each.hasSameText(document);
            };
            expect(std::ranges::any_of(documents, isEqual), u"a text has changed"_s);
        }
        m_store.importURLs({QUrl::fromLocalFile(m_folder + u"/report.md"_s)});
        m_store.importQdpx(m_folder + u"/study.qdpx"_s);
        expectSpeech();
        look();
    }

private:
    template <typename T>
    [[nodiscard]] static QList<T> firstOf(const QList<T> &list, qsizetype count)
    {
        return list.first(std::min(list.size(), count));
    }
    [[nodiscard]] QList<Code> firstCodes() const { return firstOf(m_store.codes().get(), 6); }

    void query()
    {
        QList<QUuid> chosen;
        for (const Code &code : firstOf(m_store.codes().get(), 3))
            chosen.append(code.id);
        for (const auto mode : {QuerySpec::Mode::any, QuerySpec::Mode::all}) {
            m_store.runQuery({chosen, mode, u"o"_s});
            for (const QueryResult &result : m_store.queryResults().get())
                expectPassage(result.documentID, result.range, u"a query's result lies outside its text"_s);
        }
    }
    void countWords()
    {
        m_store.runWordFrequency(WordFrequency::AllDocuments{}, 2, true, 50);
        if (m_store.wordFreqItems()->isEmpty())
            return;
        m_store.selectWordFreqTerm(m_store.wordFreqItems()->first().term);
        const OccurrenceList &places = m_store.wordFreqOccurrences().get();
        expect(places.size() == m_store.wordFreqItems()->first().count, u"a word was counted and isn't found"_s);
        for (qsizetype index = 0; index < places.size(); ++index)
            expectPassage(places.at(index).documentID, places.at(index).range, u"a word lies outside its text"_s);
    }
    void exportAll()
    {
        m_store.writeExport(m_store.exportGroups({}), ExportFormat::markdown, m_folder + u"/report.md"_s);
        if (!m_store.project().get())
            return;
        try {
            m_store.exportQdpx(m_folder + u"/study.qdpx"_s);
        } catch (const LocalizedError &error) {
            return expect(!error.description().isEmpty(), u"an export failed without a word"_s);
        }
        TestLibrary other;
        other.store.importQdpx(m_folder + u"/study.qdpx"_s);
        const auto hasText = [](const Document &each) { return !each.text.isEmpty(); }; // none is imported without
        expect(other.store.documents()->size() == std::ranges::count_if(m_store.documents().get(), hasText),
            u"an archive leaves out a document: "_s + other.store.lastError()->value_or(QString()));
    }
    void workOnCodes()
    {
        m_store.createCode(u"New"_s);
        const QList<Code> codes = firstCodes();
        for (const Code &code : codes) {
            m_store.setCodeMemo(code, u"why"_s);
            m_store.renameCode(code, code.name + u'!');
            m_store.nestCode(code.id, codes.last().id);
            expectSpeech();
        }
        if (codes.size() < 3)
            return;
        m_store.mergeCodes(codes.at(0), codes.at(1));
        m_store.deleteCode(codes.at(1));
        m_store.moveCodeToTopLevel(codes.at(2));
        expectSpeech();
    }

    void expect(bool isSo, const QString &fault)
    {
        if (!isSo && !m_faults.contains(fault))
            m_faults.append(fault);
    }
    /// A failure is told in words.
    void expectSpeech()
    {
        for (Observable<std::optional<QString>> *told : {&m_store.lastError(), &m_store.statusMessage()}) {
            expect(!told->get() || !told->get()->trimmed().isEmpty(), u"something was told without a word"_s);
            told->set({});
        }
    }
    void expectPassage(const QUuid &documentID, const TextRange &range, const QString &fault)
    {
        const auto holds = [&](const Document &each) {
            return each.id == documentID && PassageTrimming::liesIn(each.text, range);
        };
        expect(std::ranges::any_of(m_store.documents().get(), holds), fault);
    }

    LibraryStore &m_store;
    QString m_folder;
    QStringList m_faults;
};

} // namespace

QString visit(const QString &path, const QString &folder, bool isWhole)
{
    const QByteArray before = AtomicFile::readFile(path);
    const auto isUnchanged = [&] { return !isWhole || AtomicFile::readFile(path) == before; };
    std::unique_ptr<DatabaseQueue> queue;
    try {
        queue = AppDatabase::openQueue(path);
    } catch (const LocalizedError &error) {
        return isUnchanged() ? u"refused: "_s + error.description() : u"a refused file was changed"_s;
    }
    const bool staysAsItIs = hasProject(*queue);
    TestLibrary library({}, std::move(queue));
    const QString summary = summaryOf(library.store);
    Tour tour(library.store, folder);
    tour.look();
    const bool isKept = !staysAsItIs || isUnchanged();
    tour.work();
    QStringList verdict{u"open"_s};
    if (!isKept)
        verdict.append(u"looking at the library changed it"_s);
    return (verdict + tour.faults()).join(u"; "_s) + u'\n' + summary;
}
