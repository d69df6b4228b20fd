#include "library/UnwrittenMemos.h"

#include "platform/LocalizedError.h"
#include "records/Code.h"
#include "records/Document.h"
#include "records/database/DatabaseError.h"
#include "records/database/DatabaseQueue.h"
#include "records/database/Request.h"
#include "records/database/Row.h"

using namespace Qt::StringLiterals;

UnwrittenMemos::Attempt UnwrittenMemos::writeAll(DatabaseQueue &queue)
{
    Attempt attempt;
    m_memos.removeIf([&](const auto &entry) {
        try {
            queue.write([&](Database &database) { entry->write(database, entry.key(), *entry); });
            return attempt.hasWritten = true;
        } catch (const LocalizedError &error) {
            attempt.complaint = error.description();
            return false;
        }
    });
    return attempt;
}

template <typename R>
void UnwrittenMemos::write(Database &database, const QUuid &id, const Memo &memo)
{
    // Only the memo is read: a document would come with its whole text, and this may run at each letter typed.
    const std::vector<Row> found = Row::fetchAll(
        database, "SELECT memo FROM "_ba + R::databaseTable + " WHERE id = ?", {ValueEncoding::encoded(id)});
    if (found.empty())
        return;
    if (found.front().value<QString>("memo") != memo.stored)
        throw DatabaseError::misuse(u"Another program has written a memo there."_s);
    R record;
    record.id = id;
    record.memo = memo.text;
    record.update(database, {"memo"});
}

template void UnwrittenMemos::write<Document>(Database &, const QUuid &, const Memo &);
template void UnwrittenMemos::write<Code>(Database &, const QUuid &, const Memo &);
