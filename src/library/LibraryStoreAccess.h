#pragma once

#include "library/LibraryStore.h"
#include "platform/LocalizedError.h"
#include "records/database/Request.h"

// How the store's operations reach the database; for its own sources only.

template <typename Body>
bool LibraryStore::writeIgnoringFailure(Body &&body)
{
    try {
        m_queue.write(std::forward<Body>(body));
        return true;
    } catch (const LocalizedError &) {
        return false; // The operation goes on; what the next reload shows is the truth.
    }
}

/// Nobody sees by looking whether a memo was stored: that it wasn't is told once, until a write succeeds.
template <typename R>
std::optional<QString> LibraryStore::writeMemo(const R &changed, const R &listed)
{
    const bool wasWritten = isMemoWritten(changed.id);
    if (wasWritten && listed.memo == changed.memo)
        return {};
    try {
        m_queue.write([&](Database &database) { changed.update(database, {"memo"}); });
        m_unwrittenMemos.drop(changed.id);
    } catch (const LocalizedError &error) {
        m_unwrittenMemos.keep(changed, listed.memo);
        if (wasWritten)
            return QStringLiteral("The memo couldn't be saved: ") + error.description();
    }
    return {};
}

template <typename Body>
auto LibraryStore::readOrEmpty(Body &&body) const
{
    try {
        return m_queue.read(std::forward<Body>(body));
    } catch (const LocalizedError &) {
        return std::invoke_result_t<Body, Database &>{};
    }
}

/// Throws unless the record is in the file: the store may list what another program has deleted, or what could never be
/// written.
template <typename R>
void expectStored(Database &database, const QUuid &id)
{
    if (R::filter(Column("id") == id).fetchCount(database) == 0)
        throw DatabaseError::recordNotFound(QString::fromUtf8(R::databaseTable));
}
