#include "library/LibraryStore.h"

#include "library/SampleContent.h"
#include "records/database/Request.h"

#include <QHash>

using namespace Qt::StringLiterals;

void LibraryStore::seedSampleContent()
{
    seedDocumentsIfEmpty();
    seedCodesIfEmpty();
    seedMemosIfMissing();
    refresh();
}

void LibraryStore::loadSampleContent()
{
    seedSampleContent();
    goToDocuments();
    m_statusMessage.set(
        u"Sample content loaded — click a code in the sidebar, or select text in the document to try coding."_s);
}

void LibraryStore::seedDocumentsIfEmpty()
{
    const auto count = [](Database &database) { return Document::all().fetchCount(database); };
    if (!m_project.get() || readOrEmpty(count) > 0)
        return;
    for (const SampleDocument &sample : SampleContent::documents()) {
        const Document document = newDocument(sample.title, sample.text, sample.sourceKind);
        tryWrite([&](Database &database) {
            keepProject(database);
            document.insert(database);
        });
    }
}

void LibraryStore::seedCodesIfEmpty()
{
    const auto count = [](Database &database) { return Code::all().fetchCount(database); };
    if (!m_project.get() || readOrEmpty(count) > 0)
        return;
    const QUuid projectID = m_project->value().id;
    const QList<Document> documents = readOrEmpty(
        [&](Database &database) { return Document::filter(Column("projectID") == projectID).fetchAll(database); });
    QHash<QString, QUuid> codeIDs;
    for (const Seed &seed : SampleContent::seeds()) {
        const auto document = std::ranges::find(documents, seed.docTitle, &Document::title);
        const qsizetype start = document == documents.end() ? -1 : document->text.indexOf(seed.phrase);
        if (start < 0)
            continue;
        if (!codeIDs.contains(seed.code))
            codeIDs.insert(seed.code, addCode(seed.code, seed.hex).id);
        addCoding(document->id, codeIDs.value(seed.code), {start, seed.phrase.size()});
    }
}

void LibraryStore::seedMemosIfMissing()
{
    const auto giveMemo = [this](const auto &request, const QString &memo) {
        auto record = readOrEmpty([&](Database &database) { return request.fetchOne(database); });
        if (!record || record->memo)
            return;
        record->memo = memo;
        tryWrite([&](Database &database) { record->update(database, {"memo"}); });
    };
    const auto &[codeName, codeMemo] = SampleContent::codeMemo();
    giveMemo(Code::filter(Column("name") == codeName), codeMemo);
    const auto &[title, documentMemo] = SampleContent::documentMemo();
    giveMemo(Document::filter(Column("title") == title), documentMemo);
}
