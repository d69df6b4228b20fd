#include "Corpus.h"
#include "Row.h"

#include "library/CodeCountCache.h"
#include "library/DocumentCache.h"
#include "library/DocumentFilter.h"
#include "records/AppDatabase.h"
#include "records/Coding.h"
#include "records/Document.h"
#include "records/UuidSource.h"
#include "records/database/Request.h"
#include "records/database/Row.h"

#include <QTemporaryDir>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int codeCount = 500;
constexpr int codingCount = 100'000;

/// A library file and an open connection to it, for as long as a row's jobs live.
struct OpenLibrary {
    explicit OpenLibrary(const Corpus &corpus)
        : library(corpus, codeCount, codingCount),
          queue(AppDatabase::openQueue(library.path()))
    {
    }
    [[nodiscard]] QList<Document> plainDocuments() const
    {
        return queue->read([&](Database &database) {
            return Document::filter(Column("projectID") == library.projectID())
                .order(Column("addedAt").desc)
                .fetchAll(database);
        });
    }

    CorpusLibrary library;
    std::unique_ptr<DatabaseQueue> queue;
};

const std::shared_ptr<OpenLibrary> &largeLibrary()
{
    static const auto library = std::make_shared<OpenLibrary>(largeCorpus());
    return library;
}

BenchRow refreshRow(const std::string &name, std::function<std::shared_ptr<OpenLibrary>()> open)
{
    return {name, [open = std::move(open)] {
                const auto library = open();
                const auto shelf = std::make_shared<DocumentCache>(*library->queue);
                const QUuid projectID = library->library.projectID();
                const QList<Document> known = shelf->documents(projectID);
                return BenchRow::Jobs{
                    .straightforward = [=] { keep(library->plainDocuments() == known); },
                    .ours = [=] { keep(shelf->documents(projectID) == known); },
                };
            }};
}

BenchRow firstLoadRow()
{
    return {"2 first load of 100 MB", [] {
                const auto library = largeLibrary();
                return BenchRow::Jobs{
                    .straightforward = [=] { keep(library->plainDocuments().size()); },
                    .ours =
                        [=] {
                            DocumentCache shelf(*library->queue);
                            keep(shelf.documents(library->library.projectID()).size());
                        },
                    .megabytes = largeCorpus().megabytes(),
                };
            }};
}

BenchRow oneKeyRow(const QString &before, const QString &key)
{
    const std::string name = "3 one key in the search: \"" + key.toStdString() + "\"";
    return {name, [=] {
                QList<Document> documents;
                for (const QString &text : largeCorpus().texts()) {
                    Document document;
                    document.id = QUuid::createUuid();
                    document.text = text;
                    documents.append(document);
                }
                // A search remembers what it found, so each run begins with a copy of one that stands before the key.
                DocumentFilter standing;
                static_cast<void>(standing.matching(documents, u"\u0001no such text"_s));
                if (!before.isEmpty())
                    static_cast<void>(standing.matching(documents, before));
                return BenchRow::Jobs{
                    .straightforward =
                        [=] {
                            qsizetype found = 0;
                            for (const Document &document : documents)
                                found += document.text.toLower().contains(key) ? 1 : 0;
                            keep(found);
                        },
                    .ours =
                        [=] {
                            DocumentFilter filter = standing;
                            keep(filter.matching(documents, key).size());
                        },
                    .megabytes = largeCorpus().megabytes(),
                };
            }};
}

BenchRow codePassageRow()
{
    return {"6 counts after one coded passage", [] {
                const auto library = largeLibrary();
                const QUuid projectID = library->library.projectID();
                const auto tally = std::make_shared<CodeCountCache>(*library->queue);
                static_cast<void>(tally->counts(projectID));
                const auto coding = std::make_shared<Coding>(
                    library->queue->read([](Database &database) { return Coding::all().fetchOne(database); }).value());
                const auto change = [=] {
                    coding->length = 20 + (coding->length + 1) % 50;
                    library->queue->write([&](Database &database) { coding->update(database); });
                };
                // Both do the same write, so that the difference lies in the counting alone.
                return BenchRow::Jobs{
                    .straightforward =
                        [=] {
                            change();
                            library->queue->read([&](Database &database) {
                                keep(Row::fetchAll(database,
                                    "SELECT c.codeID AS codeID, COUNT(*) AS n FROM coding c JOIN document d ON d.id = "
                                    "c.documentID WHERE d.projectID = ? GROUP BY c.codeID",
                                    {ValueEncoding::encoded(projectID)})
                                         .size());
                            });
                        },
                    .ours =
                        [=] {
                            change();
                            keep(tally->counts(projectID).size());
                        },
                };
            }};
}

BenchRow writeAloneRow()
{
    return {"6 the write of one coded passage alone", [] {
                const auto library = largeLibrary();
                const auto coding = std::make_shared<Coding>(
                    library->queue->read([](Database &database) { return Coding::all().fetchOne(database); }).value());
                return BenchRow::Jobs{
                    .straightforward = {},
                    .ours =
                        [=] {
                            coding->length = 20 + (coding->length + 1) % 50;
                            library->queue->write([&](Database &database) { coding->update(database); });
                        },
                };
            }};
}

BenchRow manyCodingsRow()
{
    return {"7 200,000 codings written in one transaction", [] {
                constexpr int count = 200'000;
                const auto folder = std::make_shared<QTemporaryDir>();
                // Made before: drawing random numbers from the system takes as long as a row. An import takes them in
                // order.
                const std::vector<QUuid> ascending = UuidSource().ascending(count);
                std::vector<QUuid> shuffled = ascending;
                std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937(5));
                const auto run = [folder, ascending, shuffled](bool preparesEachTime) {
                    const std::vector<QUuid> &ids = preparesEachTime ? shuffled : ascending;
                    const QString path = folder->filePath(QUuid::createUuid().toString(QUuid::WithoutBraces));
                    {
                        const auto queue = AppDatabase::openQueue(path);
                        std::mt19937 random(4);
                        queue->write([&](Database &database) {
                            Coding coding;
                            coding.createdAt = QDateTime::currentDateTimeUtc();
                            for (int index = 0; index < count; ++index) {
                                coding.id = ids[size_t(index)];
                                coding.documentID = QUuid(uint(random() % 1000) + 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
                                coding.codeID = QUuid(uint(random() % 500) + 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
                                coding.start = index;
                                coding.length = 5;
                                if (preparesEachTime) {
                                    const QByteArray sql =
                                        "INSERT INTO coding (id, documentID, codeID, start, length, createdAt) "
                                        "VALUES (?, ?, ?, ?, ?, ?)";
                                    Statement statement(database.connection(), sql);
                                    const Arguments arguments = RecordMapping::values(coding);
                                    statement.bind(arguments);
                                    statement.step();
                                } else {
                                    coding.insert(database);
                                }
                            }
                        });
                    }
                    QFile::remove(path);
                };
                return BenchRow::Jobs{
                    .straightforward = [=] { run(true); }, .ours = [=] { run(false); }, .items = count};
            }};
}

} // namespace

BenchRows libraryRows()
{
    return {
        refreshRow("1 refresh, nothing new, 1,000 documents of 100 kB", largeLibrary),
        refreshRow("1 refresh, nothing new, 10,000 documents of 10 kB",
            [] { return std::make_shared<OpenLibrary>(Corpus(10'000, 10'000)); }),
        firstLoadRow(),
        oneKeyRow({}, u"e"_s),
        oneKeyRow({}, u"interview"_s),
        oneKeyRow(u"interv"_s, u"intervi"_s),
        codePassageRow(),
        writeAloneRow(),
        manyCodingsRow(),
    };
}
