#include "analysis/ListIdentity.h"

#include <QRandomGenerator64>

#include <array>
#include <bit>

QUuid ListIdentity::fresh()
{
    thread_local QRandomGenerator64 random = QRandomGenerator64::securelySeeded();
    const auto bytes = std::bit_cast<std::array<char, 16>>(std::array{random.generate(), random.generate()});
    QUuid id = QUuid::fromRfc4122(QByteArrayView(bytes.data(), qsizetype(bytes.size())));
    // Version 4 (random) of the usual variant, as the two fields have it.
    id.data3 = ushort((id.data3 & 0x0FFF) | 0x4000);
    id.data4[0] = uchar((id.data4[0] & 0x3F) | 0x80);
    return id;
}

QUuid ListIdentity::ofRow(const QUuid &list, qsizetype row)
{
    QUuid id = list;
    id.data1 ^= uint(row);
    id.data2 ^= ushort(quint64(row) >> 32); // more rows than 48 bits count don't fit into memory
    return id;
}
