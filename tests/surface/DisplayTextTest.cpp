#include "surface/DisplayText.h"
#include "support/Cases.h"
#include "support/Printing.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTextDocument>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QString troublesomeText(QRandomGenerator &random, int length)
{
    static const QString units =
        u"ab \t\n\r\u00A0\u0301\u0627\u05D0\u200B\u200F\u2028\u2029\u3000\u4E2D\uFDD0\uFDD1\uFFFC\uFEFF"_s + QChar(0)
        + QChar(0xD83D) + QChar(0xDE00) + QChar(0x0B) + QChar(0x0C) + QChar(0x85);
    QString text;
    for (int index = 0; index < length; ++index)
        text += units[random.bounded(int(units.size()))];
    return text;
}

std::vector<qsizetype> splitPositions(const QString &text)
{
    std::vector<qsizetype> positions;
    const QString display = DisplayText::of(text);
    for (qsizetype at = display.indexOf(u'\n'); at >= 0; at = display.indexOf(u'\n', at + 1))
        positions.push_back(at);
    return positions;
}

} // namespace

TEST(DisplayText, ReplacesEachTroublesomeUnitByOneOther)
{
    const std::vector<Case<QString>> cases{{"CR of CR LF after a letter", u"a\r\nb"_s, u"a\u034F\nb"_s},
        {"CR of CR LF after a space", u"a \r\nb"_s, u"a \u200B\nb"_s},
        {"CR of CR LF on a blank line", u"\r\n\r\n"_s, u"\u200B\n\u200B\n"_s},
        {"lone CR, and CR before CR LF", u"a\rb\r\r\n"_s, u"a\nb\n\u200B\n"_s},
        {"paragraph and line separator", u"a\u2029b\u2028c"_s, u"a\nb\u2028c"_s},
        {"units with a meaning", u"\uFFFC\uFDD0\uFDD1\uFDD2"_s + QChar(0), u"\uFFFD\uFFFD\uFFFD\uFDD2\uFFFD"_s},
        {"unpaired surrogates", QChar(0xDE00) + QString(QChar(0xD83D)) + u"\U0001F600"_s, u"\uFFFD\uFFFD\U0001F600"_s}};
    for (const auto &[name, given, expected] : cases)
        EXPECT_EQ(DisplayText::of(given), expected) << name;
}

TEST(DisplayText, HasThePositionsAndParagraphsOfTheText)
{
    static const QRegularExpression paragraph(u"[^\r\n\u2029]*(\r\n|[\r\n\u2029]|$)"_s);
    QRandomGenerator random(7);
    for (int round = 0; round < 300; ++round) {
        const QString text = troublesomeText(random, random.bounded(120));
        const QString display = DisplayText::of(text);
        QTextDocument document;
        document.setPlainText(display);
        ASSERT_EQ(document.toRawText(), QString(display).replace(u'\n', QChar::ParagraphSeparator)) << round;
        ASSERT_EQ(display.size(), text.size()) << round;

        for (auto found = paragraph.globalMatch(text); found.hasNext();) {
            const auto match = found.next();
            for (qint64 position = match.capturedStart(); position < match.capturedEnd(); ++position) {
                const TextRange range = DisplayText::paragraphAt(text, position);
                ASSERT_EQ(range, (TextRange{match.capturedStart(), match.capturedLength()})) << round;
                const bool isInBreak = position + 1 == match.capturedEnd() && match.captured(1).size() == 2;
                ASSERT_EQ(DisplayText::outsideLineBreak(text, position), position - (isInBreak ? 1 : 0)) << round;
            }
        }
    }
    EXPECT_EQ(DisplayText::paragraphAt(u"a\nb"_s, 3), (TextRange{2, 1}));
    EXPECT_EQ(DisplayText::paragraphAt(u"a\n"_s, 2), (TextRange{2, 0}));
}

TEST(DisplayText, SplitsALongParagraphAtSpacesOnly)
{
    QRandomGenerator random(11);
    QString text = u"Short.\n"_s;
    for (int word = 0; word < 30'000; ++word)
        text += QString(random.bounded(1, 9), u'w') + (random.bounded(2) ? u' ' : u'\u3000');
    std::vector<qsizetype> splits = splitPositions(text);
    splits.push_back(text.size());
    for (size_t index = 1; index < splits.size(); ++index) {
        const qsizetype length = splits[index] - splits[index - 1];
        ASSERT_LE(length, index + 1 < splits.size() ? 4'010 : DisplayText::maxParagraph + 1);
        ASSERT_GT(length, 4'000);
        ASSERT_TRUE(text[splits[index - 1]].isSpace()) << index;
    }

    const QString endless = QString(100'000, u'x');
    EXPECT_EQ(splitPositions(endless + u' ' + endless), std::vector<qsizetype>{100'000});
    const QString words = u"word "_s.repeated(int(DisplayText::maxParagraph) / 5);
    for (const QString &whole : {endless, QString(20'000, u'\u00A0'), words})
        EXPECT_EQ(DisplayText::of(whole), whole);
    EXPECT_NE(DisplayText::of(words + u"x"_s), words + u"x"_s);
}
