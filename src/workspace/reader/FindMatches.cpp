#include "workspace/reader/FindMatches.h"

#include "analysis/TextSearch.h"
#include "records/CharacterTable.h"

#include <algorithm>

namespace {

/// A lower-case copy of a text in which some characters change their length, with each unit's position in the original.
struct LoweredCopy {
    QString text;
    std::vector<qint64> origins; ///< the last one is the original's length

    explicit LoweredCopy(QStringView original)
    {
        for (qsizetype position = 0; position < original.size();) {
            const bool isPair = position + 1 < original.size() && original[position].isHighSurrogate()
                && original[position + 1].isLowSurrogate();
            const QString lowered = CharacterTable::lowered(original.sliced(position, isPair ? 2 : 1));
            origins.insert(origins.end(), size_t(lowered.size()), position);
            text += lowered;
            position += isPair ? 2 : 1;
        }
        origins.push_back(original.size());
    }
};

std::vector<TextRange> plainMatches(QStringView text, const TextSearch &search, qsizetype length)
{
    std::vector<TextRange> matches;
    for (qsizetype at = search.firstIn(text, 0); at >= 0; at = search.firstIn(text, at + length))
        matches.push_back({at, length});
    return matches;
}

} // namespace

std::vector<TextRange> FindMatches::in(QStringView text, QStringView needle)
{
    const QString lowered = CharacterTable::lowered(needle);
    if (lowered.isEmpty())
        return {};
    const TextSearch search(lowered);
    if (!TextSearch::needsLowering(text))
        return plainMatches(text, search, lowered.size());
    const LoweredCopy copy(text);
    std::vector<TextRange> matches;
    for (qsizetype at = copy.text.indexOf(lowered); at >= 0; at = copy.text.indexOf(lowered, at + lowered.size())) {
        const qint64 start = copy.origins[size_t(at)];
        const qint64 last = copy.origins[size_t(at + lowered.size() - 1)];
        const auto after = std::upper_bound(copy.origins.begin() + at, copy.origins.end(), last); // whole letters only
        matches.push_back({start, *after - start});
    }
    return matches;
}
