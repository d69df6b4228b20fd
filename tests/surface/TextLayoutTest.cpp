#include "support/Cases.h"
#include "support/Printing.h"
#include "surface/DisplayText.h"
#include "surface/LazyTextLayout.h"
#include "surface/PassageSegments.h"
#include "surface/ReaderMetrics.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// `count` of them, taken at random.
QString randomText(QRandomGenerator &random, const QStringList &parts, int count)
{
    QString text;
    for (; count > 0; --count)
        text += parts[random.bounded(int(parts.size()))];
    return text;
}

void fill(QTextDocument &document, const QString &text, int pageWidth)
{
    QFont font(u"Inter"_s);
    font.setPointSizeF(ReaderMetrics::fontPixels * 0.75);
    document.setDocumentMargin(0);
    document.setDefaultFont(font);
    document.setPageSize(QSizeF(pageWidth, -1));
    document.setPlainText(text);
}

struct LazyDocument {
    LazyDocument(const QString &text, int pageWidth)
    {
        marks.passages.reset(text.size());
        fill(document, text, pageWidth);
        layout = new LazyTextLayout(&document, marks);
        document.setDocumentLayout(layout);
    }
    TextMarks marks;
    QTextDocument document;
    LazyTextLayout *layout = nullptr;
};

std::vector<int> lineStarts(const QTextBlock &block)
{
    std::vector<int> starts;
    for (int line = 0; line < block.layout()->lineCount(); ++line)
        starts.push_back(block.layout()->lineAt(line).textStart());
    return starts;
}

} // namespace

TEST(DisplayText, ReplacesEachTroublesomeUnitByOneOther)
{
    const Case<QString> cases[]{{"CR of CR LF after a letter", u"a\r\nb"_s, u"a\u034F\nb"_s},
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
    QStringList units{QChar(0), QChar(0xD83D), QChar(0xDE00), QChar(0x0B), QChar(0x0C), QChar(0x85)};
    for (const QChar unit :
        u"ab \t\n\r\u00A0\u0301\u0627\u05D0\u200B\u200F\u2028\u2029\u3000\uFDD0\uFDD1\uFFFC\uFEFF"_s)
        units += unit;
    QRandomGenerator random(7);
    for (int round = 0; round < 300; ++round) {
        const QString text = randomText(random, units, random.bounded(120));
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
}

TEST(DisplayText, SplitsALongParagraphAtSpacesOnly)
{
    QRandomGenerator random(11);
    const QString text = u"Short.\n"_s + randomText(random, {u"w "_s, u"word\u3000"_s, u"longer\u3000"_s}, 30'000);
    qsizetype end = text.indexOf(u'\n');
    for (const QString &piece : DisplayText::of(text).split(u'\n').sliced(1)) {
        ASSERT_TRUE(text[end].isSpace()) << end;
        end += piece.size() + 1;
        ASSERT_GE(piece.size(), 4'000);
        ASSERT_LE(piece.size(), end < text.size() ? 4'009 : DisplayText::maxParagraph);
    }
    const QString endless = QString(100'000, u'x');
    EXPECT_EQ(DisplayText::of(endless + u' ' + endless), endless + u'\n' + endless);
    const QString words = u"word "_s.repeated(int(DisplayText::maxParagraph) / 5);
    for (const QString &whole : {endless, QString(20'000, u'\u00A0'), words})
        EXPECT_EQ(DisplayText::of(whole), whole);
    EXPECT_NE(DisplayText::of(words + u"x"_s), words + u"x"_s);
}

TEST(LazyTextLayout, BreaksLinesWhereThePlainLayoutDoesAndIsAsHigh)
{
    const QStringList words{u"the "_s, u"interview "_s, u"of\t"_s, u"office "_s, u"AVATAR "_s, u"a "_s, u"x\n"_s,
        u"understanding "_s, u"\u4E2D\u6587\u5B57\u7B26 "_s, u"\u0639\u0644\u064A\u0643\u0645 "_s, u"e\u0301 "_s,
        u"\u05E9\u05DC\u05D5\u05DD "_s, u"\U0001F469\u200D\U0001F467 "_s, u"123 "_s, u"(x) "_s, u"long-ish, "_s};
    QRandomGenerator random(5);
    for (const int pageWidth : {300, 560, 725, 1000}) {
        const QString text = randomText(random, words, 2'000);
        const LazyDocument lazy(text, pageWidth);
        QTextDocument plain;
        fill(plain, text, lazy.layout->columnWidth());
        QTextBlockFormat format;
        format.setLineHeight(ReaderMetrics::lineDistance, QTextBlockFormat::LineDistanceHeight);
        QTextCursor cursor(&plain);
        cursor.select(QTextCursor::Document);
        cursor.mergeBlockFormat(format);
        const qreal plainHeight = plain.size().height(); // lays all of it out
        for (int block = 0; block < plain.blockCount(); ++block) {
            lazy.layout->layOut(block);
            ASSERT_EQ(lineStarts(lazy.document.findBlockByNumber(block)), lineStarts(plain.findBlockByNumber(block)))
                << "block " << block << " at " << pageWidth;
        }
        const qreal height = lazy.layout->documentSize().height() - 2 * ReaderMetrics::verticalInset;
        EXPECT_NEAR(height, plainHeight, plain.blockCount() / 2.0);
    }
}

TEST(LazyTextLayout, OpensAMegabyteWithoutSpaces)
{
    const LazyDocument lazy(u"abcdefghij"_s.repeated(100'000), 800);
    const QTextLine line = lazy.layout->lineAt(500'000); // searching each line for a word's end would take a minute
    EXPECT_TRUE(line.textStart() <= 500'000 && line.textStart() + line.textLength() > 500'000);
    EXPECT_LE(line.naturalTextWidth(), 660);
}
