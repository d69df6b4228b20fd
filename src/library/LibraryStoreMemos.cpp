#include "library/LibraryStore.h"

#include "platform/UnpairedSurrogates.h"
#include "records/database/Request.h"

using namespace Qt::StringLiterals;

/// A memo that wasn't stored looks as if it were, so that is told: once, until a write succeeds.
template <typename R>
void LibraryStore::setMemo(R record, const QString &memo, const R *listed, Observable<QList<R>> &records)
{
    const std::optional<QString> before = listed ? listed->memo : record.memo;
    record.memo = memo.isEmpty() ? std::nullopt : std::optional(replaceUnpairedSurrogates(memo));
    const bool wasWritten = isMemoWritten(record.id);
    std::optional<QString> complaint;
    if (!wasWritten || record.memo != before) {
        try {
            m_queue.write([&](Database &database) { record.update(database, {"memo"}); });
            m_unwrittenMemos.drop(record.id);
        } catch (const LocalizedError &error) {
            m_unwrittenMemos.keep(record, before);
            if (wasWritten)
                complaint = u"The memo couldn't be saved: "_s + error.description();
        }
    }
    records.replace([&](QList<R> &all) {
        std::ranges::replace_if(
            all, [&](const R &each) { return each.id == record.id; }, record);
    });
    if (complaint)
        m_lastError.set(complaint);
    else if (isMemoWritten(record.id))
        saveUnwrittenMemos(); // the user may have made room for the others meanwhile
}

template <typename R>
std::optional<QString> LibraryStore::memoOf(const R *listed) const
{
    if (!listed)
        return {};
    return m_unwrittenMemos.applied(*listed).memo.value_or(QString());
}

void LibraryStore::setDocumentMemo(const Document &document, const QString &memo)
{
    setMemo(document, memo, findDocument(document.id), m_documents);
}

void LibraryStore::setCodeMemo(const Code &code, const QString &memo)
{
    setMemo(code, memo, findCode(code.id), m_codes);
}

std::optional<QString> LibraryStore::documentMemo(const QUuid &id) const
{
    return memoOf(findDocument(id));
}

std::optional<QString> LibraryStore::codeMemo(const QUuid &id) const
{
    return memoOf(findCode(id));
}

std::optional<QString> LibraryStore::saveUnwrittenMemos()
{
    const UnwrittenMemos::Attempt attempt = m_unwrittenMemos.writeAll(m_queue);
    if (attempt.hasWritten)
        refresh();
    return attempt.complaint;
}
