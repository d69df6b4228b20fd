#pragma once

#include "records/CharacterTable.h"
#include "records/TextRange.h"

#include <QStringView>
#include <QtGlobal>

#include <span>
#include <vector>

/// Walks the runs of a text: maximal stretches of units that all bear one trait. Templates, so that what is done with
/// a run is compiled into the walk.
namespace TextRuns {

struct Run {
    qsizetype start = 0;
    qsizetype end = 0;
    quint16 traits = 0; ///< those of all its units, united

    [[nodiscard]] qsizetype length() const noexcept { return end - start; }
};

/// Makes `run`, which ends within a run of units that bear `trait`, go on to the end of it.
inline void extend(Run &run, QStringView text, CharacterTable::Trait trait)
{
    const CharacterTable &table = CharacterTable::shared();
    const char16_t *const units = text.utf16();
    const qsizetype size = text.size();
    qsizetype end = run.end;
    quint16 traits = run.traits;
    for (; end < size && table[units[end]].has(trait); ++end)
        traits |= table[units[end]].traits;
    run.end = end;
    run.traits = traits;
}

/// Calls `visit` with each run of units that bear `trait`, in text order.
template <typename Visitor>
void forEach(QStringView text, CharacterTable::Trait trait, Visitor visit)
{
    const CharacterTable &table = CharacterTable::shared();
    const char16_t *const units = text.utf16();
    const qsizetype size = text.size();
    for (qsizetype position = 0; position < size;) {
        if (!table[units[position]].has(trait)) {
            ++position;
            continue;
        }
        Run run{position, position, 0};
        extend(run, text, trait);
        visit(run);
        position = run.end;
    }
}

/// Calls `visit` with each term in a run of ideographs of `text`: its overlapping pairs, or its only unit.
template <typename Visitor>
void forEachIdeographicTerm(const Run &run, QStringView text, Visitor visit)
{
    const CharacterTable &table = CharacterTable::shared();
    const auto traitsAt = [&](qsizetype position) { return table[text.utf16()[position]].traits; };
    if (run.length() == 1)
        visit(run);
    for (qsizetype start = run.start; start + 2 <= run.end; ++start)
        visit(Run{start, start + 2, quint16(traitsAt(start) | traitsAt(start + 1))});
}

} // namespace TextRuns

/// Tells of one token after the other whether it shares a unit with any of some passages.
class PassageCursor {
public:
    /// One passage: the whole text.
    explicit PassageCursor(qsizetype textLength);
    /// The passages may overlap, repeat, be empty and lie outside the text.
    PassageCursor(std::span<const TextRange> passages, qsizetype textLength);

    /// The tokens must come in the order of their starts: all calls together are one walk over the passages.
    [[nodiscard]] bool operator()(qsizetype start, qsizetype end);

private:
    struct Stretch {
        qint64 start;
        qint64 end;
    };
    std::vector<Stretch> m_covered; ///< apart from each other, ascending, within the text
    std::size_t m_next = 0;
};
