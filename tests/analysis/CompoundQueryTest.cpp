#include "analysis/CompoundQuery.h"
#include "records/TextTrimming.h"
#include "support/NastyText.h"
#include "support/PlainAnalysis.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using Mode = QuerySpec::Mode;

namespace {

/// Codes and documents are known by a number.
QUuid idOf(uint number)
{
    return QUuid(number, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
}

Coding coding(uint code, const TextRange &range, uint document)
{
    Coding result;
    result.documentID = idOf(document);
    result.codeID = idOf(code);
    result.start = range.location;
    result.length = range.length;
    return result;
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

TEST(CompoundQuery, FindsWhatLookingAtEachDocumentPlainlyFinds)
{
    NastyText random(12);
    int found = 0;
    for (int round = 0; round < 6'000; ++round) {
        QList<Document> documents;
        for (const uint number : {7U, 3U, 5U}) {
            Document document;
            document.id = idOf(number);
            document.title = QString::number(number);
            document.text = random.next(25);
            documents.append(document);
        }
        std::vector<Coding> codings;
        for (int count = random.number(0, 12); count > 0; --count)
            codings.push_back(coding(uint(random.number(1, 3)), {random.position(-2, 30), random.position(-1, 20)},
                documents.at(random.number(0, 2)).id.data1 + (random.onceIn(9) ? 1U : 0U)));
        QuerySpec spec;
        for (int count = random.number(0, 3); count > 0; --count)
            spec.codeIDs.append(idOf(uint(random.number(1, 3))));
        spec.mode = random.onceIn(2) ? Mode::any : Mode::all;
        spec.textFilter = random.onceIn(2) ? QString() : u" \n"_s + random.next(2) + u'\t';

        QSet<QUuid> ids;
        std::vector<Row> rows;
        for (const QueryResult &result : CompoundQuery::evaluate(spec, codings, documents)) {
            ids.insert(result.id);
            const auto it = std::ranges::find(documents, result.documentID, &Document::id);
            ASSERT_EQ(result.documentTitle, it->title);
            ASSERT_EQ(result.snippet.toString(), it->text.mid(result.range.location, result.range.length));
            rows.push_back({result.documentID, result.range, result.codeIDs});
        }
        ASSERT_EQ(rows, plainRows(spec, codings, documents)) << "round " << round;
        ASSERT_EQ(size_t(ids.size()), rows.size());
        found += int(rows.size());
    }
    EXPECT_GT(found, 2'000);
}

TEST(CompoundQuery, SumsAQueryUpInALine)
{
    QList<Code> codes(2);
    codes[0].id = idOf(1);
    codes[0].name = u"Trust"_s;
    codes[1].id = idOf(2);
    codes[1].name = u"Doubt"_s;
    EXPECT_EQ(CompoundQuery::summary({{idOf(2), idOf(1)}, Mode::all, u" Phone "_s}, codes),
        u"Doubt + Trust · overlapping passages · contains “Phone”"_s);
    EXPECT_EQ(CompoundQuery::summary({{idOf(9), idOf(1)}, Mode::any, u" \n"_s}, codes), u"Trust · any mention"_s);
}
