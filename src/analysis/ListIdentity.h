#pragma once

#include <QUuid>

/// The identifier of a row in a list that has one identifier as a whole: another for each row, the same at each call.
/// Asking the system for one per row takes longer than finding the rows.
[[nodiscard]] inline QUuid rowIdentity(const QUuid &list, qsizetype row)
{
    QUuid id = list;
    id.data1 ^= uint(row);
    id.data2 ^= ushort(quint64(row) >> 32); // a list of more than 2^48 rows doesn't fit into memory
    return id;
}
