#pragma once

#include <QRandomGenerator>
#include <QUuid>

#include <vector>

/// Random identifiers in large numbers: QUuid::createUuid asks the system for each one, which takes longer than
/// anything else that is done with it.
class UuidSource {
public:
    [[nodiscard]] QUuid next();
    /// `count` identifiers in ascending order: inserting rows in the order of their keys is twice as fast.
    [[nodiscard]] std::vector<QUuid> ascending(size_t count);

private:
    QRandomGenerator m_generator = QRandomGenerator::securelySeeded();
};

/// The identifier of a row in a list that has one identifier as a whole: another for each row, the same at each call.
/// Asking the system for one per row takes longer than finding the rows.
[[nodiscard]] inline QUuid rowIdentity(const QUuid &list, qsizetype row)
{
    QUuid id = list;
    id.data1 ^= uint(row);
    id.data2 ^= ushort(quint64(row) >> 32); // a list of more than 2^48 rows doesn't fit into memory
    return id;
}
