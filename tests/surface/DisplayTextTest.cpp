#include "surface/DisplayText.h"
#include "support/Cases.h"
#include "support/Printing.h"

#include <QRandomGenerator>
#include <QTextDocument>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QString nastyUnits =
    u"ab \t\n\r\u00A0\u0301\u0627\u05D0\u200B\u200F\u2028\u2029\u3000\u4E2D\uFDD0\uFDD1\uFFFC\uFEFF"_s + QChar(0)
    + QChar(0xD83D) + QChar(0xDE00) + QChar(0x0B) + QChar(0x0C) + QChar(0x85);

QString nastyText(QRandomGenerator &random, int length)
{
    QString text;
    for (int index = 0; index < length; ++index)
        text += nastyUnits[random.bounded(int(nastyUnits.size()))];
    return text;
}

QList<qsizetype> blockEnds(const QString &display)
{
    QList<qsizetype> ends;
    for (qsizetype at = display.indexOf(u'\n'); at >= 0; at = display.indexOf(u'\n', at + 1))
        ends.append(at);
    return ends;
}

using UnitCase = Case<QString>;
using TroublesomeUnit = testing::TestWithParam<UnitCase>;

} // namespace

TEST_P(TroublesomeUnit, IsReplacedByExactlyOneOther)
{
    EXPECT_EQ(DisplayText::of(GetParam().given), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Reader, TroublesomeUnit,
    testing::Values(UnitCase{"return_of_a_pair_hides_behind_its_letter", u"a\r\nb"_s, u"a\u034F\nb"_s},
        UnitCase{"return_of_a_pair_behind_a_space_cant_wrap", u"a \r\nb"_s, u"a \u200B\nb"_s},
        UnitCase{"return_of_a_pair_on_a_blank_line", u"\r\n\r\n"_s, u"\u200B\n\u200B\n"_s},
        UnitCase{"lone_return_ends_a_line", u"a\rb\r"_s, u"a\nb\n"_s},
        UnitCase{"two_returns_before_a_line_feed", u"\r\r\n"_s, u"\n\u200B\n"_s},
        UnitCase{"paragraph_separator", u"a\u2029b"_s, u"a\nb"_s},
        UnitCase{"line_separator_stays", u"a\u2028b"_s, u"a\u2028b"_s},
        UnitCase{"object_replacement", u"a\uFFFCb"_s, u"a\uFFFDb"_s},
        UnitCase{"noncharacters_that_frame_tables", u"\uFDD0\uFDD1"_s, u"\uFFFD\uFFFD"_s},
        UnitCase{"null", u"a"_s + QChar(0) + u"b"_s, u"a\uFFFDb"_s},
        UnitCase{"high_half_before_a_letter", QString(QChar(0xD83D)) + u"b"_s, u"\uFFFDb"_s},
        UnitCase{"low_half_at_the_start", QChar(0xDE00) + u"b"_s, u"\uFFFDb"_s},
        UnitCase{"two_high_halves_then_a_low_one", QString(QChar(0xD83D)) + u"\U0001F600"_s, u"\uFFFD\U0001F600"_s}),
    rowName);

TEST(DisplayText, GivesADocumentWhosePositionsAreTheTexts)
{
    QRandomGenerator random(7);
    for (int round = 0; round < 400; ++round) {
        const QString text = nastyText(random, random.bounded(200));
        const QString display = DisplayText::of(text);
        QTextDocument document;
        document.setPlainText(display);
        ASSERT_EQ(document.characterCount() - 1, text.size()) << round;
        for (int index = 0; index < text.size(); ++index) {
            const QChar shown = document.characterAt(index);
            const QChar wanted = display[index] == u'\n' ? QChar(QChar::ParagraphSeparator) : display[index];
            ASSERT_EQ(shown, wanted) << "round " << round << ", unit " << index;
        }
    }
}

TEST(DisplayText, PartsALongParagraphOnlyAtSpacesAndEverywhereOften)
{
    QRandomGenerator random(11);
    QString text = u"Short.\n"_s;
    for (int word = 0; word < 30'000; ++word)
        text += QString(random.bounded(1, 9), u'w') + u' ';
    const QString display = DisplayText::of(text);
    ASSERT_EQ(display.size(), text.size());
    qsizetype former = 0;
    for (const qsizetype end : blockEnds(display)) {
        EXPECT_LE(end - former, DisplayText::longestParagraph);
        EXPECT_TRUE(text[end] == u' ' || text[end] == u'\n');
        former = end;
    }
    EXPECT_LE(display.size() - former, DisplayText::longestParagraph + 1);
}

TEST(DisplayText, LeavesAParagraphWholeThatHasNoSpacesOrIsJustNotTooLong)
{
    const QString text = QString(100'000, u'x');
    EXPECT_EQ(DisplayText::of(text), text);
    const QString late = text + u" "_s + text;
    EXPECT_EQ(blockEnds(DisplayText::of(late)), QList<qsizetype>{100'000});
    const QString unbreakable = QString(20'000, u'\u00A0');
    EXPECT_EQ(DisplayText::of(unbreakable), unbreakable);
    const QString words = u"word "_s.repeated(int(DisplayText::longestParagraph) / 5);
    EXPECT_EQ(DisplayText::of(words), words);
    EXPECT_NE(DisplayText::of(words + u"x"_s), words + u"x"_s);
}

TEST(DisplayText, MovesAPositionOutOfALineBreak)
{
    const QString text = u"a\r\n\rb\n"_s;
    const QList<qint64> moved{0, 1, 1, 3, 4, 5, 6};
    for (qint64 position = 0; position < moved.size(); ++position)
        EXPECT_EQ(DisplayText::outsideLineBreak(text, position), moved[position]) << position;
    EXPECT_EQ(DisplayText::outsideLineBreak(u"\n"_s, 0), 0);
}

TEST(DisplayText, FindsTheParagraphsOfTheText)
{
    const QString text = u"one\r\ntwo\rthree\u2029four\n\nfive"_s;
    const std::vector<TextRange> paragraphs{{0, 5}, {5, 4}, {9, 6}, {15, 5}, {20, 1}, {21, 4}};
    for (const TextRange &paragraph : paragraphs) {
        for (qint64 position = paragraph.location; position < paragraph.end(); ++position)
            EXPECT_EQ(DisplayText::paragraphAt(text, position), paragraph) << position;
    }
    EXPECT_EQ(DisplayText::paragraphAt(text, text.size()), paragraphs.back());
    EXPECT_EQ(DisplayText::paragraphAt(u"a\n"_s, 2), (TextRange{2, 0}));
}
