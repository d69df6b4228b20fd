#pragma once

#include <QLatin1StringView>
#include <QRandomGenerator>
#include <QStringView>
#include <QtGlobal>

#include <array>
#include <bit>
#include <utility>
#include <vector>

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

/// Counts terms that are small values: open addressing, the term inside its slot, so that a look-up touches one line of
/// memory. Even so most time would go into waiting for that line; terms are therefore gathered, and each one's slot is
/// asked for ahead.
///
/// A `Term` compares, has `hash(seeds)`, and `view()`: its text as a view into the term itself.
template <typename Term>
class PackedTermTable {
public:
    void add(const Term &term)
    {
        const quint64 hash = term.hash(m_seeds);
        __builtin_prefetch(&m_slots[hash & (m_slots.size() - 1)], 1);
        m_pending[m_pendingCount] = {term, hash};
        if (++m_pendingCount == m_pending.size())
            flush();
    }

    /// Counts what was gathered. Must be called before the counts are read.
    void flush()
    {
        for (std::size_t index = 0; index < m_pendingCount; ++index)
            count(m_pending[index]);
        m_pendingCount = 0;
    }

    /// Calls `visit` with the view of each term, valid until the next change, and its count.
    template <typename Visitor>
    void forEach(Visitor visit) const
    {
        for (const Slot &slot : m_slots) {
            if (slot.count != 0)
                visit(slot.term.view(), slot.count);
        }
    }

private:
    struct alignas(std::bit_ceil(sizeof(Term) + sizeof(qint64))) Slot {
        Term term;
        qint64 count = 0; ///< 0 for a free slot
    };
    struct Pending {
        Term term;
        quint64 hash;
    };

    void count(const Pending &pending)
    {
        std::size_t index = pending.hash & (m_slots.size() - 1);
        while (m_slots[index].count != 0 && m_slots[index].term != pending.term)
            index = (index + 1) & (m_slots.size() - 1);
        Slot &slot = m_slots[index];
        if (slot.count++ != 0)
            return;
        slot.term = pending.term;
        if (++m_used * 2 > m_slots.size())
            grow();
    }

    void grow()
    {
        const std::vector<Slot> old = std::exchange(m_slots, std::vector<Slot>(m_slots.size() * 2));
        for (const Slot &slot : old) {
            if (slot.count == 0)
                continue;
            std::size_t index = slot.term.hash(m_seeds) & (m_slots.size() - 1);
            while (m_slots[index].count != 0)
                index = (index + 1) & (m_slots.size() - 1);
            m_slots[index] = slot;
        }
    }

    std::vector<Slot> m_slots = std::vector<Slot>(4096); ///< a power of two; at most half of them are in use
    std::size_t m_used = 0;
    TermHash::Seeds m_seeds = TermHash::seeds();
    std::array<Pending, 32> m_pending;
    std::size_t m_pendingCount = 0;
};
