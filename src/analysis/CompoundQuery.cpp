#include "analysis/CompoundQuery.h"

#include "analysis/ListIdentity.h"
#include "analysis/SaturatingArithmetic.h"
#include "analysis/TextSearch.h"
#include "records/TextTrimming.h"

#include <QHash>
#include <QSet>
#include <QStringList>

#include <algorithm>
#include <functional>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

/// A range by its ends, so that even the absurd ones of a foreign file can be compared.
struct Stretch {
    qint64 lower = 0;
    qint64 upper = 0; ///< behind the last unit

    [[nodiscard]] TextRange range() const { return {lower, saturatingDistance(lower, upper)}; }
};
using Stretches = std::vector<Stretch>;
using StretchesByCode = QHash<QUuid, Stretches>;

Stretch stretchOf(const Coding &coding)
{
    return {coding.start, saturatingAdd(coding.start, std::max<qint64>(coding.length, 1))};
}

// Both must be united, and so is the result: stretches of either have gaps between them.
Stretches overlaps(const Stretches &some, const Stretches &others)
{
    Stretches result;
    for (auto one = some.begin(), other = others.begin(); one != some.end() && other != others.end();) {
        const Stretch shared{std::max(one->lower, other->lower), std::min(one->upper, other->upper)};
        if (shared.lower < shared.upper)
            result.push_back(shared);
        one->upper < other->upper ? ++one : ++other;
    }
    return result;
}

// Uniting each code's stretches first gives the same as comparing every coding with every other and uniting what they
// share: both are the maximal stretches of the units that every code covers.
Stretches sharedByAll(const StretchesByCode &byCode, const QList<QUuid> &codeIDs)
{
    std::optional<Stretches> shared;
    for (const QUuid &codeID : codeIDs) {
        const Stretches stretches = united<&Stretch::lower, &Stretch::upper>(byCode.value(codeID));
        shared = shared ? overlaps(*shared, stretches) : stretches;
        if (shared->empty())
            break;
    }
    return shared.value_or(Stretches());
}

StretchesByCode stretchesByCode(const auto &codings)
{
    StretchesByCode result;
    for (const Coding &coding : codings)
        result[coding.codeID].push_back(stretchOf(coding));
    return result;
}

/// A result before its document was looked at.
struct Passage {
    TextRange range;
    QList<QUuid> codeIDs;
};
using CodingReferences = std::vector<std::reference_wrapper<const Coding>>;

std::vector<Passage> passagesOfAny(CodingReferences codings)
{
    std::ranges::stable_sort(codings, {}, &Coding::start);
    std::vector<Passage> result;
    result.reserve(codings.size());
    for (const Coding &coding : codings)
        result.push_back({coding.range(), {coding.codeID}});
    return result;
}

std::vector<Passage> passagesOfAll(const CodingReferences &codings, const QList<QUuid> &codeIDs)
{
    std::vector<Passage> result;
    for (const Stretch &stretch : sharedByAll(stretchesByCode(codings), codeIDs))
        result.push_back({stretch.range(), codeIDs});
    return result;
}

// For each document, its codings with one of the codes, in their given order.
std::vector<CodingReferences> chosenCodings(
    const QList<QUuid> &codeIDs, std::span<const Coding> codings, const QList<Document> &documents)
{
    const QSet<QUuid> chosenCodes(codeIDs.begin(), codeIDs.end());
    QHash<QUuid, std::size_t> positions;
    for (qsizetype index = documents.size() - 1; index >= 0; --index)
        positions.insert(documents[index].id, std::size_t(index)); // of several with one id, the first counts
    std::vector<CodingReferences> result(std::size_t(documents.size()));
    for (const Coding &coding : codings) {
        const auto position = positions.constFind(coding.documentID);
        if (position != positions.constEnd() && chosenCodes.contains(coding.codeID))
            result[*position].push_back(coding);
    }
    return result;
}

// Absent when `range` doesn't start in the text.
std::optional<TextRange> clamped(const TextRange &range, QStringView text)
{
    if (range.location < 0 || range.location >= text.size())
        return {};
    return TextRange{range.location, std::clamp<qint64>(range.length, 1, text.size() - range.location)};
}

} // namespace

std::vector<TextRange> CompoundQuery::intersectCodings(std::span<const Coding> codings, const QList<QUuid> &codeIDs)
{
    std::vector<TextRange> result;
    for (const Stretch &stretch : sharedByAll(stretchesByCode(codings), codeIDs))
        result.push_back(stretch.range());
    return result;
}

QList<QueryResult> CompoundQuery::evaluate(
    const QuerySpec &spec, std::span<const Coding> codings, const QList<Document> &documents)
{
    const TextSearch filter(TextTrimming::trimmed(spec.textFilter));
    const std::vector<CodingReferences> chosen = chosenCodings(spec.codeIDs, codings, documents);
    QList<QueryResult> results;
    for (qsizetype index = 0; index < documents.size(); ++index) {
        const Document &document = documents[index];
        const CodingReferences &ofDocument = chosen[std::size_t(index)];
        for (const Passage &passage :
            spec.mode == QuerySpec::Mode::any ? passagesOfAny(ofDocument) : passagesOfAll(ofDocument, spec.codeIDs)) {
            const auto range = clamped(passage.range, document.text);
            if (range && filter.isIn(QStringView(document.text).sliced(range->location, range->length)))
                results.append({ListIdentity::fresh(), document.id, document.title, *range,
                    Snippet(document.text, *range), passage.codeIDs});
        }
    }
    return results;
}

QString CompoundQuery::summary(const QuerySpec &spec, const QList<Code> &codes)
{
    QHash<QUuid, QString> nameOf;
    for (const Code &code : codes)
        nameOf.insert(code.id, code.name);
    QStringList names;
    for (const QUuid &codeID : spec.codeIDs) {
        if (const auto name = nameOf.constFind(codeID); name != nameOf.constEnd())
            names.append(*name);
    }
    QStringList parts{names.join(u" + "_s)};
    parts.append(spec.mode == QuerySpec::Mode::all ? u"overlapping passages"_s : u"any mention"_s);
    const QStringView filter = TextTrimming::trimmed(spec.textFilter);
    if (!filter.isEmpty())
        parts.append(u"contains “"_s + filter.toString() + u'”');
    return parts.join(u" · "_s);
}
