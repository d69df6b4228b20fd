#pragma once

#include "analysis/TermHash.h"

#include <QLatin1StringView>
#include <QStringView>
#include <QtGlobal>

#include <array>
#include <bit>

/// A word of one to 16 Latin-1 units, as nearly all words of Western languages are, packed into two registers.
struct ShortWord {
    static constexpr qsizetype maxLength = 16;

    quint64 low = 0; ///< the first eight units, the first one in the lowest byte; unused bytes are 0
    quint64 high = 0;
    quint32 length = 0;

    [[nodiscard]] quint64 hash(const TermHash::Seeds &seeds) const noexcept
    {
        return TermHash::mixed(low ^ seeds.first, high ^ seeds.second ^ length);
    }
    [[nodiscard]] QLatin1StringView view() const
    {
        static_assert(std::endian::native == std::endian::little, "the bytes of a packed word must read as text");
        return {reinterpret_cast<const char *>(&low), qsizetype(length)};
    }
    bool operator==(const ShortWord &) const = default;
};

/// Two neighbouring ideographs, or a single one.
struct Bigram {
    std::array<char16_t, 2> units = {}; ///< the second is 0 for a single ideograph

    /// `ideographs` has one or two units.
    [[nodiscard]] static Bigram from(QStringView ideographs)
    {
        return {{ideographs[0].unicode(), ideographs.size() == 2 ? ideographs[1].unicode() : char16_t(0)}};
    }
    [[nodiscard]] quint64 hash(const TermHash::Seeds &seeds) const noexcept
    {
        return TermHash::mixed((quint64(units[0]) << 16 | units[1]) ^ seeds.first, seeds.second);
    }
    [[nodiscard]] QStringView view() const { return {units.data(), units[1] == 0 ? 1 : 2}; }
    bool operator==(const Bigram &) const = default;
};
