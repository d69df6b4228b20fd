#include "workspace/sidebar/SidebarDialogs.h"

#include "workspace/controls/Shortened.h"
#include "workspace/sidebar/StoreLookup.h"

void SidebarDialogs::askToDelete(const Code &code)
{
    Alert::Content content;
    content.title = tr("Delete “%1”?").arg(shortened(code.name));
    content.message =
        tr("“%1” and all its coded excerpts will be removed. This can't be undone.").arg(shortened(code.name));
    content.action = tr("Delete");
    content.actionRole = ButtonRole::destructive;
    content.onAction = [&store = m_store, id = code.id](const QString &) {
        if (const auto deleted = StoreLookup::code(store, id))
            store.deleteCode(*deleted);
    };
    show(content);
}

void SidebarDialogs::askToMerge(const Code &source, const Code &target)
{
    const QString count = QString::number(m_store.codeCounts()->value(source.id));
    Alert::Content content;
    content.title = tr("Merge Codes?");
    content.message = tr("“%1” will be merged into “%2”: %3 coded excerpts move over, then “%1” is removed.")
                          .arg(shortened(source.name), shortened(target.name), count);
    content.action = tr("Merge");
    content.onAction = [&store = m_store, sourceID = source.id, targetID = target.id](const QString &) {
        const auto merged = StoreLookup::code(store, sourceID);
        const auto into = StoreLookup::code(store, targetID);
        if (merged && into)
            store.mergeCodes(*merged, *into);
    };
    show(content);
}

void SidebarDialogs::askForName(const Project &project)
{
    Alert::Content content;
    content.title = tr("Rename “%1”").arg(shortened(project.name));
    content.field = Alert::Field{.text = project.name, .placeholder = tr("Project name"), .accessibleName = {}};
    content.action = tr("Rename");
    content.onAction = [&store = m_store, id = project.id](const QString &name) {
        if (const auto renamed = StoreLookup::project(store, id))
            store.renameProject(*renamed, name);
    };
    show(content);
}

void SidebarDialogs::askForNewProject()
{
    Alert::Content content;
    content.title = tr("New Project");
    content.message = tr("Projects keep their own documents, codes, and memos.");
    content.field = Alert::Field{.text = {}, .placeholder = tr("Project name"), .accessibleName = {}};
    content.action = tr("Create");
    content.onAction = [&store = m_store](const QString &name) { store.createProject(name); };
    show(content);
}

void SidebarDialogs::show(const Alert::Content &content)
{
    if (m_pending != nullptr)
        m_pending->reject();
    Alert::Content cancellable = content;
    cancellable.cancel = tr("Cancel");
    m_pending = Alert::show(m_parent, cancellable);
}
