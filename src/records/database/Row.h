#pragma once

#include "records/database/Database.h"
#include "records/database/ValueEncoding.h"

#include <QByteArray>

#include <memory>
#include <optional>
#include <vector>

/// A copy of a row of a raw query, with typed values by column name.
class Row {
public:
    /// Throws DatabaseError.
    [[nodiscard]] static std::vector<Row> fetchAll(
        Database &database, QByteArrayView sql, const Arguments &arguments = {});

    /// Absent for NULL and for a column that the row doesn't have. Throws DatabaseError for a value of another kind.
    template <typename T>
    [[nodiscard]] std::optional<T> value(const char *column) const
    {
        std::optional<T> result;
        ValueEncoding::decode(view(column), column, result);
        return result;
    }

private:
    using Names = std::vector<QByteArray>;

    Row(std::shared_ptr<const Names> names, std::vector<DatabaseValue> values);
    [[nodiscard]] ValueView view(QByteArrayView column) const;

    std::shared_ptr<const Names> m_names;
    std::vector<DatabaseValue> m_values;
};
