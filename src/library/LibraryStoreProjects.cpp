#include "library/LibraryStore.h"

#include "platform/UnpairedSurrogates.h"
#include "records/TextTrimming.h"
#include "records/database/Request.h"
#include "records/database/Row.h"

using namespace Qt::StringLiterals;

void LibraryStore::ensureProject()
{
    if (m_project.get())
        return;
    std::optional<Project> oldest =
        m_queue.read([](Database &database) { return Project::all().order(Column("createdAt")).fetchOne(database); });
    if (!oldest) {
        oldest = newProject(u"Untitled Study"_s);
        m_queue.write([&](Database &database) { oldest->insert(database); });
    }
    m_project.set(oldest);
}

Project LibraryStore::newProject(const QString &name) const
{
    Project project;
    project.id = QUuid::createUuid();
    project.name = name;
    project.createdAt = m_services.now();
    project.modifiedAt = m_services.now();
    return project;
}

void LibraryStore::loadProjects()
{
    m_projects.set(
        readOrEmpty([](Database &database) { return Project::all().order(Column("createdAt")).fetchAll(database); }));
    m_projectDocCounts.set(readOrEmpty([](Database &database) {
        QHash<QUuid, qint64> counts;
        for (const Row &row :
            Row::fetchAll(database, "SELECT projectID, COUNT(*) AS n FROM document GROUP BY projectID")) {
            const auto id = row.value<QUuid>("projectID");
            const auto count = row.value<qint64>("n");
            if (id && count)
                counts.insert(*id, *count);
        }
        return counts;
    }));
}

std::optional<Project> LibraryStore::createProject(const QString &name)
{
    const QString trimmed = TextTrimming::trimmed(name).toString();
    if (trimmed.isEmpty())
        return {};
    const Project project = newProject(replaceUnpairedSurrogates(trimmed));
    tryWrite([&](Database &database) { project.insert(database); });
    loadProjects();
    m_project.set(project);
    resetContext();
    goToDocuments();
    refresh();
    return project;
}

void LibraryStore::keepProject(Database &database) const
{
    const Project &open = m_project->value();
    if (Project::filter(Column("id") == open.id).fetchCount(database) == 0)
        open.insert(database);
}

void LibraryStore::selectProject(const QUuid &id)
{
    const auto found = std::ranges::find(m_projects.get(), id, &Project::id);
    if (found == m_projects->end())
        return;
    Project project = *found; // a copy, since observers of the selection may change the list
    m_sidebarSelection.set(ProjectSelection{id});
    if (m_project.get() && m_project->value().id == id)
        return;
    m_project.set(std::move(project));
    resetContext();
    refresh();
}

void LibraryStore::renameProject(const Project &project, const QString &name)
{
    const QString trimmed = TextTrimming::trimmed(name).toString();
    if (trimmed.isEmpty())
        return;
    Project renamed = project;
    renamed.name = replaceUnpairedSurrogates(trimmed);
    renamed.modifiedAt = m_services.now();
    tryWrite([&](Database &database) { renamed.update(database, {"name", "modifiedAt"}); });
    if (m_project.get() && m_project->value().id == renamed.id)
        m_project.set(renamed);
    loadProjects();
}

void LibraryStore::goToDocuments()
{
    if (m_project.get())
        m_sidebarSelection.set(ProjectSelection{m_project->value().id});
}

std::optional<QUuid> LibraryStore::selectedCodeID() const
{
    if (!m_sidebarSelection.get())
        return {};
    const auto *selection = std::get_if<CodeSelection>(&m_sidebarSelection->value());
    return selection ? std::optional(selection->codeID) : std::nullopt;
}

/// Results never outlive the project that they were made in, nor do its texts, which the last search holds.
void LibraryStore::resetContext()
{
    m_filter = {};
    m_selectedDocumentID.set({});
    m_revealRequest.set({});
    m_activeQuery.set({});
    m_queryResults.set({});
    m_wordFreqItems.set({});
    m_wordFreqSelectedTerm.set({});
    m_wordFreqOccurrences.set({});
}
