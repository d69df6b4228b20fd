#pragma once

#include <QStringView>
#include <QtGlobal>

/// Hashes for tables of terms. They depend on numbers drawn anew by every process, so that no text can be written
/// whose terms all fall into one place.
namespace TermHash {

struct Seeds {
    quint64 first = 0;
    quint64 second = 0;
};
[[nodiscard]] const Seeds &seeds();

/// Both halves of the product, folded: every bit of either factor reaches the low bits.
[[nodiscard]] inline quint64 mixed(quint64 a, quint64 b) noexcept
{
    __extension__ using Wide = unsigned __int128;
    const Wide product = Wide(a) * b;
    return quint64(product) ^ quint64(product >> 64);
}

[[nodiscard]] quint64 of(QStringView text);

} // namespace TermHash
