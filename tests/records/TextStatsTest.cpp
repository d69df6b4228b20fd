#include "records/TextStats.h"
#include "records/Snippet.h"
#include "records/TextTrimming.h"
#include "support/NastyText.h"
#include "support/PlainAnalysis.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(TextStats, CountNastyTextsAsICU)
{
    NastyText nasty(2);
    for (int round = 0; round < 20'000; ++round) {
        const QString text = nasty.next(50);
        const qint64 words = PlainAnalysis::wordCount(text);
        const qint64 characters = PlainAnalysis::characterCount(text);
        ASSERT_EQ(TextStats::wordCount(text), words) << "round " << round;
        ASSERT_EQ(TextStats::wordCount<PlainUnitBlock>(text), words) << "round " << round;
        ASSERT_EQ(TextStats::characterCount(text), characters) << "round " << round;
        ASSERT_EQ(TextStats::characterCount<PlainUnitBlock>(text), characters) << "round " << round;
    }
}

TEST(TextStats, GivesLeadingCharactersWhole)
{
    const QString text = u"e\u0301\r\n\U0001F468\u200D\U0001F469x"_s;
    const int lengths[]{0, 0, 2, 4, 9, 10, 10}; // of −1 characters, none, one …
    for (int count = -1; count < 6; ++count)
        EXPECT_EQ(TextStats::leadingCharacters(text, count).toString(), text.left(lengths[count + 1])) << count;
    EXPECT_EQ(TextStats::leadingCharacters({}, 3).toString(), u""_s);
}

TEST(Snippet, ReadsAsACopyOfThePassageAndEqualsWhatReadsTheSame)
{
    NastyText nasty(3);
    Snippet last;
    for (int round = 0; round < 1'000; ++round) {
        const QString text = u" \n"_s + nasty.next(6) + u"\r\n\nword\n "_s;
        const int start = nasty.number(0, int(text.size()));
        const TextRange range{start, nasty.number(0, int(text.size()) - start)};
        const QString copy = text.mid(start, range.length);
        const QString inOneLine = TextTrimming::trimmedBlanks(QString(copy).replace(u'\n', u' ')).toString();
        const int length = nasty.number(0, 9);
        const Snippet snippet(text, range);
        const Snippet line = Snippet::withoutLineFeeds(text, range);
        ASSERT_EQ(snippet.toString(), copy);
        ASSERT_EQ(snippet.beginning(length), copy.left(length));
        ASSERT_EQ(line.toString(), inOneLine);
        ASSERT_EQ(line.beginning(length), inOneLine.left(length));
        ASSERT_EQ(snippet, Snippet(copy));
        ASSERT_FALSE(snippet == line);
        ASSERT_EQ(snippet == last, copy == last.toString());
        ASSERT_EQ(snippet == Snippet(text, {0, range.length}), copy == text.left(range.length));
        last = snippet;
    }
}
