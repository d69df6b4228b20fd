#include "library/LibraryStore.h"

#include "library/LibraryStoreAccess.h"
#include "library/SampleContent.h"

#include <QHash>

using namespace Qt::StringLiterals;

void LibraryStore::seedSampleContent()
{
    seedDemoDocumentsIfEmpty();
    seedDemoCodesIfEmpty();
    seedDemoMemosIfMissing();
    refresh();
}

void LibraryStore::loadSampleContent()
{
    seedSampleContent();
    goToDocuments();
    m_statusMessage.set(
        u"Sample content loaded — click a code in the sidebar, or select text in the document to try coding."_s);
}

void LibraryStore::seedDemoDocumentsIfEmpty()
{
    const auto count = [](Database &database) { return Document::all().fetchCount(database); };
    if (!m_project.get() || readOrEmpty(count) > 0)
        return;
    for (const SampleDocument &sample : SampleContent::documents()) {
        const Document document = newDocument(sample.title, sample.text, sample.sourceKind);
        writeIgnoringFailure([&](Database &database) {
            keepProject(database);
            document.insert(database);
        });
    }
}

void LibraryStore::seedDemoCodesIfEmpty()
{
    const auto count = [](Database &database) { return Code::all().fetchCount(database); };
    if (!m_project.get() || readOrEmpty(count) > 0)
        return;
    const QUuid projectID = m_project->value().id;
    const QList<Document> documents = readOrEmpty(
        [&](Database &database) { return Document::filter(Column("projectID") == projectID).fetchAll(database); });
    QHash<QString, Code> codes;
    for (const Seed &seed : SampleContent::seeds()) {
        const auto document = std::ranges::find(documents, seed.docTitle, &Document::title);
        const qsizetype start = document == documents.end() ? -1 : document->text.indexOf(seed.phrase);
        if (start < 0)
            continue;
        if (!codes.contains(seed.code))
            codes.insert(seed.code, seedCode(seed.code, seed.hex));
        Coding coding;
        coding.id = QUuid::createUuid();
        coding.documentID = document->id;
        coding.codeID = codes.value(seed.code).id;
        coding.start = start;
        coding.length = seed.phrase.size();
        coding.createdAt = m_services.now();
        writeIgnoringFailure([&](Database &database) { insertWhole(database, coding); });
    }
}

Code LibraryStore::seedCode(const QString &name, const QString &hex)
{
    Code code;
    code.id = QUuid::createUuid();
    code.projectID = m_project->value().id;
    code.name = name;
    code.colorHex = hex;
    code.createdAt = m_services.now();
    writeIgnoringFailure([&](Database &database) {
        keepProject(database);
        code.insert(database);
    });
    return code;
}

void LibraryStore::seedDemoMemosIfMissing()
{
    const auto giveMemo = [this](auto record, const QString &memo) {
        if (!record || record->memo)
            return;
        record->memo = memo;
        writeIgnoringFailure([&](Database &database) { record->update(database, {"memo"}); });
    };
    const SampleMemo &codeMemo = SampleContent::codeMemo();
    giveMemo(readOrEmpty(
                 [&](Database &database) { return Code::filter(Column("name") == codeMemo.name).fetchOne(database); }),
        codeMemo.memo);
    const SampleMemo &documentMemo = SampleContent::documentMemo();
    giveMemo(readOrEmpty([&](Database &database) {
        return Document::filter(Column("title") == documentMemo.name).fetchOne(database);
    }),
        documentMemo.memo);
}
