#pragma once

#include "records/database/DatabaseValue.h"

#include <QByteArray>

#include <memory>

struct sqlite3;
struct sqlite3_stmt;

/// A prepared statement. Every failure is thrown as DatabaseError with the statement's text.
class Statement {
public:
    /// `sql` must hold exactly one statement; none or several are an error. `connection` must outlive this.
    Statement(sqlite3 *connection, QByteArray sql);

    [[nodiscard]] int columnCount() const;
    /// The index of the first column of that exact name, or -1.
    [[nodiscard]] int columnIndex(QByteArrayView name) const;
    [[nodiscard]] QByteArray columnName(int index) const;
    /// The value in the current row. Lives until the next step or reset.
    [[nodiscard]] ValueView column(int index) const;
    [[nodiscard]] bool isBusy() const;

    /// Text and blobs aren't copied: `arguments` must live until the statement has been reset.
    void bind(const Arguments &arguments);
    /// Moves to the next row; returns whether there is one.
    bool step();
    void reset() noexcept;

private:
    void bindValue(int index, const DatabaseValue &value);
    [[noreturn]] void fail(int status) const;

    struct Finalizer {
        void operator()(sqlite3_stmt *statement) const noexcept;
    };

    sqlite3 *m_connection;
    QByteArray m_sql;
    std::unique_ptr<sqlite3_stmt, Finalizer> m_handle;
};
