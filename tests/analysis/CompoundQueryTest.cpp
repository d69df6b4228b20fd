#include "analysis/CompoundQuery.h"
#include "records/TextTrimming.h"
#include "support/NastyText.h"
#include "support/PlainAnalysis.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

#include <limits>

using namespace Qt::StringLiterals;
using Mode = QuerySpec::Mode;

namespace {

constexpr qint64 highest = std::numeric_limits<qint64>::max();
constexpr qint64 lowest = std::numeric_limits<qint64>::min();

// Records are known by a number: each code, document and coding by its own.
QUuid idOf(uint number)
{
    return QUuid(number, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
}

QList<QUuid> idsOf(const QList<int> &numbers)
{
    QList<QUuid> ids;
    for (const int number : numbers)
        ids.append(idOf(uint(number)));
    return ids;
}

struct Coded {
    int code;
    TextRange range;
    uint document = 1;
};

std::vector<Coding> codings(const std::vector<Coded> &all)
{
    std::vector<Coding> result;
    for (const auto &[code, range, document] : all) {
        Coding coding;
        coding.documentID = idOf(document);
        coding.codeID = idOf(uint(code));
        coding.start = range.location;
        coding.length = range.length;
        result.push_back(coding);
    }
    return result;
}

Document document(uint number, const QString &text)
{
    Document result;
    result.id = idOf(number);
    result.title = u"Document %1"_s.arg(number);
    result.text = text;
    return result;
}

Code code(int number, const QString &name)
{
    Code result;
    result.id = idOf(uint(number));
    result.name = name;
    return result;
}

/// One that mostly lies within bounds.
qint64 anyPosition(NastyText &random, int from, int to)
{
    const int kind = random.number(1, 60);
    return kind == 1 ? highest - random.number(0, 2)
        : kind == 2  ? lowest + random.number(0, 2)
                     : random.number(from, to);
}

/// A result without what follows from the document.
struct Row {
    QUuid documentID;
    TextRange range;
    QList<QUuid> codeIDs;
    bool operator==(const Row &) const = default;
};

std::vector<Row> plainRows(const QuerySpec &spec, const std::vector<Coding> &codings, const QList<Document> &documents)
{
    const QString filter = TextTrimming::trimmed(spec.textFilter).toString();
    std::vector<Row> rows;
    for (const Document &document : documents) {
        std::vector<Coding> own;
        std::ranges::copy_if(codings, std::back_inserter(own), [&](const Coding &coding) {
            return coding.documentID == document.id && spec.codeIDs.contains(coding.codeID);
        });
        std::vector<Row> candidates;
        if (spec.mode == Mode::any) {
            std::ranges::stable_sort(own, {}, &Coding::start);
            for (const Coding &coding : own)
                candidates.push_back({document.id, coding.range(), {coding.codeID}});
        } else {
            for (const TextRange &range : PlainAnalysis::intersectCodings(own, spec.codeIDs))
                candidates.push_back({document.id, range, spec.codeIDs});
        }
        for (Row &row : candidates) {
            if (row.range.location < 0 || row.range.location >= document.text.size())
                continue;
            const qint64 room = document.text.size() - row.range.location;
            row.range.length = std::min(std::max<qint64>(row.range.length, 1), room);
            const QString passage = document.text.mid(row.range.location, row.range.length);
            if (PlainAnalysis::firstInLowered(passage, filter) >= 0)
                rows.push_back(row);
        }
    }
    return rows;
}

} // namespace

TEST(CompoundQuery, IntersectsAsComparingEveryPairDoes)
{
    NastyText random(11);
    const auto number = [&](int from, int to) { return random.number(from, to); };
    const auto position = [&](int from, int to) { return anyPosition(random, from, to); };
    int nonEmpty = 0;
    for (int round = 0; round < 15'000; ++round) {
        std::vector<Coded> coded;
        for (int count = number(0, 16); count > 0; --count) {
            coded.push_back({number(1, 3), {position(-2, 40), position(-1, 9)}});
            if (number(1, 3) == 1 && coded.back().range.location < 50) // one that touches it
                coded.push_back({coded.back().code, {number(0, 9) + coded.back().range.location, number(0, 5)}});
        }
        QList<int> codes{1, 2, 3};
        codes.swapItemsAt(number(0, 2), 0);
        codes.swapItemsAt(number(1, 2), 1);
        codes.resize(number(1, 3));
        if (number(1, 9) == 1)
            codes.append(codes.first());
        const auto expected = PlainAnalysis::intersectCodings(codings(coded), idsOf(codes));
        ASSERT_EQ(CompoundQuery::intersectCodings(codings(coded), idsOf(codes)), expected) << "round " << round;
        nonEmpty += !expected.empty();
    }
    EXPECT_GT(nonEmpty, 4'000);
}

TEST(CompoundQuery, FindsWhatLookingAtEachDocumentPlainlyFinds)
{
    NastyText random(12);
    int found = 0;
    for (int round = 0; round < 6'000; ++round) {
        QList<Document> documents;
        for (const uint number : {7U, 3U, 5U})
            documents.append(document(number, random.next(25)));
        std::vector<Coded> coded;
        for (int count = random.number(0, 12); count > 0; --count)
            coded.push_back({random.number(1, 3), {anyPosition(random, -2, 30), anyPosition(random, -1, 20)},
                documents.at(random.number(0, 2)).id.data1 + (random.onceIn(9) ? 1U : 0U)});
        QuerySpec spec;
        for (int count = random.number(0, 3); count > 0; --count)
            spec.codeIDs.append(idOf(uint(random.number(1, 3))));
        spec.mode = random.onceIn(2) ? Mode::any : Mode::all;
        spec.textFilter = random.onceIn(2) ? QString() : u" \n"_s + random.next(2) + u'\t';

        QSet<QUuid> ids;
        std::vector<Row> rows;
        for (const QueryResult &result : CompoundQuery::evaluate(spec, codings(coded), documents)) {
            ids.insert(result.id);
            const auto it = std::ranges::find(documents, result.documentID, &Document::id);
            ASSERT_EQ(result.documentTitle, it->title);
            ASSERT_EQ(result.snippet.toString(), it->text.mid(result.range.location, result.range.length));
            rows.push_back({result.documentID, result.range, result.codeIDs});
        }
        ASSERT_EQ(rows, plainRows(spec, codings(coded), documents)) << "round " << round;
        ASSERT_EQ(size_t(ids.size()), rows.size());
        found += int(rows.size());
    }
    EXPECT_GT(found, 2'000);
}

TEST(CompoundQuery, TakesNoTimeForPairs)
{
    // Comparing every pair would be ten thousand million comparisons.
    std::vector<Coded> coded;
    for (qint64 start = 0; start < 1'000'000; start += 10) {
        coded.push_back({1, {start, 6}});
        coded.push_back({2, {start + 5, 6}});
    }
    EXPECT_EQ(CompoundQuery::intersectCodings(codings(coded), idsOf({1, 2})).size(), 199'999U);
}

TEST(CompoundQuery, SumsAQueryUpInALine)
{
    const QList<Code> codes{code(1, u"Trust"_s), code(2, u"Doubt"_s)};
    EXPECT_EQ(CompoundQuery::summary({idsOf({2, 1}), Mode::all, u" Phone "_s}, codes),
        u"Doubt + Trust · overlapping passages · contains “Phone”"_s);
    EXPECT_EQ(CompoundQuery::summary({idsOf({1}), Mode::any, u" \n"_s}, codes), u"Trust · any mention"_s);
    EXPECT_EQ(CompoundQuery::summary({idsOf({9, 2}), Mode::any, {}}, codes), u"Doubt · any mention"_s);
}
