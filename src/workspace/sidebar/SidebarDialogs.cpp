#include "workspace/sidebar/SidebarDialogs.h"

#include "kit/controls/LongText.h"
#include "workspace/lists/StoreLookup.h"

using namespace Qt::StringLiterals;

void SidebarDialogs::askToDelete(const Code &code)
{
    Alert::Content content;
    content.title = u"Delete “%1”?"_s.arg(LongText::shortened(code.name));
    content.message =
        u"“%1” and all its coded excerpts will be removed. This can't be undone."_s.arg(LongText::shortened(code.name));
    content.action = u"Delete"_s;
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
    content.title = u"Merge Codes?"_s;
    content.message = u"“%1” will be merged into “%2”: %3 coded excerpts move over, then “%1” is removed."_s.arg(
        LongText::shortened(source.name), LongText::shortened(target.name), count);
    content.action = u"Merge"_s;
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
    content.title = u"Rename “%1”"_s.arg(LongText::shortened(project.name));
    content.field = Alert::Field{.text = project.name, .placeholder = u"Project name"_s};
    content.action = u"Rename"_s;
    content.onAction = [&store = m_store, id = project.id](const QString &name) {
        if (const auto renamed = StoreLookup::project(store, id))
            store.renameProject(*renamed, name);
    };
    show(content);
}

void SidebarDialogs::askForNewProject()
{
    Alert::Content content;
    content.title = u"New Project"_s;
    content.message = u"Projects keep their own documents, codes, and memos."_s;
    content.field = Alert::Field{.placeholder = u"Project name"_s};
    content.action = u"Create"_s;
    content.onAction = [&store = m_store](const QString &name) { store.createProject(name); };
    show(content);
}

void SidebarDialogs::show(const Alert::Content &content)
{
    if (m_pending != nullptr)
        m_pending->reject();
    Alert::Content cancellable = content;
    cancellable.cancel = u"Cancel"_s;
    m_pending = Alert::show(m_parent, cancellable);
}
