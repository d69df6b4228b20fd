#include "analysis/WordFrequency.h"
#include "support/NastyText.h"
#include "support/PlainAnalysis.h"
#include "support/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using testing::ElementsAre;

namespace {

QStringList terms(const QString &text, qsizetype minLength = 1, bool ignoreStopwords = false)
{
    QStringList result;
    for (const WordFrequency::Token &token : WordFrequency::tokens(text, minLength, ignoreStopwords))
        result.append(token.term);
    return result;
}

} // namespace

struct TokensCase {
    const char *name;
    QString text;
    QStringList terms;
    qsizetype minLength = 1;
    bool ignoreStopwords = false;
};
class Tokens : public testing::TestWithParam<TokensCase> { };
TEST_P(Tokens, SplitsATextIntoTerms)
{
    const TokensCase &row = GetParam();
    EXPECT_EQ(terms(row.text, row.minLength, row.ignoreStopwords), row.terms);
}
INSTANTIATE_TEST_SUITE_P(WordFrequency, Tokens,
    testing::Values(TokensCase{"empty", u""_s, {}}, TokensCase{"punctuation_alone", u"…, -- !"_s, {}},
        TokensCase{"apostrophe_splits", u"don't"_s, {u"don"_s, u"t"_s}},
        TokensCase{"both_halves_of_dont_go", u"don't"_s, {}, 3, true},
        TokensCase{"hyphen_splits", u"co-working"_s, {u"co"_s, u"working"_s}},
        TokensCase{"underscore_splits", u"snake_case"_s, {u"snake"_s, u"case"_s}},
        TokensCase{"letters_and_digits_are_one", u"covid19"_s, {u"covid19"_s}},
        TokensCase{"number_too_short", u"2024 42"_s, {u"2024"_s}, 3},
        TokensCase{"number_long_enough", u"42"_s, {u"42"_s}, 2},
        TokensCase{"case_is_folded", u"Tools TOOLS"_s, {u"tools"_s, u"tools"_s}},
        TokensCase{"stop_words_in_any_case", u"The THE thee"_s, {u"thee"_s}, 1, true},
        TokensCase{"stop_words_stay_unless_ignored", u"the"_s, {u"the"_s}},
        TokensCase{"marks_dont_count_as_characters", u"e\u0301t e\u0301te"_s, {u"e\u0301te"_s}, 3},
        TokensCase{"clusters_are_counted_after_lowering", u"\u0130x"_s, {}, 3},
        TokensCase{"bigrams_overlap", u"研究方法"_s, {u"研究"_s, u"究方"_s, u"方法"_s}, 9, true},
        TokensCase{"single_ideograph", u"，我，"_s, {u"我"_s}, 9, true},
        TokensCase{"words_come_before_ideographs", u"研究AI我"_s, {u"ai"_s, u"研究"_s, u"我"_s}, 2},
        TokensCase{"kana_and_hangul_are_words", u"カタ 한국 研"_s, {u"カタ"_s, u"한국"_s, u"研"_s}},
        TokensCase{"emoji_splits", u"ab\U0001F468cd"_s, {u"ab"_s, u"cd"_s}},
        TokensCase{
            "ideograph_of_another_plane_splits", u"研\U00020000究a\U00020000b"_s, {u"a"_s, u"b"_s, u"研"_s, u"究"_s}},
        TokensCase{"letter_of_another_plane_splits", u"a\U00010400b"_s, {u"a"_s, u"b"_s}}),
    [](const auto &row) { return std::string(row.param.name); });

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

struct ContextCase {
    const char *name;
    TextRange token;
    qsizetype textLength;
    TextRange context;
};
class Context : public testing::TestWithParam<ContextCase> { };
TEST_P(Context, ReachesAsFarAsTheText)
{
    EXPECT_EQ(WordFrequency::contextOf(GetParam().token, GetParam().textLength), GetParam().context);
}
INSTANTIATE_TEST_SUITE_P(WordFrequency, Context,
    testing::Values(ContextCase{"amid_the_text", {100, 5}, 1000, {72, 123}},
        ContextCase{"at_the_start", {0, 5}, 1000, {0, 95}},
        ContextCase{"exactly_enough_before", {28, 5}, 1000, {0, 123}},
        ContextCase{"near_the_end", {100, 5}, 110, {72, 38}}, ContextCase{"whole_text", {0, 5}, 5, {0, 5}}),
    [](const auto &row) { return std::string(row.param.name); });
