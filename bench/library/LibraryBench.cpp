#include "../Corpus.h"
#include "StepTable.h"

#include "exchange/RefiQdpxExport.h"
#include "platform/AtomicFile.h"
#include "records/AppDatabase.h"
#include "records/database/Request.h"
#include "support/TestLibrary.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

// What a library takes that has grown old: each act of the user on very many documents, codings and codes, with its
// time and its memory. Run on two sizes, the one ten times the other, the ratios of the lines tell what grows faster
// than the library.

namespace {

struct Size {
    int documents = 10'000;
    int bytes = 100'000; ///< of UTF-8, in each
    int codings = 500'000;
    int codes = 5'000;
};

/// Nests the codes, nine below each tenth, gives a tenth of all codings to the first code, and adds a small project.
void makeOld(const QString &path)
{
    const auto queue = AppDatabase::openQueue(path);
    queue->write([](Database &database) {
        database.execute("UPDATE coding SET codeID = (SELECT id FROM code WHERE rowid = 1) WHERE rowid % 10 = 0");
        database.execute("UPDATE code SET parentID = (SELECT id FROM code AS above WHERE above.rowid = code.rowid - "
                         "(code.rowid - 1) % 10) WHERE (rowid - 1) % 10 > 0");
    });
    TestLibrary library({}, AppDatabase::openQueue(path));
    library.store.createProject(u"Second"_s);
    library.paste(u"Other"_s, u"Some other words."_s);
    queue->write([](Database &database) { // the oldest project is the one that is opened
        database.execute("UPDATE project SET createdAt = '2027-01-01 00:00:00.000' WHERE name = 'Second'");
    });
}

/// In a process of its own, whose memory is gone afterwards.
void build(const QString &path, const Size &size)
{
    const pid_t child = fork();
    if (child == 0) {
        const QString unfinished = path + u".unfinished"_s;
        QFile::remove(unfinished);
        writeLibrary(unfinished, Corpus(size.documents, size.bytes), size.codes, size.codings);
        makeOld(unfinished);
        _exit(QFile::rename(unfinished, path) ? 0 : 1);
    }
    int status = 0;
    if (waitpid(child, &status, 0) != child || status != 0)
        std::exit(1);
}

double textBytes(const QString &path)
{
    return double(AppDatabase::openQueue(path)->read(
        [](Database &database) { return database.integer("SELECT SUM(LENGTH(CAST(text AS BLOB))) FROM document"); }));
}

void writeTexts(const QList<Document> &documents, const QString &folder)
{
    QDir().mkpath(folder);
    for (const Document &document : documents)
        AtomicFile::write(folder + u'/' + document.title + u".txt"_s, document.text.toUtf8());
}

class Day {
public:
    Day(const StepTable &table, QString folder, const QString &path)
        : m_table(table),
          m_folder(std::move(folder)),
          m_path(path)
    {
    }

    void run()
    {
        step("start", [this] { m_library.emplace(QStringList(), AppDatabase::openQueue(m_path)); });
        everyDay();
        search();
        analyse();
        exportAll();
        codeWholeDocuments();
        changeMuch();
        switchProjects();
        importAll();
    }

private:
    void step(const char *name, const std::function<void()> &body) { m_table.step(name, body); }
    [[nodiscard]] LibraryStore &store() { return m_library->store; }
    [[nodiscard]] Document someDocument() { return store().documents()->at(store().documents()->size() / 2); }
    [[nodiscard]] Code code(qsizetype index) { return store().codes()->at(index); }
    [[nodiscard]] Code largestCode()
    {
        const QHash<QUuid, qint64> &counts = store().codeCounts().get();
        return *std::ranges::max_element(
            store().codes().get(), {}, [&](const Code &each) { return counts.value(each.id); });
    }
    [[nodiscard]] QString file(const QString &name) const { return m_folder + u'/' + name; }

    void everyDay()
    {
        step("refresh, nothing new", [this] { store().refresh(); });
        step("open a document", [this] { (void)store().codings(someDocument()); });
        step("code a passage", [this] { store().assignCode(code(7), someDocument(), {100, 50}); });
        step("memo of a document", [this] { store().setDocumentMemo(someDocument(), u"Seen twice."_s); });
        step("memo of a code", [this] { store().setCodeMemo(code(9), u"Of old people."_s); });
        step("rename a document", [this] { store().renameDocument(someDocument(), u"Renamed"_s); });
        step("make a code", [this] { (void)store().createCode(u"New"_s); });
        step("codes as a tree", [this] { (void)store().orderedCodes(); });
        step("excerpts of the largest code", [this] { (void)store().excerpts(largestCode().id); });
    }

    void search()
    {
        const auto look = [this](const char *name, const QString &text) {
            step(name, [&] {
                store().searchText().set(text);
                (void)store().visibleDocuments();
            });
        };
        look("search, the first key", u"q"_s);
        look("search, nothing found", u"qx no such text"_s);
        look("search, emptied", {});
    }

    void analyse()
    {
        const QList<QUuid> two{largestCode().id, code(8).id};
        step("query, any of two codes", [&] { store().runQuery({two, QuerySpec::Mode::any}); });
        step("query, all of two codes", [&] { store().runQuery({two, QuerySpec::Mode::all}); });
        const auto count = [this](
                               const WordFrequency::Scope &scope) { store().runWordFrequency(scope, 1, false, 200); };
        step("count words, first time", [&] { count(WordFrequency::AllDocuments()); });
        step("count words, again", [&] { count(WordFrequency::AllDocuments()); });
        const QString term = store().wordFreqItems()->first().term;
        std::printf("(%lld times \"%s\")\n", store().wordFreqItems()->first().count, qPrintable(term));
        step("places of the commonest word", [&] { store().selectWordFreqTerm(term); });
        step("back to the words", [this] { store().wordFreqOccurrences().set({}); });
        step("count words of the largest code", [&] { count(WordFrequency::InCode{largestCode().id}); });
        store().goToDocuments();
    }

    void exportAll()
    {
        const auto report = [this](const char *name, ExportFormat format) {
            step(name, [&] { store().writeExport(store().exportGroups({}), format, file(u"report"_s)); });
        };
        report("report, Markdown", ExportFormat::markdown);
        report("report, CSV", ExportFormat::csv);
        report("report, HTML", ExportFormat::html);
        step("codebook",
            [this] { AtomicFile::write(file(u"codes.qdc"_s), RefiQdpx::buildCodebookXML(store().codes().get())); });
        step("archive", [this] { store().exportQdpx(file(u"archive.qdpx"_s)); });
        writeTexts(store().documents().get(), file(u"texts"_s));
    }

    /// As where a code says of each document who speaks.
    void codeWholeDocuments()
    {
        const Code whole = store().createCode(u"Whole"_s).value();
        m_library->queue->write([&](Database &database) {
            for (const Document &document : store().documents().get()) {
                Coding coding;
                coding.id = QUuid::createUuid();
                coding.documentID = document.id;
                coding.codeID = whole.id;
                coding.start = 1;
                coding.length = document.text.size() - 1;
                coding.createdAt = document.addedAt;
                coding.insert(database);
            }
        });
        step("refresh, all documents coded whole", [this] { store().refresh(); });
        QList<ExportCodeGroup> groups;
        step("excerpts, whole documents", [&] { groups = store().exportGroups(whole.id); });
        step(
            "report, whole documents", [&] { store().writeExport(groups, ExportFormat::html, file(u"whole.html"_s)); });
        QFile::remove(file(u"whole.html"_s));
        step("query, whole documents", [&] { store().runQuery({.codeIDs = {whole.id}}); });
        store().goToDocuments();
    }

    void changeMuch()
    {
        step("merge the largest code", [this] { store().mergeCodes(largestCode(), code(8)); });
        step("delete the largest code", [this] { store().deleteCode(largestCode()); });
        step("delete a document", [this] { store().deleteDocument(someDocument()); });
    }

    void switchProjects()
    {
        const QUuid large = store().project()->value().id;
        const QUuid small = store().projects()->last().id;
        step("to a small project", [&] { store().selectProject(small); });
        step("and back", [&] { store().selectProject(large); });
    }

    void importAll()
    {
        step("make a project", [this] { (void)store().createProject(u"Archive"_s); });
        step("import the archive", [this] { store().importQdpx(file(u"archive.qdpx"_s)); });
        std::printf("(%s)\n", qPrintable(store().statusMessage()->value_or(store().lastError()->value_or(u"?"_s))));
        step("make a project", [this] { (void)store().createProject(u"Texts"_s); });
        step("import the texts", [this] { store().importURLs({QUrl::fromLocalFile(file(u"texts"_s))}); });
        std::printf("(%lld documents)\n", store().documents()->size());
        step("close", [this] { m_library.reset(); });
    }

    const StepTable &m_table;
    QString m_folder;
    QString m_path;
    std::optional<TestLibrary> m_library;
};

int usage()
{
    std::puts("vorn_library_bench <folder> [<documents> [<bytes of each> [<codings> [<codes>]]]]\n"
              "The folder keeps the library for the next time; the work is done on a copy.");
    return 2;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 2)
        return usage();
    Size size;
    int *const numbers[] = {&size.documents, &size.bytes, &size.codings, &size.codes};
    for (int index = 2; index < std::min(argc, 6); ++index)
        *numbers[index - 2] = std::max(std::atoi(argv[index]), 500);

    const QString folder = QString::fromLocal8Bit(argv[1]);
    const QString name = u"library-%1-%2-%3-%4"_s.arg(size.documents).arg(size.bytes).arg(size.codings).arg(size.codes);
    const QString built = folder + u'/' + name + u".sqlite"_s;
    const QString workFolder = folder + u"/work"_s;
    QDir(workFolder).removeRecursively();
    if (!QDir().mkpath(workFolder))
        return usage();
    if (!QFile::exists(built))
        build(built, size);

    const QCoreApplication application(argc, argv);
    const QString copy = workFolder + u"/vorn.sqlite"_s;
    QFile::copy(built, copy);
    Day(StepTable(textBytes(copy)), workFolder, copy).run();
    QDir(workFolder).removeRecursively();
}
