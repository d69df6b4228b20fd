#include "library/CodeTree.h"
#include "library/LibraryStore.h"
#include "records/CodePalette.h"
#include "records/TextTrimming.h"
#include "records/database/Request.h"

namespace {

/// Throws unless the code is in the file: the store may list what another program has deleted, or what could never be
/// written.
void expectStored(Database &database, const QUuid &codeID)
{
    if (Code::filter(Column("id") == codeID).fetchCount(database) == 0)
        throw DatabaseError::recordNotFound(QString::fromUtf8(Code::databaseTable));
}

} // namespace

Code LibraryStore::addCode(const QString &name, const QString &hex)
{
    Code code;
    code.id = QUuid::createUuid();
    code.projectID = m_project->value().id;
    code.name = name;
    code.colorHex = hex;
    code.createdAt = m_services.now();
    tryWrite([&](Database &database) {
        keepProject(database);
        code.insert(database);
    });
    return code;
}

std::optional<Code> LibraryStore::createCode(const QString &name, const std::optional<QString> &colorHex)
{
    const QString trimmed = TextTrimming::trimmed(name).toString();
    if (!m_project.get() || trimmed.isEmpty())
        return {};
    const Code code = addCode(trimmed, colorHex.value_or(CodePalette::hexForNewCode(m_codes->size())));
    refresh();
    return code;
}

void LibraryStore::renameCode(const Code &code, const QString &name)
{
    const QString trimmed = TextTrimming::trimmed(name).toString();
    if (!trimmed.isEmpty())
        change(code, Field{"name", &Code::name}, trimmed);
}

void LibraryStore::setCodeColor(const Code &code, const QString &hex)
{
    change(code, Field{"colorHex", &Code::colorHex}, hex);
}

void LibraryStore::deleteCode(const Code &code)
{
    const bool isDeleted = tryWrite([&](Database &database) {
        const QList<Code> children = Code::filter(Column("parentID") == code.id).fetchAll(database);
        for (const Code &child : CodeTree::movedByDelete(code, children))
            child.update(database);
        if (Code::deleteOne(database, code.id)) // if it stays, its passages do
            Coding::filter(Column("codeID") == code.id).deleteAll(database);
    });
    concludeRemoval(code.id, ProjectSelection{code.projectID}, isDeleted);
}

void LibraryStore::mergeCodes(const Code &source, const Code &target)
{
    if (source.id == target.id)
        return;
    const bool isMerged = tryWrite([&](Database &database) {
        expectStored(database, target.id);
        database.execute("UPDATE coding SET codeID = ? WHERE codeID = ?",
            {ValueEncoding::encoded(target.id), ValueEncoding::encoded(source.id)});
        const QList<Code> codes = Code::filter(Column("projectID") == source.projectID).fetchAll(database);
        for (const Code &moved : CodeTree::movedByMerge(source, target, codes))
            moved.update(database);
        Code::deleteOne(database, source.id);
    });
    concludeRemoval(source.id, CodeSelection{target.id}, isMerged);
}

// The identifier is a copy, because the code may be an entry of the list that is reloaded.
void LibraryStore::concludeRemoval(QUuid codeID, const SidebarSelection &next, bool isRemoved)
{
    if (selectedCodeID() == codeID)
        m_sidebarSelection.set(next);
    raiseCodingRevision();
    refresh();
    if (isRemoved)
        m_unwrittenMemos.drop(codeID);
}

void LibraryStore::nestCode(const QUuid &child, const QUuid &parent)
{
    const Code *found = findCode(child);
    if (child == parent || !found || !findCode(parent) || CodeTree::isAtOrAbove(child, parent, m_codes.get()))
        return;
    Code nested = *found;
    nested.parentID = parent;
    tryWrite([&](Database &database) {
        expectStored(database, parent);
        nested.update(database, {"parentID"});
    });
    refresh();
}

void LibraryStore::moveCodeToTopLevel(const Code &code)
{
    if (code.parentID)
        change(code, Field{"parentID", &Code::parentID}, {});
}

QList<FlatCode> LibraryStore::orderedCodes() const
{
    return CodeTree::ordered(m_codes.get());
}
