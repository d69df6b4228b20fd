#include "analysis/ListIdentity.h"

#include "records/UuidSource.h"

QUuid ListIdentity::fresh()
{
    thread_local UuidSource source;
    return source.next();
}

QUuid ListIdentity::ofRow(const QUuid &list, qsizetype row)
{
    QUuid id = list;
    id.data1 ^= uint(row);
    id.data2 ^= ushort(quint64(row) >> 32); // more rows than 48 bits count don't fit into memory
    return id;
}
