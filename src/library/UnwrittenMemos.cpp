#include "library/UnwrittenMemos.h"

#include "platform/LocalizedError.h"
#include "records/Code.h"
#include "records/Document.h"
#include "records/database/DatabaseError.h"
#include "records/database/DatabaseQueue.h"
#include "records/database/Request.h"

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
    std::optional<R> record = R::filter(Column("id") == id).fetchOne(database);
    if (!record)
        return;
    if (record->memo != memo.stored)
        throw DatabaseError::misuse(u"Another program has written a memo there."_s);
    record->memo = memo.text;
    record->update(database, {"memo"});
}

template void UnwrittenMemos::write<Document>(Database &, const QUuid &, const Memo &);
template void UnwrittenMemos::write<Code>(Database &, const QUuid &, const Memo &);
