#include "analysis/WordFrequency.h"
#include "support/Cases.h"
#include "support/NastyText.h"
#include "support/PlainAnalysis.h"
#include "support/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using testing::ElementsAre;

namespace {

QStringList terms(const QString &text, qsizetype minLength, bool ignoreStopwords)
{
    QStringList result;
    for (const WordFrequency::Token &token : WordFrequency::tokens(text, minLength, ignoreStopwords))
        result.append(token.term);
    return result;
}

} // namespace

using TokensCase = Case<QString, QStringList>;
using Tokens = testing::TestWithParam<TokensCase>;
TEST_P(Tokens, SplitsATextIntoTerms)
{
    EXPECT_EQ(terms(GetParam().given, 3, true), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(WordFrequency, Tokens,
    testing::Values(TokensCase{"both_halves_of_dont_go", u"don't The THE thee"_s, {u"thee"_s}},
        TokensCase{"hyphen_and_underscore_split", u"co-working snake_case"_s, {u"working"_s, u"snake"_s, u"case"_s}},
        TokensCase{"letters_and_digits_are_one", u"COVID19 2024 42"_s, {u"covid19"_s, u"2024"_s}},
        TokensCase{"marks_dont_count_as_characters", u"e\u0301t e\u0301te"_s, {u"e\u0301te"_s}},
        TokensCase{"clusters_are_counted_after_lowering", u"\u0130x"_s, {}},
        TokensCase{"bigrams_overlap", u"研究方法，我，"_s, {u"研究"_s, u"究方"_s, u"方法"_s, u"我"_s}},
        TokensCase{"words_come_before_ideographs", u"研究ABC我"_s, {u"abc"_s, u"研究"_s, u"我"_s}},
        TokensCase{"ideograph_of_another_plane_splits", u"研\U00020000究"_s, {u"研"_s, u"究"_s}}),
    rowName);

TEST(WordFrequency, RangesCountUnitsOfTheText)
{
    EXPECT_THAT(WordFrequency::tokens(u"\U0001F468 Tools研究法"_s, 3, true),
        ElementsAre(WordFrequency::Token{u"tools"_s, {3, 5}}, WordFrequency::Token{u"研究"_s, {8, 2}},
            WordFrequency::Token{u"究法"_s, {9, 2}}));
}

TEST(WordFrequency, FindsInNastyTextsWhatThePlainWayFinds)
{
    NastyText nasty(4);
    for (int round = 0; round < 20'000; ++round) {
        const QString text = nasty.next(40);
        const int minLength = nasty.number(-1, 4);
        ASSERT_EQ(WordFrequency::tokens(text, minLength, round % 2 == 0),
            PlainAnalysis::tokens({text}, minLength, round % 2 == 0))
            << "round " << round;
    }
}

TEST(WordFrequency, SameTermsAreCanonicallyEquivalent)
{
    EXPECT_TRUE(WordFrequency::sameTerm(u"caf\u00E9", u"cafe\u0301"));
    EXPECT_TRUE(WordFrequency::sameTerm(u"\uFA6C", u"\U000242EE"));
    EXPECT_FALSE(WordFrequency::sameTerm(u"caf\u00E9", u"cafe"));
    EXPECT_FALSE(WordFrequency::sameTerm(u"ﬁ", u"fi")); // compatible, but not equivalent
}

TEST(WordFrequency, HasItsStopWords)
{
    EXPECT_EQ(WordFrequency::stopwords().size(), 136);
    for (const QString &word : {u"the"_s, u"number"_s, u"don"_s, u"they"_s})
        EXPECT_TRUE(WordFrequency::stopwords().contains(word)) << word.toStdString();
    EXPECT_FALSE(WordFrequency::stopwords().contains(u""_s));
}

TEST(WordFrequency, AContextReachesAsFarAsTheText)
{
    EXPECT_EQ(WordFrequency::contextOf({100, 5}, 1000), (TextRange{72, 123}));
    EXPECT_EQ(WordFrequency::contextOf({28, 5}, 1000), (TextRange{0, 123}));
    EXPECT_EQ(WordFrequency::contextOf({100, 5}, 110), (TextRange{72, 38}));
    EXPECT_EQ(WordFrequency::contextOf({0, 5}, 5), (TextRange{0, 5}));
}
