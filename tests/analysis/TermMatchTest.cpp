#include "analysis/TermMatch.h"
#include "records/CharacterTable.h"
#include "support/NastyText.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

struct TermMatchCase {
    const char *name;
    QString text;
    QString term;
    TextRange expected;
};
class FirstMatch : public testing::TestWithParam<TermMatchCase> { };
TEST_P(FirstMatch, IsFoundWhereItStandsInTheOriginal)
{
    EXPECT_EQ(TermMatch::firstIn(GetParam().text, GetParam().term), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(TermMatch, FirstMatch,
    testing::Values(TermMatchCase{"only_the_first_of_two", u"a phone, my phone"_s, u"phone"_s, {2, 5}},
        TermMatchCase{"capitals_in_the_text", u"My PHONE"_s, u"phone"_s, {3, 5}},
        TermMatchCase{"part_of_a_longer_word", u"headphones phone"_s, u"phone"_s, {4, 5}},
        TermMatchCase{"at_the_very_end", u"the end"_s, u"end"_s, {4, 3}},
        TermMatchCase{"not_there", u"a phone"_s, u"table"_s, {}}, TermMatchCase{"empty_term", u"a phone"_s, u""_s, {}},
        TermMatchCase{"empty_text", u""_s, u"phone"_s, {}},
        TermMatchCase{"term_longer_than_the_text", u"pho"_s, u"phone"_s, {}},
        TermMatchCase{"emoji_before", u"😀😀 Phone"_s, u"phone"_s, {5, 5}},
        TermMatchCase{"astral_capitals", u"😀 \U00010400\U00010401!"_s, u"\U00010428\U00010429"_s, {3, 4}},
        TermMatchCase{"lower_case_longer_before", u"\u0130\u0130 phone"_s, u"phone"_s, {3, 5}},
        TermMatchCase{"lower_case_longer_inside", u"in \u0130ZM\u0130R"_s, u"i\u0307zmi\u0307r"_s, {3, 5}},
        TermMatchCase{"decomposed_in_the_text", u"two cafe\u0301s"_s, u"café"_s, {4, 5}},
        TermMatchCase{"decomposed_in_the_term", u"two CAFÉS"_s, u"cafe\u0301"_s, {4, 4}},
        TermMatchCase{"marks_in_another_order", u"q\u0323\u0307"_s, u"q\u0307\u0323"_s, {0, 3}},
        TermMatchCase{"a_letter_without_its_mark", u"cafe\u0301 cafe"_s, u"cafe"_s, {6, 4}},
        TermMatchCase{"letters_of_one_capital", u"\u0130 i"_s, u"i"_s, {2, 1}},
        TermMatchCase{"joiner_behind_the_word", u"\u0645\u06CC\u200C\u062E"_s, u"\u0645\u06CC"_s, {0, 2}},
        TermMatchCase{"ideographs", u"最烦的是那种"_s, u"那种"_s, {4, 2}},
        TermMatchCase{"jamo_in_the_text", u"\u1112\u1161\u11AB\uAE00"_s, u"\uD55C\uAE00"_s, {0, 4}},
        TermMatchCase{"sigma_at_the_end_of_a_word", u"ΟΔΟΣ"_s, u"οδοσ"_s, {0, 4}},
        TermMatchCase{"begins_with_half_a_pair", u"\xDE00 phone"_s, u"phone"_s, {2, 5}},
        TermMatchCase{"ends_with_half_a_pair", u"phone\xD83D"_s, u"phone"_s, {0, 5}},
        TermMatchCase{"begins_with_a_mark", u"\u0301a phone"_s, u"phone"_s, {3, 5}}),
    [](const auto &row) { return std::string(row.param.name); });

namespace {

/// Case and spelling taken away.
QString plain(QStringView text)
{
    return CharacterTable::composed(CharacterTable::lowered(text));
}

/// Where no letter is separated from its marks.
QList<qsizetype> edgesOf(const QString &text)
{
    QList<qsizetype> edges;
    for (qsizetype position = 0; position < text.size(); ++position) {
        const bool isPair =
            position + 1 < text.size() && text[position].isHighSurrogate() && text[position + 1].isLowSurrogate();
        const char32_t character =
            isPair ? QChar::surrogateToUcs4(text[position], text[position + 1]) : text[position].unicode();
        if (position == 0 || QChar::combiningClass(character) == 0)
            edges.append(position);
        position += isPair ? 1 : 0;
    }
    edges.append(text.size());
    return edges;
}

/// Tries every stretch.
TextRange plainFirstIn(const QString &text, const QString &term)
{
    const QList<qsizetype> edges = edgesOf(text);
    for (const qsizetype start : edges) {
        for (const qsizetype end : edges) {
            if (end > start && plain(QStringView(text).sliced(start, end - start)) == plain(term))
                return {start, end - start};
        }
    }
    return {};
}

} // namespace

TEST(TermMatch, FindsInNastyTextsWhatTryingEveryStretchFinds)
{
    NastyText texts(41);
    int foundCount = 0;
    for (int turn = 0; turn < 1500; ++turn) {
        const QString text = texts.next(6).left(40);
        const QString term = texts.onceIn(4) ? texts.next(1) : text.mid(texts.number(0, 6), texts.number(1, 4));
        const TextRange found = TermMatch::firstIn(text, term);
        ASSERT_EQ(found, plainFirstIn(text, term)) << turn;
        foundCount += found.length > 0 ? 1 : 0;
    }
    EXPECT_GT(foundCount, 300);
}
