#include "analysis/CompoundQuery.h"
#include "support/Cases.h"
#include "support/NastyText.h"
#include "support/PlainAnalysis.h"
#include "support/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;
using Mode = QuerySpec::Mode;

namespace {

constexpr qint64 highest = std::numeric_limits<qint64>::max();
constexpr qint64 lowest = std::numeric_limits<qint64>::min();

// Records are known by a number: each code, document and coding by its own.
QUuid idOf(int number)
{
    return QUuid(uint(number), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
}

QList<QUuid> idsOf(const QList<int> &numbers)
{
    QList<QUuid> ids;
    for (const int number : numbers)
        ids.append(idOf(number));
    return ids;
}

struct Coded {
    int code;
    TextRange range;
    int document = 1;
};

std::vector<Coding> codings(const std::vector<Coded> &all)
{
    std::vector<Coding> result;
    for (const auto &[code, range, document] : all) {
        Coding coding;
        coding.documentID = idOf(document);
        coding.codeID = idOf(code);
        coding.start = range.location;
        coding.length = range.length;
        result.push_back(coding);
    }
    return result;
}

Document document(int number, const QString &text)
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
    result.id = idOf(number);
    result.name = name;
    return result;
}

/// A result without what is always the same about it.
struct Row {
    int document;
    TextRange range;
    QList<QUuid> codeIDs;
    bool operator==(const Row &) const = default;
};

std::vector<Row> rows(const QuerySpec &spec, const std::vector<Coded> &coded, const QList<Document> &documents)
{
    std::vector<Row> result;
    for (const QueryResult &found : CompoundQuery::evaluate(spec, codings(coded), documents))
        result.push_back({int(found.documentID.data1), found.range, found.codeIDs});
    return result;
}

} // namespace

struct IntersectionCase {
    const char *name;
    std::vector<Coded> coded;
    QList<int> codes;
    std::vector<TextRange> shared;
};
using Intersection = testing::TestWithParam<IntersectionCase>;
TEST_P(Intersection, IsWhereAllCodesApply)
{
    const IntersectionCase &row = GetParam();
    EXPECT_EQ(CompoundQuery::intersectCodings(codings(row.coded), idsOf(row.codes)), row.shared);
    EXPECT_EQ(PlainAnalysis::intersectCodings(codings(row.coded), idsOf(row.codes)), row.shared);
}
INSTANTIATE_TEST_SUITE_P(CompoundQuery, Intersection,
    testing::Values(IntersectionCase{"touching_is_not_overlapping", {{1, {0, 10}}, {2, {10, 10}}}, {1, 2}, {}},
        IntersectionCase{"pieces_that_touch_are_one", {{1, {0, 10}}, {1, {10, 10}}, {2, {0, 20}}}, {1, 2}, {{0, 20}}},
        IntersectionCase{"no_length_covers_one_unit", {{1, {5, 0}}, {2, {0, 10}}}, {1, 2}, {{5, 1}}},
        IntersectionCase{
            "length_that_cannot_be_counted", {{1, {lowest, highest}}, {1, {-2, highest}}}, {1}, {{lowest, highest}}},
        IntersectionCase{"no_codes", {{1, {0, 10}}}, {}, {}}),
    rowName);

TEST(CompoundQuery, IntersectsAsComparingEveryPairDoes)
{
    NastyText random(11);
    const auto number = [&](int from, int to) { return random.number(from, to); };
    const auto position = [&](int from, int to) -> qint64 {
        const int kind = number(1, 60);
        return kind == 1 ? highest - number(0, 2) : kind == 2 ? lowest + number(0, 2) : number(from, to);
    };
    int nonEmpty = 0;
    for (int round = 0; round < 40'000; ++round) {
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
    EXPECT_GT(nonEmpty, 10'000);
}

TEST(CompoundQuery, AnyGivesARowForEachCodingWithoutMerging)
{
    const QList<Document> documents{document(1, u"0123456789"_s)};
    EXPECT_THAT(rows({idsOf({1, 2})}, {{2, {4, 3}}, {1, {4, 3}}, {1, {2, 3}}, {1, {2, 3}}, {3, {0, 9}}}, documents),
        ElementsAre(Row{1, {2, 3}, idsOf({1})}, Row{1, {2, 3}, idsOf({1})}, Row{1, {4, 3}, idsOf({2})},
            Row{1, {4, 3}, idsOf({1})}));
}

TEST(CompoundQuery, AllGivesItsRowsAllCodesInTheOrderAsked)
{
    const QList<Document> documents{document(1, u"0123456789"_s), document(2, u"0123456789"_s)};
    const std::vector<Coded> coded{{1, {0, 5}}, {2, {3, 5}}, {1, {0, 5}, 2}, {3, {0, 9}, 2}};
    EXPECT_THAT(rows({idsOf({2, 1}), Mode::all}, coded, documents), ElementsAre(Row{1, {3, 2}, idsOf({2, 1})}));
}

TEST(CompoundQuery, SortsByTheOrderOfDocumentsAndThenByLocation)
{
    const QList<Document> documents{document(7, u"0123456789"_s), document(3, u"0123456789"_s)};
    const std::vector<Coded> coded{{1, {8, 1}, 3}, {1, {5, 1}, 7}, {1, {0, 1}, 3}, {1, {2, 1}, 7}, {1, {0, 1}, 99}};
    for (const Mode mode : QuerySpec::modes()) {
        EXPECT_THAT(rows({idsOf({1}), mode}, coded, documents),
            ElementsAre(Row{7, {2, 1}, idsOf({1})}, Row{7, {5, 1}, idsOf({1})}, Row{3, {0, 1}, idsOf({1})},
                Row{3, {8, 1}, idsOf({1})}));
    }
}

using ClampingCase = Case<TextRange, std::vector<TextRange>>;
using Clamping = testing::TestWithParam<ClampingCase>;
TEST_P(Clamping, KeepsPassagesInTheText)
{
    const QList<Document> documents{document(1, u"0123456789"_s)};
    for (const Mode mode : QuerySpec::modes()) {
        std::vector<TextRange> found;
        for (const Row &row : rows({idsOf({1}), mode}, {{1, GetParam().given}}, documents))
            found.push_back(row.range);
        EXPECT_EQ(found, GetParam().expected) << QuerySpec::label(mode).toStdString();
    }
}
INSTANTIATE_TEST_SUITE_P(CompoundQuery, Clamping,
    testing::Values(ClampingCase{"inside", {2, 3}, {{2, 3}}}, ClampingCase{"no_length", {2, 0}, {{2, 1}}},
        ClampingCase{"negative_length", {2, -5}, {{2, 1}}}, ClampingCase{"beyond_the_end", {8, 5}, {{8, 2}}},
        ClampingCase{"starts_at_the_end", {10, 1}, {}}, ClampingCase{"starts_before_the_text", {-1, 5}, {}},
        ClampingCase{"end_that_cannot_be_counted", {3, highest}, {{3, 7}}},
        ClampingCase{"highest_start", {highest, highest}, {}}, ClampingCase{"lowest_start", {lowest, highest}, {}}),
    rowName);

TEST(CompoundQuery, TakesTheWholePassageAsItStands)
{
    const QString text = u"  Line\n\U0001F468 end"_s;
    const QList<QueryResult> results =
        CompoundQuery::evaluate({idsOf({1})}, codings({{1, {0, 9}}, {1, {1, 99}}}), {document(1, text)});
    ASSERT_EQ(results.size(), 2);
    EXPECT_EQ(results[0].snippet.toString(), u"  Line\n\U0001F468"_s);
    EXPECT_EQ(results[1].snippet.toString(), text.mid(1));
    EXPECT_EQ(results[0].documentTitle, u"Document 1"_s);
    EXPECT_NE(results[0].id, results[1].id);
}

using FilterCase = Case<QString, std::vector<TextRange>>;
using Filter = testing::TestWithParam<FilterCase>;
TEST_P(Filter, LooksAtThePassageAlone)
{
    const QList<Document> documents{document(1, u"my Phone rings in the café of \u0130zmir"_s)};
    std::vector<TextRange> found;
    for (const Row &row : rows({idsOf({1, 2}), Mode::all, GetParam().given},
             {{1, {0, 14}}, {2, {3, 20}}, {1, {22, 15}}, {2, {18, 40}}}, documents))
        found.push_back(row.range);
    EXPECT_EQ(found, GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(CompoundQuery, Filter,
    testing::Values(FilterCase{"none", u""_s, {{3, 11}, {22, 13}}},
        FilterCase{"blanks_are_none", u" \n\t"_s, {{3, 11}, {22, 13}}},
        FilterCase{"case_is_folded", u"PHONE"_s, {{3, 11}}},
        FilterCase{"surrounding_blanks_go", u"  phone\n"_s, {{3, 11}}},
        FilterCase{"inner_blanks_stay", u"phone  rings"_s, {}}, FilterCase{"text_outside_the_overlap", u"my"_s, {}},
        FilterCase{"marks_matter", u"cafe"_s, {}}, FilterCase{"marks", u"CAFÉ"_s, {{22, 13}}},
        FilterCase{"dotted_capital_i", u"i\u0307zmir"_s, {{22, 13}}}),
    rowName);

TEST(CompoundQuery, FindsNothingWithoutCodes)
{
    EXPECT_THAT(rows({{}, Mode::any}, {{1, {0, 1}}}, {document(1, u"text"_s)}), IsEmpty());
    EXPECT_THAT(rows({{}, Mode::all}, {{1, {0, 1}}}, {document(1, u"text"_s)}), IsEmpty());
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
