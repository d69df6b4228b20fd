#include "library/LibraryStore.h"

#include "platform/UnpairedSurrogates.h"
#include "records/TextStats.h"
#include "records/TextTrimming.h"
#include "records/database/Request.h"

using namespace Qt::StringLiterals;

QList<Document> LibraryStore::visibleDocuments() const
{
    return m_filter.matching(m_documents.get(), m_searchText.get());
}

void LibraryStore::selectFirstDocument()
{
    m_selectedDocumentID.set(m_documents->isEmpty() ? std::nullopt : std::optional(m_documents->first().id));
}

Document LibraryStore::newDocument(const QString &title, const QString &text, const QString &sourceKind) const
{
    Document document;
    document.id = QUuid::createUuid();
    document.projectID = m_project->value().id;
    document.title = title;
    document.text = replaceUnpairedSurrogates(text);
    document.addedAt = m_services.now();
    document.sourceKind = sourceKind;
    document.wordCount = TextStats::wordCount(document.text);
    document.charCount = TextStats::characterCount(document.text);
    return document;
}

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
    selectFirstDocument();
    return true;
}

void LibraryStore::renameDocument(const Document &document, const QString &title)
{
    const QString trimmed = TextTrimming::trimmed(title).toString();
    if (!trimmed.isEmpty())
        change(document, Field{"title", &Document::title}, trimmed);
}

void LibraryStore::deleteDocument(const Document &document)
{
    const QUuid id = document.id; // `document` may be an entry of the list that is reloaded below
    try {
        m_queue.write([&](Database &database) {
            if (Document::deleteOne(database, id)) // if it stays, its passages do
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
