#include "library/LibraryStore.h"

#include "library/CodeTree.h"
#include "library/LibraryStoreAccess.h"
#include "platform/UnpairedSurrogates.h"
#include "records/CodePalette.h"
#include "records/TextTrimming.h"

std::optional<Code> LibraryStore::createCode(const QString &name, const std::optional<QString> &colorHex)
{
    const QString trimmed = TextTrimming::trimmed(name).toString();
    if (!m_project.get() || trimmed.isEmpty())
        return {};
    Code code;
    code.id = QUuid::createUuid();
    code.projectID = m_project->value().id;
    code.name = trimmed;
    code.colorHex = colorHex.value_or(CodePalette::hexForNewCode(m_codes->size()));
    code.createdAt = m_services.now();
    writeIgnoringFailure([&](Database &database) {
        keepProject(database);
        code.insert(database);
    });
    refresh();
    return code;
}

void LibraryStore::renameCode(const Code &code, const QString &name)
{
    const QString trimmed = TextTrimming::trimmed(name).toString();
    if (trimmed.isEmpty())
        return;
    Code renamed = code;
    renamed.name = trimmed;
    writeIgnoringFailure([&](Database &database) { renamed.update(database, {"name"}); });
    refresh();
}

void LibraryStore::setCodeColor(const Code &code, const QString &hex)
{
    Code recoloured = code;
    recoloured.colorHex = hex;
    writeIgnoringFailure([&](Database &database) { recoloured.update(database, {"colorHex"}); });
    refresh();
}

void LibraryStore::setCodeMemo(const Code &code, const QString &memo)
{
    Code changed = code;
    changed.memo = memo.isEmpty() ? std::nullopt : std::optional(replaceUnpairedSurrogates(memo));
    const Code *listed = findCode(changed.id);
    const std::optional<QString> complaint = writeMemo(changed, listed != nullptr ? *listed : code);
    m_codes.replace([&](QList<Code> &codes) {
        std::ranges::replace_if(
            codes, [&](const Code &each) { return each.id == changed.id; }, changed);
    });
    concludeMemo(changed.id, complaint);
}

std::optional<QString> LibraryStore::codeMemo(const QUuid &id) const
{
    const Code *listed = findCode(id);
    if (listed == nullptr)
        return {};
    return m_unwrittenMemos.applied(*listed).memo.value_or(QString());
}

void LibraryStore::deleteCode(const Code &code)
{
    const Code deleted = code; // it may be an entry of the list that is reloaded below
    const bool isDeleted = writeIgnoringFailure([&](Database &database) {
        const QList<Code> children = Code::filter(Column("parentID") == deleted.id).fetchAll(database);
        for (const Code &child : CodeTree::movedByDelete(deleted, children))
            child.update(database);
        if (Code::deleteOne(database, deleted.id)) // or its passages would go, and it would stay
            Coding::filter(Column("codeID") == deleted.id).deleteAll(database);
    });
    if (m_sidebarSelection.get() == SidebarSelection(CodeSelection{deleted.id}))
        m_sidebarSelection.set(ProjectSelection{deleted.projectID});
    raiseCodingRevision();
    refresh();
    if (isDeleted)
        m_unwrittenMemos.drop(deleted.id);
}

void LibraryStore::nestCode(const QUuid &child, const QUuid &parent)
{
    const Code *found = findCode(child);
    if (child == parent || !found || !findCode(parent) || CodeTree::isAtOrAbove(child, parent, m_codes.get()))
        return;
    Code nested = *found;
    nested.parentID = parent;
    writeIgnoringFailure([&](Database &database) {
        expectStored<Code>(database, parent);
        nested.update(database, {"parentID"});
    });
    refresh();
}

void LibraryStore::moveCodeToTopLevel(const Code &code)
{
    if (!code.parentID)
        return;
    Code moved = code;
    moved.parentID.reset();
    writeIgnoringFailure([&](Database &database) { moved.update(database, {"parentID"}); });
    refresh();
}

void LibraryStore::mergeCodes(const Code &source, const Code &target)
{
    if (source.id == target.id)
        return;
    const Code from = source; // both may be entries of the list that is reloaded below
    const Code into = target;
    const bool isMerged = writeIgnoringFailure([&](Database &database) {
        expectStored<Code>(database, into.id);
        database.execute("UPDATE coding SET codeID = ? WHERE codeID = ?",
            {ValueEncoding::encoded(into.id), ValueEncoding::encoded(from.id)});
        const QList<Code> codes = Code::filter(Column("projectID") == from.projectID).fetchAll(database);
        for (const Code &moved : CodeTree::movedByMerge(from, into, codes))
            moved.update(database);
        Code::deleteOne(database, from.id);
    });
    if (m_sidebarSelection.get() == SidebarSelection(CodeSelection{from.id}))
        m_sidebarSelection.set(CodeSelection{into.id});
    raiseCodingRevision();
    refresh();
    if (isMerged)
        m_unwrittenMemos.drop(from.id);
}

QList<FlatCode> LibraryStore::orderedCodes() const
{
    return CodeTree::ordered(m_codes.get());
}
