#include "analysis/TermTable.h"

#include "analysis/PackedTermTable.h"
#include "records/TextStats.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace {

constexpr std::size_t initialSlots = 4096;

quint64 hashOf(QStringView text)
{
    const auto &[first, second] = TermHash::seeds();
    constexpr qsizetype unitsAtOnce = sizeof(quint64) / sizeof(char16_t);
    quint64 hash = first ^ quint64(text.size());
    for (qsizetype position = 0; position < text.size(); position += unitsAtOnce) {
        quint64 chunk = 0;
        const qsizetype units = std::min(unitsAtOnce, text.size() - position);
        std::memcpy(&chunk, text.utf16() + position, std::size_t(units) * sizeof(char16_t));
        hash = TermHash::mixed(hash ^ chunk, second);
    }
    return hash;
}

} // namespace

TermTable::TermTable() : m_slots(initialSlots)
{
}

void TermTable::add(QStringView term, bool isIdeographic)
{
    const quint64 hash = hashOf(term);
    std::size_t index = hash & (m_slots.size() - 1);
    for (; m_slots[index] != 0; index = (index + 1) & (m_slots.size() - 1)) {
        Entry &entry = m_entries[m_slots[index] - 1];
        if (entry.hash == hash && textOf(entry) == term) {
            ++entry.count;
            return;
        }
    }
    // The composed form has as many grapheme clusters as any other spelling of the word.
    const qint64 clusters = isIdeographic ? std::numeric_limits<qint64>::max() : TextStats::characterCount(term);
    m_entries.push_back({hash, m_texts.size(), std::size_t(term.size()), clusters, 1});
    m_texts.append(term.utf16(), std::size_t(term.size()));
    m_slots[index] = m_entries.size();
    if (m_entries.size() * 2 > m_slots.size())
        grow();
}

void TermTable::grow()
{
    m_slots.assign(m_slots.size() * 2, 0);
    for (std::size_t place = 0; place < m_entries.size(); ++place) {
        std::size_t index = m_entries[place].hash & (m_slots.size() - 1);
        while (m_slots[index] != 0)
            index = (index + 1) & (m_slots.size() - 1);
        m_slots[index] = place + 1;
    }
}
