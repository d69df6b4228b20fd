#include "records/UuidSource.h"

#include <algorithm>
#include <array>
#include <bit>

QUuid UuidSource::next()
{
    std::array<quint32, 4> random{};
    m_generator.fillRange(random.data(), qsizetype(random.size()));
    auto bytes = std::bit_cast<std::array<uchar, 16>>(random);
    bytes[6] = uchar((bytes[6] & 0x0F) | 0x40); // the version: random
    bytes[8] = uchar((bytes[8] & 0x3F) | 0x80); // the variant
    return QUuid::fromRfc4122(bytes);
}

std::vector<QUuid> UuidSource::ascending(size_t count)
{
    std::vector<QUuid> result(count);
    std::ranges::generate(result, [this] { return next(); });
    std::ranges::sort(result, std::less<>()); // by their sixteen bytes, as all have the same variant
    return result;
}
