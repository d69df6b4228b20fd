#include "records/TextStats.h"
#include "support/NastyText.h"
#include "support/PlainAnalysis.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

#include <array>
#include <thread>
#include <vector>

using namespace Qt::StringLiterals;

struct WordCountCase {
    const char *name;
    QString text;
    qint64 words;
};
class WordCount : public testing::TestWithParam<WordCountCase> { };
TEST_P(WordCount, CountsRunsAndIdeographs)
{
    EXPECT_EQ(TextStats::wordCount(GetParam().text), GetParam().words);
    EXPECT_EQ(TextStats::wordCount<PlainUnitBlock>(GetParam().text), GetParam().words);
}
INSTANTIATE_TEST_SUITE_P(TextStats, WordCount,
    testing::Values(WordCountCase{"empty", u""_s, 0}, WordCountCase{"blanks", u"   "_s, 0},
        WordCountCase{"two", u"Hello, world"_s, 2}, WordCountCase{"apostrophe_splits", u"don't"_s, 2},
        WordCountCase{"hyphen_splits", u"well-known"_s, 2}, WordCountCase{"number", u"42"_s, 1},
        WordCountCase{"underscore_splits", u"snake_case"_s, 2},
        WordCountCase{"mark_does_not_split", u"cafe\u0301s"_s, 1},
        WordCountCase{"each_ideograph_is_a_word", u"研究法"_s, 3},
        WordCountCase{"run_after_an_ideograph_is_new", u"abc研def"_s, 3},
        WordCountCase{"kana_is_a_run", u"カタカナ"_s, 1}, WordCountCase{"hangul_is_a_run", u"한국어"_s, 1},
        WordCountCase{"ideographs_of_other_planes_count", u"a\U00020000\U00020001b"_s, 4},
        WordCountCase{"letters_of_other_planes_join_a_run", u"a\U00010400b"_s, 1},
        WordCountCase{"emoji_splits", u"a\U0001F468b"_s, 2},
        WordCountCase{"half_a_pair_splits", u"a\xD800"_s + u"b\xDC00"_s, 2},
        WordCountCase{"word_across_two_blocks", QString(40, u'x'), 1},
        WordCountCase{"word_ends_with_its_block", QString(16, u'x') + u" y"_s, 2},
        WordCountCase{"block_begins_after_a_letter_beyond_ascii", QString(15, u' ') + u'é' + QString(16, u'x'), 1},
        WordCountCase{"pair_across_two_blocks", QString(15, u'é') + u"\U00020000"_s + QString(20, u'x'), 3}),
    [](const auto &row) { return std::string(row.param.name); });

struct CharacterCountCase {
    const char *name;
    QString text;
    qint64 characters;
};
class CharacterCount : public testing::TestWithParam<CharacterCountCase> { };
TEST_P(CharacterCount, CountsWhatTheUserPerceives)
{
    EXPECT_EQ(TextStats::characterCount(GetParam().text), GetParam().characters);
    EXPECT_EQ(TextStats::characterCount<PlainUnitBlock>(GetParam().text), GetParam().characters);
}
INSTANTIATE_TEST_SUITE_P(TextStats, CharacterCount,
    testing::Values(CharacterCountCase{"empty", u""_s, 0}, CharacterCountCase{"ascii", u"abc"_s, 3},
        CharacterCountCase{"emoji", u"\U0001F600"_s, 1}, CharacterCountCase{"line_end_of_two_units", u"a\r\nb"_s, 3},
        CharacterCountCase{"line_ends_in_wrong_order", u"\n\r\r\n\r"_s, 4},
        CharacterCountCase{"line_end_after_a_mark", u"e\u0301\r\n"_s, 2},
        CharacterCountCase{"mark_after_a_line_end", u"\r\n\u0301a"_s, 3}, CharacterCountCase{"mark", u"xe\u0301x"_s, 3},
        CharacterCountCase{"mark_alone", u"\u0301"_s, 1}, CharacterCountCase{"jamo", u"\u1100\u1161\u11A8"_s, 1},
        CharacterCountCase{"final_jamo", u"가\u11A8"_s, 1}, CharacterCountCase{"hangul", u"한국어"_s, 3},
        CharacterCountCase{"flags", u"\U0001F1E6\U0001F1E7\U0001F1E6"_s, 2},
        CharacterCountCase{"family", u"\U0001F468\u200D\U0001F469x"_s, 2},
        CharacterCountCase{"symbol_joined_by_a_joiner", u"\u2764\u200D\u2764x"_s, 2},
        CharacterCountCase{"prepended", u"\u0600ab"_s, 2},
        CharacterCountCase{"mark_behind_a_block", QString(16, u'x') + u"\u0301y"_s, 17},
        CharacterCountCase{"line_end_across_blocks", QString(15, u'x') + u"\r\n"_s + QString(15, u'x'), 31},
        CharacterCountCase{"halves", u"a\xD800"_s + u"b\xDC00"_s, 4}),
    [](const auto &row) { return std::string(row.param.name); });

TEST(TextStats, CountNastyTextsAsICU)
{
    NastyText nasty(2);
    for (int round = 0; round < 60'000; ++round) {
        const QString text = nasty.next(50);
        const qint64 words = PlainAnalysis::wordCount(text);
        const qint64 characters = PlainAnalysis::characterCount(text);
        ASSERT_EQ(TextStats::wordCount(text), words) << "round " << round;
        ASSERT_EQ(TextStats::wordCount<PlainUnitBlock>(text), words) << "round " << round;
        ASSERT_EQ(TextStats::characterCount(text), characters) << "round " << round;
        ASSERT_EQ(TextStats::characterCount<PlainUnitBlock>(text), characters) << "round " << round;
    }
}

TEST(TextStats, CountEveryPairOfUnlikeCharactersAsICU)
{
    // One character of each cluster break class, and of both kinds of blocks.
    const QStringList parts{u"a"_s, u"\r"_s, u"\n"_s, u"\u0301"_s, u"\u200D"_s, u"\u0903"_s, u"\u0600"_s, u"\u1100"_s,
        u"\u1161"_s, u"\u11A8"_s, u"가"_s, u"각"_s, u"\u00AD"_s, u"\u2764"_s, u"\U0001F1E6"_s, u"\U0001F468"_s,
        u"\U0001F3FD"_s, u"\xD800"_s, u"\xDC00"_s, u"一"_s, QString(16, u'x')};
    for (const QString &first : parts) {
        for (const QString &second : parts) {
            for (const QString &third : parts) {
                const QString text = first + second + third;
                ASSERT_EQ(TextStats::characterCount(text), PlainAnalysis::characterCount(text))
                    << text.toUtf8().toHex(' ').constData();
            }
        }
    }
}

TEST(TextStats, GivesLeadingCharactersWhole)
{
    const QString text = u"e\u0301\r\n\U0001F468\u200D\U0001F469x"_s;
    EXPECT_EQ(TextStats::leadingCharacters(text, 0).toString(), u""_s);
    EXPECT_EQ(TextStats::leadingCharacters(text, -1).toString(), u""_s);
    EXPECT_EQ(TextStats::leadingCharacters(text, 1).toString(), u"e\u0301"_s);
    EXPECT_EQ(TextStats::leadingCharacters(text, 2).toString(), u"e\u0301\r\n"_s);
    EXPECT_EQ(TextStats::leadingCharacters(text, 3).toString(), text.chopped(1));
    EXPECT_EQ(TextStats::leadingCharacters(text, 4).toString(), text);
    EXPECT_EQ(TextStats::leadingCharacters(text, 100).toString(), text);
    EXPECT_EQ(TextStats::leadingCharacters({}, 3).toString(), u""_s);
}

TEST(TextStats, KeepsNothingFromOneTextToTheNext)
{
    const QString flags = u"\U0001F1E6\U0001F1E7\U0001F1E6"_s; // ends in half a flag
    EXPECT_EQ(TextStats::leadingCharacters(flags, 1).size(), 4);
    EXPECT_EQ(TextStats::characterCount(flags), 2);
    EXPECT_EQ(TextStats::characterCount(flags), 2);
    EXPECT_EQ(TextStats::characterCount(u"\u0301"_s), 1);
}

TEST(TextStats, CountsInSeveralThreadsAtOnce)
{
    const QString text = NastyText(3).next(20'000);
    const qint64 expected = PlainAnalysis::characterCount(text);
    std::array<qint64, 4> counts = {};
    {
        std::vector<std::jthread> threads;
        threads.reserve(counts.size());
        for (qint64 &count : counts)
            threads.emplace_back([&text, &count] { count = TextStats::characterCount(text); });
    }
    EXPECT_EQ(counts, (std::array{expected, expected, expected, expected}));
}
