#include "workspace/sidebar/SidebarRow.h"

#include "library/LibraryStore.h"

using namespace Qt::StringLiterals;

using Kind = SidebarRow::Kind;

SidebarRows sidebarRows(const LibraryStore &store, const OpenFields &fields)
{
    SidebarRows rows;
    rows.push_back({.kind = Kind::head, .text = u"Projects"_s});
    for (const Project &project : store.projects().get())
        rows.push_back({.kind = Kind::project,
            .id = project.id,
            .text = project.name,
            .count = store.projectDocCounts()->value(project.id)});
    rows.push_back({.kind = Kind::newProject, .text = u"New Project…"_s});

    rows.push_back({.kind = Kind::head, .text = u"Codes"_s});
    if (store.codes()->isEmpty() && !fields.isAddingCode)
        rows.push_back({.kind = Kind::hint, .text = u"Select text in a document to code it"_s});
    for (const FlatCode &line : store.orderedCodes())
        rows.push_back({.kind = Kind::code,
            .id = line.id(),
            .text = line.code.name,
            .count = store.codeCounts()->value(line.id()),
            .colorHex = line.code.colorHex,
            .depth = int(line.depth),
            .isEdited = line.id() == fields.renamingCodeID});
    rows.push_back({.kind = Kind::newCode, .text = u"New Code…"_s, .isEdited = fields.isAddingCode});
    return rows;
}
