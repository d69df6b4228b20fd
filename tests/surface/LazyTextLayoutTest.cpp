#include "surface/LazyTextLayout.h"
#include "surface/DisplayText.h"
#include "surface/ParagraphShape.h"
#include "surface/PassageSegments.h"
#include "surface/ReaderMetrics.h"

#include <QApplication>
#include <QPainter>
#include <QRandomGenerator>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextLayout>

#include <gtest/gtest.h>

#include <cmath>

using namespace Qt::StringLiterals;

namespace {

const QStringList words{u"the"_s, u"interview"_s, u"of"_s, u"office"_s, u"AVATAR"_s, u"understanding"_s, u"a"_s,
    u"\u4E2D\u6587\u5B57\u7B26"_s, u"\u0639\u0644\u064A\u0643\u0645"_s, u"\u05E9\u05DC\u05D5\u05DD"_s, u"e\u0301"_s,
    u"\U0001F469\u200D\U0001F467"_s, u"123"_s, u"(x)"_s, u"long-ish,"_s};

QString randomParagraphs(QRandomGenerator &random, int count)
{
    QString text;
    for (int paragraph = 0; paragraph < count; ++paragraph) {
        for (int word = random.bounded(90); word > 0; --word)
            text += words[random.bounded(int(words.size()))] + (random.bounded(12) == 0 ? u"\t"_s : u" "_s);
        text += u'\n';
    }
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

/// A document under the lazy layout.
struct LazyDocument {
    explicit LazyDocument(const QString &text, int pageWidth = 800)
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

/// The same text under Qt's own layout, with the line distance as a block format.
void layOutPlainly(QTextDocument &document, const QString &text, int columnWidth)
{
    fill(document, text, columnWidth);
    QTextBlockFormat format;
    format.setLineHeight(ReaderMetrics::lineDistance, QTextBlockFormat::LineDistanceHeight);
    QTextCursor cursor(&document);
    cursor.select(QTextCursor::Document);
    cursor.mergeBlockFormat(format);
    document.setTextWidth(columnWidth);
    (void)document.documentLayout()->documentSize(); // lays all of it out
}

std::vector<int> lineStarts(const QTextBlock &block)
{
    std::vector<int> starts;
    for (int line = 0; line < block.layout()->lineCount(); ++line)
        starts.push_back(block.layout()->lineAt(line).textStart());
    return starts;
}

/// Which columns of a line's pixels Qt draws as selected. Emoji keep their colours though the pen is transparent, so
/// the whole column is looked at.
std::vector<bool> drawnSelection(const QTextLayout &layout, const QTextLine &line, int start, int end, int width)
{
    QTextLayout::FormatRange selection{start, end - start, {}};
    selection.format.setBackground(Qt::red);
    selection.format.setForeground(Qt::transparent);
    QImage image(width, int(layout.boundingRect().height()) + 50, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setPen(Qt::transparent);
    layout.draw(&painter, {}, {selection});
    std::vector<bool> columns(size_t(width), false);
    for (int y = int(std::ceil(line.y())); y < int(line.y() + line.height()); ++y) {
        for (int x = 0; x < width; ++x)
            columns[size_t(x)] = columns[size_t(x)] || image.pixelColor(x, y) == QColor(Qt::red);
    }
    return columns;
}

} // namespace

TEST(LazyTextLayout, BreaksLinesWhereThePlainLayoutDoesAndIsAsHigh)
{
    QRandomGenerator random(5);
    for (const int pageWidth : {300, 560, 725, 1000}) {
        const QString text = randomParagraphs(random, 60);
        LazyDocument lazy(text, pageWidth);
        QTextDocument plain;
        layOutPlainly(plain, text, lazy.layout->columnWidth());
        for (int block = 0; block < plain.blockCount(); ++block) {
            lazy.layout->layOut(block);
            ASSERT_EQ(lineStarts(lazy.document.findBlockByNumber(block)), lineStarts(plain.findBlockByNumber(block)))
                << "block " << block << " at " << pageWidth;
        }
        const qreal height = lazy.layout->documentSize().height() - 2 * ReaderMetrics::verticalInset;
        EXPECT_NEAR(height, plain.size().height(), plain.blockCount() / 2.0);
    }
}

TEST(LazyTextLayout, OpensAMegabyteWithoutSpaces)
{
    QString text(1'000'000, u' ');
    for (qsizetype index = 0; index < text.size(); ++index)
        text[index] = QChar(u'a' + int(index * 7919 % 26));
    const LazyDocument lazy(DisplayText::of(text)); // searching each line for a word's end would take a minute
    lazy.layout->layOut(0);
    const QTextLayout &layout = *lazy.document.firstBlock().layout();
    EXPECT_GT(layout.lineCount(), 8'000);
    const QTextLine line = lazy.layout->lineAt(500'000);
    EXPECT_LE(line.textStart(), 500'000);
    EXPECT_GT(line.textStart() + line.textLength(), 500'000);
    EXPECT_LE(line.naturalTextWidth(), 660);
}

TEST(ParagraphShape, CoversWhatASelectionCoversWhereDirectionsMix)
{
    QRandomGenerator random(21);
    for (int round = 0; round < 60; ++round) {
        const QString wrapped = randomParagraphs(random, 1).replace(u'\t', u' ').trimmed();
        const QString tabbed = u"ab\t\u05E9\u05DC\u05D5\u05DD\tx (\u05D0)"_s;
        const LazyDocument lazy(round % 4 == 3 ? tabbed : wrapped, 500);
        const QTextBlock block = lazy.document.firstBlock();
        lazy.layout->layOut(0);
        const QTextLayout &layout = *block.layout();
        const ParagraphShape shape(block);
        int start = random.bounded(block.length());
        int end = random.bounded(block.length());
        if (start > end)
            std::swap(start, end);
        if (start == end || !layout.isValidCursorPosition(start) || !layout.isValidCursorPosition(end))
            continue;
        for (int number = 0; number < layout.lineCount(); ++number) {
            const QTextLine line = layout.lineAt(number);
            const int width = lazy.layout->columnWidth() + 40;
            const int visibleEnd = std::min(end, shape.visibleEnd(line));
            std::vector<bool> ours(size_t(width), false);
            for (const auto &[left, right] : shape.spans(line, start, end)) {
                for (int x = std::max(0, int(std::lround(left))); x < std::min(width, int(std::lround(right))); ++x)
                    ours[size_t(x)] = true;
            }
            std::vector<bool> wanted(size_t(width), false);
            if (std::max(start, line.textStart()) < visibleEnd)
                wanted = drawnSelection(layout, line, std::max(start, line.textStart()), visibleEnd, width);
            int different = 0; // side by side: each edge may be rounded otherwise
            for (size_t x = 0; x < ours.size(); ++x) {
                different = ours[x] != wanted[x] ? different + 1 : 0;
                ASSERT_LE(different, 3) << "round " << round << " line " << number << " from " << start << " to " << end
                                        << " at " << x << ": " << block.text().toStdString();
            }
        }
    }
}
