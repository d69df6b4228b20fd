#pragma once

#include <QUuid>

#include <initializer_list>
#include <tuple>

class Database;
template <typename R>
class Request;

/// One stored field: the column's exact name and the member that holds its value.
template <typename Owner, typename Value>
struct Field {
    const char *name;
    Value Owner::*member;
};
template <typename Owner, typename Value>
Field(const char *, Value Owner::*) -> Field<Owner, Value>;

/// What every stored record can do with its table. A record names its table in `databaseTable` and its fields, the
/// primary key first, in `databaseColumns()`. The bodies are in Request.h.
template <typename R>
struct Record {
    [[nodiscard]] static Request<R> all();
    template <typename Expression>
    [[nodiscard]] static Request<R> filter(Expression expression);
    /// Deletes the row of that primary key; returns whether there was one. Throws DatabaseError.
    static bool deleteOne(Database &database, const QUuid &key);

    /// Throws DatabaseError, also for a primary key that is there already.
    void insert(Database &database) const;
    /// Writes all columns of the row with this primary key. Throws DatabaseError, also when there is no such row.
    void update(Database &database) const;
    /// Writes these columns only, so that what another program wrote into the others stays. Throws as `update` does.
    void update(Database &database, std::initializer_list<const char *> columns) const;

    bool operator==(const Record &) const = default;
};
