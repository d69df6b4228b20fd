#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QUuid>

#include <optional>

class Database;
class DatabaseQueue;

/// Memos of documents and codes that couldn't be stored, as they were last given, until they can be.
class UnwrittenMemos {
public:
    [[nodiscard]] bool isEmpty() const { return m_memos.isEmpty(); }
    [[nodiscard]] bool contains(const QUuid &id) const { return m_memos.contains(id); }

    /// The record with its memo as it was last given.
    template <typename R>
    [[nodiscard]] R applied(R record) const
    {
        if (const auto kept = m_memos.constFind(record.id); kept != m_memos.constEnd())
            record.memo = kept->text;
        return record;
    }
    template <typename R>
    [[nodiscard]] QList<R> applied(QList<R> records) const
    {
        if (isEmpty())
            return records;
        for (R &record : records)
            record = applied(record);
        return records;
    }

    /// `stored` is the memo that the file had, as far as is known.
    template <typename R>
    void keep(const R &record, const std::optional<QString> &stored)
    {
        const auto kept = m_memos.constFind(record.id);
        m_memos.insert(record.id, {record.memo, kept == m_memos.constEnd() ? stored : kept->stored, write<R>});
    }
    void drop(const QUuid &id) { m_memos.remove(id); }

    struct Attempt {
        bool hasWritten = false; ///< one at least
        std::optional<QString> complaint = {}; ///< why others couldn't be stored
    };
    /// Tries to store each. Those whose record another program has deleted are dropped; where it has written another
    /// memo, that one stays until the user comes to see both.
    Attempt writeAll(DatabaseQueue &queue);

private:
    struct Memo {
        std::optional<QString> text;
        std::optional<QString> stored; ///< before
        void (*write)(Database &database, const QUuid &id, const Memo &memo);
    };
    template <typename R>
    static void write(Database &database, const QUuid &id, const Memo &memo);

    QHash<QUuid, Memo> m_memos;
};
