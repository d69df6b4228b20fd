#pragma once

#include "platform/LocalizedError.h"

#include <QByteArrayView>

/// A failure of the database layer: of SQLite itself, of a row that can't be decoded, or of a record that isn't there.
class DatabaseError : public LocalizedError {
public:
    /// A failure of SQLite while it ran `sql` (empty when no statement was running). Arguments are never part of it.
    static DatabaseError whileExecuting(int code, const QString &message, QByteArrayView sql);
    static DatabaseError undecodable(const QString &column, const QString &reason);
    static DatabaseError recordNotFound(const QString &table);
    static DatabaseError misuse(const QString &message);

    [[nodiscard]] QString description() const override { return m_description; }
    /// SQLite's extended result code, or 0 when the failure isn't SQLite's.
    [[nodiscard]] int code() const noexcept { return m_code; }

private:
    DatabaseError(int code, QString description);

    int m_code;
    QString m_description;
};
