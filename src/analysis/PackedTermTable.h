#pragma once

#include "analysis/TermHash.h"

#include <array>
#include <bit>
#include <utility>
#include <vector>

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
