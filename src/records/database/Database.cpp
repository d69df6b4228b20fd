#include "records/database/Database.h"

#include <sqlite3.h>

Database::Database(sqlite3 *connection) : m_connection(connection)
{
}

Database::~Database()
{
    m_statements.clear(); // before the connection that they belong to
    sqlite3_close_v2(m_connection);
}

bool Database::isInTransaction() const
{
    return sqlite3_get_autocommit(m_connection) == 0;
}

qint64 Database::changedRowCount() const
{
    return sqlite3_changes64(m_connection);
}

void Database::execute(QByteArrayView sql, const Arguments &arguments)
{
    forEachRow(sql, arguments, [](const Statement &) {});
}

qint64 Database::integer(QByteArrayView sql, const Arguments &arguments)
{
    qint64 result = 0;
    forEachRow(sql, arguments, [&](const Statement &row) { result = row.column(0).integer; });
    return result;
}

std::shared_ptr<Statement> Database::prepared(QByteArrayView sql)
{
    const QByteArray key = sql.toByteArray();
    const auto cached = m_statements.constFind(key);
    if (cached != m_statements.constEnd() && !(*cached)->isBusy())
        return *cached;
    auto statement = std::make_shared<Statement>(m_connection, key);
    if (cached == m_statements.constEnd())
        m_statements.insert(key, statement);
    return statement;
}
