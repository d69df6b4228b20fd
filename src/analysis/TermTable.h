#pragma once

#include <QStringView>
#include <QtGlobal>

#include <string>
#include <vector>

/// Counts terms of any length and script: their texts lie one after the other in one buffer.
class TermTable {
public:
    TermTable();

    /// `term` is in composed form. Whether it consists of ideographs must be the same each time.
    void add(QStringView term, bool isIdeographic);

    /// Calls `visit` with each term as QStringView, valid until the next change, its length in grapheme clusters (no
    /// limit for ideographs, which are never too short) and its count.
    template <typename Visitor>
    void forEach(Visitor visit) const
    {
        for (const Entry &entry : m_entries)
            visit(textOf(entry), entry.clusters, entry.count);
    }

private:
    struct Entry {
        quint64 hash;
        std::size_t offset;
        std::size_t length;
        qint64 clusters;
        qint64 count;
    };
    /// 0 for a free slot, else one more than the place of the entry.
    using Slot = std::size_t;

    [[nodiscard]] QStringView textOf(const Entry &entry) const
    {
        return {m_texts.data() + entry.offset, qsizetype(entry.length)};
    }
    void grow();

    std::vector<Entry> m_entries;
    std::vector<Slot> m_slots; ///< a power of two; at most half of them are in use
    std::u16string m_texts;
};
