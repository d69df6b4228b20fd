#include "exchange/UuidSource.h"

#include <algorithm>
#include <array>

QUuid UuidSource::next()
{
    std::array<uint, 4> random{};
    m_generator.fillRange(random.data(), qsizetype(random.size()));
    const auto byte = [&](size_t index) { return uchar(random[2 + index / 4] >> index % 4 * 8); };
    const auto version = ushort((random[1] & 0x0FFF) | 0x4000); // made of random bits
    const auto variant = uchar((byte(0) & 0x3F) | 0x80);
    return {random[0], ushort(random[1] >> 16), version, variant, byte(1), byte(2), byte(3), byte(4), byte(5), byte(6),
        byte(7)};
}

std::vector<QUuid> UuidSource::ascending(size_t count)
{
    std::vector<QUuid> result(count);
    std::ranges::generate(result, [this] { return next(); });
    std::ranges::sort(result, std::less<>()); // the order of the sixteen bytes, as all are of one variant
    return result;
}
