#include "records/database/Statement.h"

#include "records/database/DatabaseError.h"

#include <sqlite3.h>

using namespace Qt::StringLiterals;

Statement::Statement(sqlite3 *connection, QByteArray sql) : m_connection(connection), m_sql(std::move(sql))
{
    sqlite3_stmt *raw = nullptr;
    const char *rest = nullptr; // what SQLite leaves unread
    const int status =
        sqlite3_prepare_v3(connection, m_sql.constData(), int(m_sql.size()), SQLITE_PREPARE_PERSISTENT, &raw, &rest);
    m_handle.reset(raw);
    if (status != SQLITE_OK)
        fail(status);
    if (!m_handle)
        throw DatabaseError::misuse(u"The statement is empty."_s);
    if (!QByteArrayView(rest, m_sql.constEnd()).trimmed().isEmpty())
        throw DatabaseError::misuse(u"More than one statement was given: "_s + QString::fromUtf8(m_sql));
}

int Statement::columnCount() const
{
    return sqlite3_column_count(m_handle.get());
}

QByteArray Statement::columnName(int index) const
{
    return QByteArray(sqlite3_column_name(m_handle.get(), index));
}

int Statement::columnIndex(QByteArrayView name) const
{
    const int count = columnCount();
    for (int index = 0; index < count; ++index) {
        if (name == QByteArrayView(sqlite3_column_name(m_handle.get(), index)))
            return index;
    }
    return -1;
}

ValueView Statement::column(int index) const
{
    sqlite3_stmt *handle = m_handle.get();
    // Ask for the pointer first: that may convert the value and change its size.
    const auto bytes = [&](const void *data) {
        return QByteArrayView(static_cast<const char *>(data), sqlite3_column_bytes(handle, index));
    };
    switch (sqlite3_column_type(handle, index)) {
    case SQLITE_INTEGER:
        return {.kind = ValueView::Kind::integer, .integer = sqlite3_column_int64(handle, index), .bytes = {}};
    case SQLITE_FLOAT:
        return {.kind = ValueView::Kind::real, .real = sqlite3_column_double(handle, index), .bytes = {}};
    case SQLITE_TEXT: {
        const unsigned char *text = sqlite3_column_text(handle, index);
        if (!text)
            fail(SQLITE_NOMEM);
        return {.kind = ValueView::Kind::text, .bytes = bytes(text)};
    }
    case SQLITE_BLOB:
        return {.kind = ValueView::Kind::blob, .bytes = bytes(sqlite3_column_blob(handle, index))};
    default:
        return {};
    }
}

bool Statement::isBusy() const
{
    return sqlite3_stmt_busy(m_handle.get()) != 0;
}

void Statement::bind(const Arguments &arguments)
{
    if (sqlite3_bind_parameter_count(m_handle.get()) != arguments.size())
        throw DatabaseError::misuse(u"The statement has another number of arguments: "_s + QString::fromUtf8(m_sql));
    for (int index = 0; index < int(arguments.size()); ++index)
        bindValue(index + 1, arguments.at(index));
}

void Statement::bindValue(int index, const DatabaseValue &value)
{
    sqlite3_stmt *handle = m_handle.get();
    // SQLite binds NULL when the pointer is null, even with size 0.
    const auto pointer = [](const QByteArray &bytes) { return bytes.isNull() ? "" : bytes.constData(); };
    const auto size = [](const QByteArray &bytes) { return sqlite3_uint64(bytes.size()); };
    struct Binder {
        sqlite3_stmt *handle;
        int index;
        decltype(pointer) pointerOf;
        decltype(size) sizeOf;

        int operator()(NullValue) const { return sqlite3_bind_null(handle, index); }
        int operator()(qint64 integer) const { return sqlite3_bind_int64(handle, index, integer); }
        int operator()(double real) const { return sqlite3_bind_double(handle, index, real); }
        int operator()(const TextValue &text) const
        {
            return sqlite3_bind_text64(
                handle, index, pointerOf(text.utf8), sizeOf(text.utf8), SQLITE_STATIC, SQLITE_UTF8);
        }
        int operator()(const BlobValue &blob) const
        {
            return sqlite3_bind_blob64(handle, index, pointerOf(blob.bytes), sizeOf(blob.bytes), SQLITE_STATIC);
        }
    };
    const int status = std::visit(Binder{handle, index, pointer, size}, value);
    if (status != SQLITE_OK)
        fail(status);
}

bool Statement::step()
{
    const int status = sqlite3_step(m_handle.get());
    if (status == SQLITE_ROW)
        return true;
    if (status != SQLITE_DONE)
        fail(status);
    return false;
}

void Statement::reset() noexcept
{
    // The status repeats the failure of the last step, which has been thrown already.
    sqlite3_reset(m_handle.get());
    sqlite3_clear_bindings(m_handle.get());
}

void Statement::fail(int status) const
{
    throw DatabaseError::whileExecuting(status, QString::fromUtf8(sqlite3_errmsg(m_connection)), m_sql);
}

void Statement::Finalizer::operator()(sqlite3_stmt *statement) const noexcept
{
    sqlite3_finalize(statement);
}
