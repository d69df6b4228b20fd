#include "workspace/sidebar/SidebarRow.h"

#include "library/LibraryStore.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

using Kind = SidebarRow::Kind;

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(SidebarView)
};

SidebarRow fixedRow(Kind kind, const QString &text)
{
    SidebarRow row;
    row.kind = kind;
    row.text = text;
    return row;
}

SidebarRow projectRow(const Project &project, const QHash<QUuid, qint64> &counts)
{
    SidebarRow row;
    row.kind = Kind::project;
    row.id = project.id;
    row.text = project.name;
    row.count = counts.value(project.id);
    return row;
}

SidebarRow codeRow(const FlatCode &line, const QHash<QUuid, qint64> &counts)
{
    SidebarRow row;
    row.kind = Kind::code;
    row.id = line.id();
    row.text = line.code.name;
    row.count = counts.value(line.id());
    row.colorHex = line.code.colorHex;
    row.depth = int(line.depth);
    return row;
}

} // namespace

SidebarRows sidebarRows(const LibraryStore &store, const OpenFields &fields)
{
    SidebarRows rows{fixedRow(Kind::head, u"Projects"_s)};
    for (const Project &project : store.projects().get())
        rows.push_back(projectRow(project, store.projectDocCounts().get()));
    rows.push_back(fixedRow(Kind::newProject, u"New Project…"_s));

    rows.push_back(fixedRow(Kind::head, u"Codes"_s));
    if (store.codes()->isEmpty() && !fields.isAddingCode)
        rows.push_back(fixedRow(Kind::hint, u"Select text in a document to code it"_s));
    for (const FlatCode &line : store.orderedCodes()) {
        rows.push_back(codeRow(line, store.codeCounts().get()));
        rows.back().isEdited = line.id() == fields.renamingCodeID;
    }
    rows.push_back(fixedRow(Kind::newCode, u"New Code…"_s));
    rows.back().isEdited = fields.isAddingCode;
    return rows;
}
