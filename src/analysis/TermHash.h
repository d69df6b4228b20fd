#pragma once

#include <QRandomGenerator>
#include <QtGlobal>

/// Hashes for tables of terms. They depend on numbers that each process draws anew, so that no text can be written
/// whose terms all collide.
namespace TermHash {

struct Seeds {
    quint64 first = 0;
    quint64 second = 0;
};
[[nodiscard]] inline const Seeds &seeds()
{
    static const Seeds drawn{QRandomGenerator::system()->generate64(), QRandomGenerator::system()->generate64()};
    return drawn;
}

/// The two halves of the product, combined: every bit of either factor reaches the low bits.
[[nodiscard]] inline quint64 mixed(quint64 a, quint64 b) noexcept
{
    __extension__ using Wide = unsigned __int128;
    const Wide product = Wide(a) * b;
    return quint64(product) ^ quint64(product >> 64);
}

} // namespace TermHash
