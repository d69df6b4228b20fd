#include "records/database/Row.h"

#include "records/database/Statement.h"

#include <algorithm>

Row::Row(std::shared_ptr<const Names> names, std::vector<DatabaseValue> values)
    : m_names(std::move(names)),
      m_values(std::move(values))
{
}

std::vector<Row> Row::fetchAll(Database &database, QByteArrayView sql, const Arguments &arguments)
{
    std::vector<Row> rows;
    std::shared_ptr<Names> names;
    database.forEachRow(sql, arguments, [&](const Statement &statement) {
        const int count = statement.columnCount();
        if (!names) {
            names = std::make_shared<Names>();
            for (int index = 0; index < count; ++index)
                names->push_back(statement.columnName(index));
        }
        std::vector<DatabaseValue> values;
        values.reserve(size_t(count));
        for (int index = 0; index < count; ++index)
            values.push_back(ownedValue(statement.column(index)));
        rows.push_back(Row(names, std::move(values)));
    });
    return rows;
}

ValueView Row::view(QByteArrayView column) const
{
    const auto found = std::ranges::find(*m_names, column);
    if (found == m_names->end())
        return {};
    return viewOf(m_values[size_t(found - m_names->begin())]);
}
