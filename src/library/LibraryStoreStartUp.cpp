#include "library/LibraryStore.h"

#include "library/LibraryStoreAccess.h"

using namespace Qt::StringLiterals;

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
        m_sidebarSelection.set(ProjectSelection{m_project->value().id});
}

void LibraryStore::ensureProject()
{
    if (m_project.get())
        return;
    std::optional<Project> oldest =
        m_queue.read([](Database &database) { return Project::all().order(Column("createdAt")).fetchOne(database); });
    if (!oldest) {
        oldest.emplace();
        oldest->id = QUuid::createUuid();
        oldest->name = u"Untitled Study"_s;
        oldest->createdAt = m_services.now();
        oldest->modifiedAt = m_services.now();
        m_queue.write([&](Database &database) { oldest->insert(database); });
    }
    m_project.set(oldest);
}
