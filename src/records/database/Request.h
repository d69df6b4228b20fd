#pragma once

#include "records/database/Database.h"
#include "records/database/DatabaseError.h"
#include "records/database/Record.h"
#include "records/database/ValueEncoding.h"

#include <QList>

#include <algorithm>
#include <optional>

/// A condition on columns, with the values it binds.
struct Expression {
    QByteArray sql;
    Arguments arguments;

    [[nodiscard]] Expression operator&&(const Expression &other) const
    {
        return {sql + " AND " + other.sql, arguments + other.arguments};
    }
};

struct OrderTerm {
    QByteArray sql;
};

/// A column by its exact name: `Column("codeID") == id`, `Column("addedAt").desc`.
class Column {
public:
    explicit Column(const char *name) : desc{quoted(name) + " DESC"}, m_name(quoted(name)) { }

    template <typename Value>
    [[nodiscard]] Expression operator==(const Value &value) const
    {
        return {m_name + " = ?", {ValueEncoding::encoded(value)}};
    }
    explicit operator OrderTerm() const { return {m_name}; }

    const OrderTerm desc;

private:
    static QByteArray quoted(const char *name) { return '"' + QByteArray(name) + '"'; }

    QByteArray m_name;
};

/// The rows of a record's table that match a condition, in an order.
template <typename R>
class Request {
public:
    [[nodiscard]] Request filter(const Expression &expression) const
    {
        Request result(*this);
        result.m_condition = m_condition ? (*m_condition && expression) : expression;
        return result;
    }
    template <typename... Terms>
    [[nodiscard]] Request order(const Terms &...terms) const
    {
        Request result(*this);
        result.m_order = {OrderTerm(terms).sql...};
        return result;
    }

    /// All matching rows. Throws DatabaseError, also for a row that can't be decoded: never a part of the rows.
    [[nodiscard]] QList<R> fetchAll(Database &database) const;
    [[nodiscard]] std::optional<R> fetchOne(Database &database) const;
    [[nodiscard]] qint64 fetchCount(Database &database) const;
    /// Deletes the matching rows and returns their number.
    qint64 deleteAll(Database &database) const;

private:
    [[nodiscard]] QByteArray from() const;
    [[nodiscard]] Arguments arguments() const { return m_condition ? m_condition->arguments : Arguments{}; }

    std::optional<Expression> m_condition;
    QList<QByteArray> m_order;
};

namespace RecordMapping {

/// Fills records from the rows of one run of a statement; looks the columns up by name once.
template <typename R>
class Reader {
public:
    [[nodiscard]] R record(const Statement &row)
    {
        if (!m_resolved)
            resolve(row);
        R result;
        size_t position = 0;
        std::apply(
            [&](const auto &...field) {
                (ValueEncoding::decode(valueAt(row, m_indices[position++]), field.name, result.*field.member), ...);
            },
            R::databaseColumns());
        return result;
    }

private:
    static constexpr size_t fieldCount = std::tuple_size_v<decltype(R::databaseColumns())>;

    static ValueView valueAt(const Statement &row, int index) { return index < 0 ? ValueView{} : row.column(index); }
    void resolve(const Statement &row)
    {
        size_t position = 0;
        std::apply([&](const auto &...field) { ((m_indices[position++] = row.columnIndex(field.name)), ...); },
            R::databaseColumns());
        m_resolved = true;
    }

    std::array<int, fieldCount> m_indices{};
    bool m_resolved = false;
};

template <typename R>
[[nodiscard]] QByteArray quotedTable()
{
    return QByteArray("\"") + R::databaseTable + '"';
}

template <typename R>
[[nodiscard]] Arguments values(const R &record)
{
    return std::apply([&](const auto &...field) { return Arguments{ValueEncoding::encoded(record.*field.member)...}; },
        R::databaseColumns());
}

/// The columns in the order of the record's fields, for a statement.
template <typename R>
[[nodiscard]] QByteArray columnNames()
{
    return std::apply(
        [](const auto &...field) { return QByteArrayList{('"' + QByteArray(field.name) + '"')...}.join(", "); },
        R::databaseColumns());
}

template <typename R>
[[nodiscard]] QByteArray insertStatement()
{
    const QByteArrayList marks(std::tuple_size_v<decltype(R::databaseColumns())>, "?");
    return "INSERT INTO " + quotedTable<R>() + " (" + columnNames<R>() + ") VALUES (" + marks.join(", ") + ')';
}

template <typename R>
[[nodiscard]] QByteArray updateStatement()
{
    QByteArray assignments;
    std::apply(
        [&](const auto &, const auto &...field) {
            ((assignments += (assignments.isEmpty() ? "\"" : ", \"") + QByteArray(field.name) + "\" = ?"), ...);
        },
        R::databaseColumns());
    return "UPDATE " + quotedTable<R>() + " SET " + assignments + " WHERE \"id\" = ?";
}

/// Appends the assignment of a field, and its value, if its column is among those.
template <typename R, typename F>
void assign(const R &record, const F &field, std::initializer_list<const char *> columns, Expression &assignments)
{
    const QByteArrayView name(field.name);
    if (std::ranges::find(columns, name, [](const char *each) { return QByteArrayView(each); }) == columns.end())
        return;
    assignments.sql += (assignments.sql.isEmpty() ? "\"" : ", \"") + name.toByteArray() + "\" = ?";
    assignments.arguments.append(ValueEncoding::encoded(record.*field.member));
}

} // namespace RecordMapping

template <typename R>
QByteArray Request<R>::from() const
{
    QByteArray sql = " FROM " + RecordMapping::quotedTable<R>();
    if (m_condition)
        sql += " WHERE " + m_condition->sql;
    return sql;
}

template <typename R>
QList<R> Request<R>::fetchAll(Database &database) const
{
    QByteArray sql = "SELECT *" + from();
    if (!m_order.isEmpty())
        sql += " ORDER BY " + m_order.join(", ");
    QList<R> records;
    RecordMapping::Reader<R> reader;
    database.forEachRow(sql, arguments(), [&](const Statement &row) { records.append(reader.record(row)); });
    return records;
}

template <typename R>
std::optional<R> Request<R>::fetchOne(Database &database) const
{
    QByteArray sql = "SELECT *" + from();
    if (!m_order.isEmpty())
        sql += " ORDER BY " + m_order.join(", ");
    std::optional<R> result;
    RecordMapping::Reader<R> reader;
    database.forEachRow(sql + " LIMIT 1", arguments(), [&](const Statement &row) { result = reader.record(row); });
    return result;
}

template <typename R>
qint64 Request<R>::fetchCount(Database &database) const
{
    return database.integer("SELECT COUNT(*)" + from(), arguments());
}

template <typename R>
qint64 Request<R>::deleteAll(Database &database) const
{
    // Without a condition SQLite would empty the table in one stroke and tell nobody which rows went.
    database.execute("DELETE" + from() + (m_condition ? "" : " WHERE 1"), arguments());
    return database.changedRowCount();
}

template <typename R>
Request<R> Record<R>::all()
{
    return {};
}

template <typename R>
template <typename E>
Request<R> Record<R>::filter(E expression)
{
    return all().filter(expression);
}

template <typename R>
bool Record<R>::deleteOne(Database &database, const QUuid &key)
{
    return filter(Column("id") == key).deleteAll(database) > 0;
}

template <typename R>
void Record<R>::insert(Database &database) const
{
    static const QByteArray sql = RecordMapping::insertStatement<R>();
    database.execute(sql, RecordMapping::values(static_cast<const R &>(*this)));
}

template <typename R>
void Record<R>::update(Database &database) const
{
    static const QByteArray sql = RecordMapping::updateStatement<R>();
    Arguments arguments = RecordMapping::values(static_cast<const R &>(*this));
    arguments.append(arguments.takeFirst());
    database.execute(sql, arguments);
    if (database.changedRowCount() == 0)
        throw DatabaseError::recordNotFound(QString::fromUtf8(R::databaseTable));
}

template <typename R>
void Record<R>::update(Database &database, std::initializer_list<const char *> columns) const
{
    const R &record = static_cast<const R &>(*this);
    Expression assignments;
    std::apply([&](const auto &...field) { (RecordMapping::assign(record, field, columns, assignments), ...); },
        R::databaseColumns());
    const Expression key = Column("id") == record.id;
    database.execute("UPDATE " + RecordMapping::quotedTable<R>() + " SET " + assignments.sql + " WHERE " + key.sql,
        assignments.arguments + key.arguments);
    if (database.changedRowCount() == 0)
        throw DatabaseError::recordNotFound(QString::fromUtf8(R::databaseTable));
}
