#include "library/LibraryStore.h"

#include "library/LibraryStoreAccess.h"
#include "platform/UnpairedSurrogates.h"
#include "records/TextTrimming.h"

using namespace Qt::StringLiterals;

bool LibraryStore::addPastedDocument(const QString &title, const QString &text)
{
    if (!m_project.get())
        return false;
    const Document document = newDocument(title.isEmpty() ? u"Untitled Document"_s : title, text, u"paste"_s);
    try {
        m_queue.write([&](Database &database) {
            keepProject(database);
            document.insert(database);
        });
    } catch (const LocalizedError &error) {
        m_lastError.set(u"The document couldn't be added: "_s + error.description());
        return false;
    }
    refresh();
    m_selectedDocumentID.set(m_documents->isEmpty() ? std::nullopt : std::optional(m_documents->first().id));
    return true;
}

void LibraryStore::renameDocument(const Document &document, const QString &title)
{
    const QString trimmed = TextTrimming::trimmed(title).toString();
    if (trimmed.isEmpty())
        return;
    Document renamed = document;
    renamed.title = trimmed;
    writeIgnoringFailure([&](Database &database) { renamed.update(database, {"title"}); });
    refresh();
}

void LibraryStore::deleteDocument(const Document &document)
{
    const QUuid id = document.id; // `document` may be an entry of the list that is reloaded below
    try {
        m_queue.write([&](Database &database) {
            if (Document::deleteOne(database, id)) // or its passages would go, and it would stay
                Coding::filter(Column("documentID") == id).deleteAll(database);
        });
    } catch (const LocalizedError &error) {
        m_lastError.set(error.description());
        return;
    }
    if (m_revealRequest.get() && m_revealRequest->value().documentID == id)
        m_revealRequest.set({});
    raiseCodingRevision();
    refresh();
    m_unwrittenMemos.drop(id);
}

void LibraryStore::setDocumentMemo(const Document &document, const QString &memo)
{
    Document changed = document;
    changed.memo = memo.isEmpty() ? std::nullopt : std::optional(replaceUnpairedSurrogates(memo));
    const Document *listed = findDocument(changed.id);
    const std::optional<QString> complaint = writeMemo(changed, listed != nullptr ? *listed : document);
    m_documents.replace([&](QList<Document> &documents) {
        std::ranges::replace_if(
            documents, [&](const Document &each) { return each.id == changed.id; }, changed);
    });
    concludeMemo(changed.id, complaint);
}

/// What couldn't be stored before may be stored now: the user may have made room meanwhile.
void LibraryStore::concludeMemo(const QUuid &id, const std::optional<QString> &complaint)
{
    if (complaint)
        m_lastError.set(complaint);
    else if (isMemoWritten(id))
        saveUnwrittenMemos();
}

std::optional<QString> LibraryStore::saveUnwrittenMemos()
{
    const UnwrittenMemos::Attempt attempt = m_unwrittenMemos.writeAll(m_queue);
    if (attempt.hasWritten)
        refresh();
    return attempt.complaint;
}

std::optional<QString> LibraryStore::documentMemo(const QUuid &id) const
{
    const Document *listed = findDocument(id);
    if (listed == nullptr)
        return {};
    return m_unwrittenMemos.applied(*listed).memo.value_or(QString());
}
