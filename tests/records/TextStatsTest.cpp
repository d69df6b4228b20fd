#include "records/TextStats.h"
#include "support/NastyText.h"
#include "support/PlainAnalysis.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

#include <array>
#include <thread>
#include <vector>

using namespace Qt::StringLiterals;

TEST(TextStats, CountWordsAsRunsAndIdeographs)
{
    EXPECT_EQ(TextStats::wordCount(u"don't well-known"), 4);
    EXPECT_EQ(TextStats::wordCount(u"研究法 a\U00010400b"), 4);
    EXPECT_EQ(TextStats::wordCount(QString(15, u' ') + u'é' + QString(16, u'x')), 1); // across two blocks
}

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
