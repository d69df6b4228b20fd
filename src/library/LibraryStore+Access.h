#pragma once

#include "library/LibraryStore.h"
#include "platform/LocalizedError.h"
#include "records/database/Request.h"

// How the store's operations reach the database; for its own sources only.

template <typename Body>
void LibraryStore::writeIgnoringFailure(Body &&body)
{
    try {
        m_queue.write(std::forward<Body>(body));
    } catch (const LocalizedError &) {
        // The operation goes on; what the next reload shows is the truth.
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
        m_unwrittenMemos.remove(changed.id);
    } catch (const LocalizedError &error) {
        m_unwrittenMemos.insert(changed.id, changed.memo);
        if (wasWritten)
            return QStringLiteral("The memo couldn't be saved: ") + error.description();
    }
    return {};
}

/// The lists show what is in the file; what leaves the library may know more.
template <typename R>
R LibraryStore::withUnwrittenMemo(R record) const
{
    record.memo = m_unwrittenMemos.value(record.id, record.memo);
    return record;
}

template <typename R>
QList<R> LibraryStore::withUnwrittenMemos(QList<R> records) const
{
    if (m_unwrittenMemos.isEmpty())
        return records;
    for (R &record : records)
        record = withUnwrittenMemo(record);
    return records;
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
