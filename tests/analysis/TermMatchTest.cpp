#include "analysis/TermMatch.h"
#include "records/CharacterTable.h"
#include "support/Cases.h"
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
using FirstMatch = testing::TestWithParam<TermMatchCase>;
TEST_P(FirstMatch, IsFoundWhereItStandsInTheOriginal)
{
    EXPECT_EQ(TermMatch::firstIn(GetParam().text, GetParam().term), GetParam().expected);
}
INSTANTIATE_TEST_SUITE_P(TermMatch, FirstMatch,
    testing::Values(TermMatchCase{"only_the_first_of_two", u"a phone, my phone"_s, u"phone"_s, {2, 5}},
        TermMatchCase{"part_of_a_longer_word", u"headphones phone"_s, u"phone"_s, {4, 5}},
        TermMatchCase{"empty_term", u"a phone"_s, u""_s, {}},
        TermMatchCase{"lower_case_longer_before", u"\u0130\u0130 phone"_s, u"phone"_s, {3, 5}},
        TermMatchCase{"decomposed_in_the_term", u"two CAFÉS"_s, u"cafe\u0301"_s, {4, 4}},
        TermMatchCase{"letters_of_one_capital", u"\u0130 i"_s, u"i"_s, {2, 1}},
        TermMatchCase{"joiner_behind_the_word", u"\u0645\u06CC\u200C\u062E"_s, u"\u0645\u06CC"_s, {0, 2}}),
    rowName);

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
