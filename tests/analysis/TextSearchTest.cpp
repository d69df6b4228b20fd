#include "analysis/TextSearch.h"
#include "records/CharacterTable.h"
#include "support/Cases.h"
#include "support/NastyText.h"
#include "support/PlainAnalysis.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

struct SearchCase {
    const char *name;
    QString text;
    QString needle;
    bool isIn;
};
using Search = testing::TestWithParam<SearchCase>;
TEST_P(Search, IgnoresCaseAndNothingElse)
{
    const SearchCase &row = GetParam();
    const TextSearch search(row.needle);
    EXPECT_EQ(search.isIn(row.text), row.isIn);
    EXPECT_EQ(search.isInLowered(row.text, 1), row.isIn);
    const QString filler(50, u'-');
    EXPECT_EQ(search.isIn(filler + row.text + filler), row.isIn);
}
INSTANTIATE_TEST_SUITE_P(TextSearch, Search,
    testing::Values(SearchCase{"empty_needle", u"text"_s, u""_s, true},
        SearchCase{"empty_needle_in_empty_text", u""_s, u""_s, true},
        SearchCase{"marks_matter", u"café"_s, u"cafe"_s, false},
        SearchCase{"composition_matters", u"cafe\u0301"_s, u"café"_s, false},
        SearchCase{"final_sigma_is_another_letter", u"ΟΔΟΣ"_s, u"οδος"_s, false},
        SearchCase{"dotted_capital_i_in_the_needle", u"i\u0307stanbul"_s, u"\u0130STANBUL"_s, true},
        SearchCase{"part_of_dotted_capital_i", u"A\u0130B"_s, u"ai"_s, true},
        SearchCase{"half_of_a_lowered_letter", u"\U00010400"_s, u"\xDC00"_s, false}),
    rowName);

struct LoweringCase {
    const char *name;
    QString text;
    bool needsLowering;
};
using Lowering = testing::TestWithParam<LoweringCase>;
TEST_P(Lowering, IsForTextsThatLowerBeyondSingleUnits)
{
    const LoweringCase &row = GetParam();
    for (const int before : {0, 15, 16, 31}) {
        const QString text = QString(before, u'x') + row.text + QString(20, u'y');
        EXPECT_EQ(TextSearch::needsLowering(text), row.needsLowering) << before;
        EXPECT_EQ(TextSearch::needsLowering<PlainUnitBlock>(text), row.needsLowering) << before;
    }
    EXPECT_EQ(TextSearch::needsLowering(row.text), row.needsLowering);
}
INSTANTIATE_TEST_SUITE_P(TextSearch, Lowering,
    testing::Values(LoweringCase{"capital_of_another_plane", u"\U00010400"_s, true},
        LoweringCase{"small_letter_of_another_plane", u"\U00010428"_s, false},
        LoweringCase{"dotted_capital_i", u"\u0130"_s, true}, LoweringCase{"halves", u"\xDC00\xD801"_s, false}),
    rowName);

TEST(TextSearch, FindsInNastyTextsWhatThePlainWayFinds)
{
    NastyText nasty(9);
    for (int round = 0; round < 10'000; ++round) {
        const QString text = nasty.next(60);
        const int start = nasty.number(0, int(text.size()));
        const QString needle = nasty.onceIn(4) ? nasty.next(3) : text.mid(start, nasty.number(0, 20)).toUpper();
        const bool isIn = PlainAnalysis::firstInLowered(text, needle) >= 0;
        const TextSearch search(needle);
        ASSERT_EQ(search.isIn(text), isIn) << "round " << round;
        ASSERT_EQ(search.isInLowered(text, nasty.number(1, 8)), isIn) << "round " << round;
        if (TextSearch::needsLowering(text))
            continue;
        const qsizetype first = PlainAnalysis::firstInLowered(text, needle, start);
        ASSERT_EQ(search.firstIn(text, start), first) << "round " << round;
        ASSERT_EQ(search.firstIn<PlainUnitBlock>(text, start), first) << "round " << round;
    }
}

TEST(TextSearch, FindsAmongManyThatNearlyMatch)
{
    // Few letters: nearly every place begins and ends like the search text, until patience is lost.
    NastyText random(10);
    const auto letters = [&](int count) {
        QString text;
        for (; count > 0; --count)
            text += random.onceIn(9) ? u'B' : u'a';
        return text;
    };
    for (int round = 0; round < 300; ++round) {
        const QString text = letters(20'000);
        const int start = random.number(0, 19'000);
        const QString needle =
            random.onceIn(2) ? text.mid(start, random.number(1, 400)) : letters(random.number(1, 60));
        const TextSearch search(needle);
        const int from = random.number(-5, 20'010);
        const qsizetype first = from > 20'000 ? -1 : PlainAnalysis::firstInLowered(text, needle, std::max(from, 0));
        ASSERT_EQ(search.firstIn(text, from), first) << "round " << round;
        ASSERT_EQ(search.firstIn<PlainUnitBlock>(text, from), first) << "round " << round;
    }
}

TEST(TextSearch, TakesTimeForTheTextAloneNotForTheNeedleToo)
{
    // Comparing the whole search text at every place would take an hour.
    const QString needle = QString(500'000, u'a') + u'b' + QString(500'000, u'a');
    const QString text = QString(3'000'000, u'A');
    EXPECT_EQ(TextSearch(needle).firstIn(text, 0), -1);
    EXPECT_EQ(TextSearch(needle).firstIn(text + needle, 0), 3'000'000);
}

TEST(TextSearch, ContinuesFromAnyPlace)
{
    const TextSearch search(u"ab");
    const QString text = u"abxAB"_s;
    EXPECT_EQ(search.firstIn(text, -7), 0);
    EXPECT_EQ(search.firstIn(text, 1), 3);
    EXPECT_EQ(search.firstIn(text, 4), -1);
    EXPECT_EQ(search.firstIn(text, 99), -1);
    EXPECT_EQ(TextSearch(u"").firstIn(text, 5), 5);
    EXPECT_EQ(TextSearch(u"").firstIn(text, 6), -1);
}
