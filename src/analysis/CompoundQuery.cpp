#include "analysis/CompoundQuery.h"

#include "analysis/SaturatingArithmetic.h"
#include "analysis/TextSearch.h"
#include "records/TextTrimming.h"
#include "records/UuidSource.h"

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
    qint64 start = 0;
    qint64 end = 0;
};
using Stretches = std::vector<Stretch>;
using StretchesByCode = QHash<QUuid, Stretches>;

TextRange rangeOf(const Stretch &stretch)
{
    return {stretch.start, saturatingDistance(stretch.start, stretch.end)};
}

// Both must be united, and so is the result: stretches of either have gaps between them.
Stretches overlaps(const Stretches &some, const Stretches &others)
{
    Stretches result;
    for (auto one = some.begin(), other = others.begin(); one != some.end() && other != others.end();) {
        const Stretch shared{std::max(one->start, other->start), std::min(one->end, other->end)};
        if (shared.start < shared.end)
            result.push_back(shared);
        one->end < other->end ? ++one : ++other;
    }
    return result;
}

// Each code's stretches are united first. That gives the same as comparing every coding with every other: the longest
// stretches of units that every code covers.
std::vector<TextRange> sharedByAll(const auto &codings, const QList<QUuid> &codeIDs)
{
    StretchesByCode byCode;
    for (const Coding &coding : codings)
        byCode[coding.codeID].push_back(
            {coding.start, saturatingAdd(coding.start, std::max<qint64>(coding.length, 1))});
    Stretches shared;
    for (qsizetype index = 0; index < codeIDs.size(); ++index) {
        const Stretches stretches = united<&Stretch::start, &Stretch::end>(byCode.value(codeIDs[index]));
        shared = index == 0 ? stretches : overlaps(shared, stretches);
    }
    std::vector<TextRange> result(shared.size());
    std::ranges::transform(shared, result.begin(), rangeOf);
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
    for (const TextRange &range : sharedByAll(codings, codeIDs))
        result.push_back({range, codeIDs});
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
    return sharedByAll(codings, codeIDs);
}

QList<QueryResult> CompoundQuery::evaluate(
    const QuerySpec &spec, std::span<const Coding> codings, const QList<Document> &documents)
{
    const TextSearch filter(TextTrimming::trimmed(spec.textFilter));
    const std::vector<CodingReferences> chosen = chosenCodings(spec.codeIDs, codings, documents);
    const QUuid listID = QUuid::createUuid();
    QList<QueryResult> results;
    for (qsizetype index = 0; index < documents.size(); ++index) {
        const Document &document = documents[index];
        const CodingReferences &ofDocument = chosen[std::size_t(index)];
        for (const Passage &passage :
            spec.mode == QuerySpec::Mode::any ? passagesOfAny(ofDocument) : passagesOfAll(ofDocument, spec.codeIDs)) {
            const auto range = clamped(passage.range, document.text);
            if (range && filter.isIn(QStringView(document.text).sliced(range->location, range->length)))
                results.append({rowIdentity(listID, results.size()), document.id, document.title, *range,
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
