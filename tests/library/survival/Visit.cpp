#include "library/survival/Visit.h"

#include "library/PassageTrimming.h"
#include "platform/AtomicFile.h"
#include "records/AppDatabase.h"
#include "support/Complaint.h"
#include "support/TestLibrary.h"

#include <QFileInfo>
#include <QTemporaryFile>

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

QString summaryOf(LibraryStore &store)
{
    QStringList documents;
    for (const Document &each : store.documents().get())
        documents.append(each.title + u' ' + QString::number(each.text.size()));
    QStringList codes;
    for (const FlatCode &line : store.orderedCodes().mid(0, 20))
        codes.append(
            QString(line.depth, u'.') + line.code.name + u' ' + QString::number(store.excerpts(line.code.id).size()));
    if (store.codes()->size() > codes.size())
        codes = QStringList{QString::number(store.codes()->size()) + u" codes"_s};
    return documents.join(u", "_s) + u" | "_s + codes.join(u", "_s) + u" | "_s + store.lastError()->value_or(QString());
}

QList<Code> firstCodes(const LibraryStore &store)
{
    return store.codes()->mid(0, 6);
}

bool liesInItsText(const LibraryStore &store, const QUuid &documentID, const TextRange &range)
{
    const auto document = std::ranges::find(store.documents().get(), documentID, &Document::id);
    return document != store.documents()->end() && PassageTrimming::liesIn(document->text, range);
}

/// Changes nothing in the library. Returns what no library may lead to.
QStringList look(LibraryStore &store, const QString &folder)
{
    QSet<QString> faults;
    if (store.orderedCodes().size() != store.codes()->size())
        faults.insert(u"the tree lost a code"_s);
    for (const Code &code : firstCodes(store)) {
        for (const ExcerptHit &hit : store.excerpts(code.id)) {
            if (!liesInItsText(store, hit.documentID, hit.range()))
                faults.insert(u"an excerpt lies outside its text"_s);
        }
        for (const auto mode : {QuerySpec::Mode::any, QuerySpec::Mode::all}) {
            store.runQuery({{code.id, store.codes()->first().id}, mode, {}});
            for (const QueryResult &result : store.queryResults().get()) {
                if (!liesInItsText(store, result.documentID, result.range))
                    faults.insert(u"a result lies outside its text"_s);
            }
        }
    }
    store.runWordFrequency(WordFrequency::AllDocuments{}, 2, true, 50);
    for (const WordFrequency::Item &item : store.wordFreqItems()->mid(0, 1))
        store.selectWordFreqTerm(item.term);
    store.writeExport(store.exportGroups({}), ExportFormat::markdown, folder + u"/report.md"_s);
    std::ignore = complaintAbout([&] { store.exportQdpx(folder + u"/study.qdpx"_s); });
    return faults.values();
}

/// Changes everything.
void work(LibraryStore &store, const QString &folder)
{
    store.createCode(u"New"_s);
    const QList<Code> codes = firstCodes(store);
    for (const Document &document : QList(store.documents().get())) {
        store.setDocumentMemo(document, u"a thought"_s);
        store.renameDocument(document, u"Renamed"_s);
        for (const Code &code : codes)
            store.assignCode(code, document, {-5, 9});
        for (const Coding &coding : store.codings(document).mid(0, 1))
            store.removeCoding(coding);
    }
    for (const Code &code : codes) {
        store.setCodeMemo(code, u"why"_s);
        store.renameCode(code, code.name + u'!');
        store.nestCode(code.id, codes.last().id);
    }
    if (codes.size() > 2) {
        store.mergeCodes(codes.at(0), codes.at(1));
        store.deleteCode(codes.at(1));
        store.moveCodeToTopLevel(codes.at(2));
    }
    store.importURLs({QUrl::fromLocalFile(folder + u"/report.md"_s)});
    store.importQdpx(folder + u"/study.qdpx"_s);
}

QString visitHere(const QString &path, const QString &folder)
{
    const QByteArray before = QFileInfo(path).isFile() ? AtomicFile::readFile(path) : QByteArray();
    std::unique_ptr<DatabaseQueue> queue;
    if (const QString complaint = complaintAbout([&] { queue = AppDatabase::openQueue(path); }); !queue)
        return u"refused: "_s + complaint;
    TestLibrary library({}, std::move(queue));
    const QString summary = summaryOf(library.store);
    QStringList faults = look(library.store, folder);
    if (AtomicFile::readFile(path) != before)
        faults.append(u"looking at the library changed it"_s);
    work(library.store, folder);
    faults += look(library.store, folder);
    return (QStringList{u"open"_s} + faults).join(u"; "_s) + u'\n' + summary;
}

/// Runs `body` in a copy of this process, which may crash or hang without harm to the test, and returns its result; if
/// there is none, what ended it.
template <typename Body>
QString inProcessOfItsOwn(const Body &body)
{
    QTemporaryFile answer;
    if (!answer.open())
        throw std::runtime_error("no temporary file");
    std::fflush(nullptr);
    const pid_t process = ::fork();
    if (process == 0) {
        constexpr unsigned maxSeconds = 100; // all tests may run at once under sanitizers
        ::alarm(maxSeconds);
        QString result;
        const QString complaint = complaintAbout([&] { result = body(); });
        answer.write((complaint.isEmpty() ? result : u"escaped: "_s + complaint).toUtf8());
        answer.flush();
        ::_exit(EXIT_SUCCESS);
    }
    int status = 0;
    ::waitpid(process, &status, 0);
    if (status != 0)
        return u"signal %1, status %2"_s.arg(WTERMSIG(status)).arg(WEXITSTATUS(status));
    answer.seek(0);
    return QString::fromUtf8(answer.readAll());
}

} // namespace

QString visit(const QString &path, const QString &folder)
{
    return inProcessOfItsOwn([&] { return visitHere(path, folder); });
}

void runAndBeKilled(const QString &path, const QByteArrayList &statements)
{
    std::ignore = inProcessOfItsOwn([&]() -> QString {
        DatabaseQueue(path).writeWithoutTransaction([&](Database &database) {
            for (const QByteArray &statement : statements)
                database.execute(statement);
            ::_exit(EXIT_SUCCESS);
        });
        return {};
    });
}
