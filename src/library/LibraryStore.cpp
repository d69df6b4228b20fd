#include "library/LibraryStore.h"

#include "records/database/Request.h"

using namespace Qt::StringLiterals;

LibraryStore::LibraryStore(LibraryServices services)
    : m_services(std::move(services)),
      m_queue(m_services.queue),
      m_documentCache(m_queue),
      m_codeCountCache(m_queue),
      m_wordFreqScopeLabel(u"All documents"_s)
{
}

void LibraryStore::bootstrap()
{
    try {
        ensureProject();
    } catch (const LocalizedError &error) {
        m_lastError.set(error.description());
        return;
    }
    refresh();
    if (!m_sidebarSelection.get())
        goToDocuments();
}

void LibraryStore::refresh()
{
    if (!m_project.get())
        return;
    const QUuid projectID = m_project->value().id;
    try {
        setDocuments(m_documentCache.documents(projectID));
    } catch (const LocalizedError &error) {
        m_lastError.set(error.description());
        // The list stays as it was, but not under the name of another project: what is coded, deleted or exported would
        // be the other's.
        if (!m_documents->isEmpty() && m_documents->first().projectID != projectID)
            setDocuments({});
    }
    m_codes.set(readOrEmpty([this](Database &database) { return readCodes(database); }));
    refreshCodeCounts();
    loadProjects();
    if (!m_selectedDocumentID.get() || !findDocument(**m_selectedDocumentID))
        selectFirstDocument();
}

void LibraryStore::expectWholeLists()
{
    if (!m_project.get())
        return;
    refresh(); // also what depends on the lists; but it goes on where it can't read
    setDocuments(m_documentCache.documents(m_project->value().id));
    m_codes.set(m_queue.read([this](Database &database) { return readCodes(database); }));
}

QList<Code> LibraryStore::readCodes(Database &database) const
{
    return Code::filter(Column("projectID") == m_project->value().id).order(Column("createdAt")).fetchAll(database);
}

void LibraryStore::refreshCodeCounts()
{
    if (!m_project.get())
        return;
    try {
        m_codeCounts.set(m_codeCountCache.counts(m_project->value().id));
    } catch (const LocalizedError &error) {
        m_lastError.set(error.description());
    }
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

bool LibraryStore::tryWrite(const std::function<void(Database &database)> &body)
{
    try {
        m_queue.write(body);
        return true;
    } catch (const LocalizedError &) {
        return false;
    }
}
