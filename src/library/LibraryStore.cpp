#include "library/LibraryStore.h"

#include "library/LibraryStoreAccess.h"
#include "platform/UnpairedSurrogates.h"
#include "records/TextStats.h"

using namespace Qt::StringLiterals;

LibraryStore::LibraryStore(LibraryServices services)
    : m_services(std::move(services)),
      m_queue(m_services.queue),
      m_shelf(m_queue),
      m_tally(m_queue),
      m_wordFreqScopeLabel(u"All documents"_s)
{
}

void LibraryStore::refresh()
{
    if (!m_project.get()) {
        setDocuments({});
        m_codes.set({});
        m_codeCounts.set({});
        return;
    }
    try {
        setDocuments(m_shelf.documents(m_project->value().id));
    } catch (const LocalizedError &error) {
        m_lastError.set(error.description());
        dropForeignDocuments();
    }
    loadCodes();
    loadProjects();

    const std::optional<QUuid> selected = m_selectedDocumentID.get();
    if (selected && findDocument(*selected))
        return;
    m_selectedDocumentID.set(m_documents->isEmpty() ? std::nullopt : std::optional(m_documents->first().id));
}

/// What was listed stays when it can't be read anew, but not under the name of another project: what is coded, deleted
/// or exported would be the other's.
void LibraryStore::dropForeignDocuments()
{
    if (!m_documents->isEmpty() && m_documents->first().projectID != m_project->value().id)
        setDocuments({});
}

void LibraryStore::loadCodes()
{
    if (!m_project.get()) {
        m_codes.set({});
        m_codeCounts.set({});
        return;
    }
    m_codes.set(readOrEmpty([this](Database &database) { return readCodes(database); }));
    refreshCodeCounts();
}

QList<Code> LibraryStore::readCodes(Database &database) const
{
    return Code::filter(Column("projectID") == m_project->value().id).order(Column("createdAt")).fetchAll(database);
}

void LibraryStore::refreshCodeCounts()
{
    if (!m_project.get()) {
        m_codeCounts.set({});
        return;
    }
    try {
        m_codeCounts.set(m_tally.counts(m_project->value().id));
    } catch (const LocalizedError &error) {
        m_lastError.set(error.description());
    }
}

QList<Document> LibraryStore::visibleDocuments() const
{
    return m_filter.matching(m_documents.get(), m_searchText.get());
}

void LibraryStore::setDocuments(const QList<Document> &documents)
{
    if (documents == m_documents.get())
        return;
    m_documentPositions.clear();
    for (qsizetype position = 0; position < documents.size(); ++position)
        m_documentPositions.insert(documents.at(position).id, position);
    m_documents.set(documents);
}

const Document *LibraryStore::findDocument(const QUuid &id) const
{
    const auto position = m_documentPositions.constFind(id);
    return position == m_documentPositions.constEnd() ? nullptr : &m_documents->at(*position);
}

const Code *LibraryStore::findCode(const QUuid &id) const
{
    const auto found = std::ranges::find(m_codes.get(), id, &Code::id);
    return found == m_codes->end() ? nullptr : &*found;
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

void LibraryStore::raiseCodingRevision()
{
    m_codingRevision.replace([](qint64 &revision) { ++revision; });
}
