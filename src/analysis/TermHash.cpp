#include "analysis/TermHash.h"

#include <QRandomGenerator>

#include <algorithm>
#include <cstring>

const TermHash::Seeds &TermHash::seeds()
{
    static const Seeds drawn{QRandomGenerator::system()->generate64(), QRandomGenerator::system()->generate64()};
    return drawn;
}

quint64 TermHash::of(QStringView text)
{
    const auto &[first, second] = seeds();
    constexpr qsizetype unitsAtOnce = sizeof(quint64) / sizeof(char16_t);
    quint64 hash = first ^ quint64(text.size());
    for (qsizetype position = 0; position < text.size(); position += unitsAtOnce) {
        quint64 chunk = 0;
        const qsizetype units = std::min(unitsAtOnce, text.size() - position);
        std::memcpy(&chunk, text.utf16() + position, std::size_t(units) * sizeof(char16_t));
        hash = mixed(hash ^ chunk, second);
    }
    return hash;
}
