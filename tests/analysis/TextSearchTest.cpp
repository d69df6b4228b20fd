#include "analysis/TextSearch.h"
#include "support/NastyText.h"
#include "support/PlainAnalysis.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

bool plainlyNeedsLowering(const QString &text)
{
    for (qsizetype position = 0; position < text.size(); ++position) {
        const bool isPair =
            position + 1 < text.size() && text[position].isHighSurrogate() && text[position + 1].isLowSurrogate();
        const QString character = text.mid(position, isPair ? 2 : 1);
        const QString lowered = PlainAnalysis::lowered(character);
        if (lowered.size() != character.size() || (isPair && lowered != character))
            return true;
        position += isPair ? 1 : 0;
    }
    return false;
}

} // namespace

TEST(TextSearch, IgnoresCaseAndNothingElse)
{
    const struct {
        QString text;
        QString needle;
        bool isIn;
    } rows[]{
        {u""_s, u""_s, true},
        {u"cafe\u0301"_s, u"café"_s, false},
        {u"ΟΔΟΣ"_s, u"οδος"_s, false}, // the final sigma is another letter
        {u"i\u0307stanbul"_s, u"\u0130STANBUL"_s, true},
        {u"A\u0130B"_s, u"ai"_s, true},
        {u"\U00010400"_s, u"\xDC00"_s, false},
    };
    for (const auto &[text, needle, isIn] : rows)
        EXPECT_EQ(TextSearch(needle).isIn(text), isIn) << text.toStdString();
}

TEST(TextSearch, FindsInNastyTextsWhatThePlainWayFinds)
{
    NastyText nasty(9);
    for (int round = 0; round < 5'000; ++round) {
        const QString text = nasty.next(60);
        const bool needsLowering = plainlyNeedsLowering(text);
        ASSERT_EQ(TextSearch::needsLowering(text), needsLowering) << "round " << round;
        ASSERT_EQ(TextSearch::needsLowering<PlainUnitBlock>(text), needsLowering) << "round " << round;
        const int start = nasty.number(0, int(text.size()));
        const QString needle = nasty.onceIn(4) ? nasty.next(3) : text.mid(start, nasty.number(0, 20)).toUpper();
        const bool isIn = PlainAnalysis::firstInLowered(text, needle) >= 0;
        const TextSearch search(needle);
        ASSERT_EQ(search.isIn(text), isIn) << "round " << round;
        ASSERT_EQ(search.isInLowered(text, nasty.number(1, 8)), isIn) << "round " << round;
        if (needsLowering)
            continue;
        const qsizetype first = PlainAnalysis::firstInLowered(text, needle, start);
        ASSERT_EQ(search.firstIn(text, start), first) << "round " << round;
        ASSERT_EQ(search.firstIn<PlainUnitBlock>(text, start), first) << "round " << round;
    }
}

TEST(TextSearch, FindsAmongManyThatNearlyMatch)
{
    // Few letters: nearly every place begins and ends like the search text, until patience is lost.
    NastyText random(10);
    const auto letters = [&](int count) {
        QString text;
        for (; count > 0; --count)
            text += random.onceIn(9) ? u'B' : u'a';
        return text;
    };
    for (int round = 0; round < 300; ++round) {
        const QString text = letters(20'000);
        const int start = random.number(0, 19'000);
        const QString needle =
            random.onceIn(2) ? text.mid(start, random.number(1, 400)) : letters(random.number(1, 60));
        const TextSearch search(needle);
        const int from = random.number(-5, 20'010);
        const qsizetype first = from > 20'000 ? -1 : PlainAnalysis::firstInLowered(text, needle, std::max(from, 0));
        ASSERT_EQ(search.firstIn(text, from), first) << "round " << round;
        ASSERT_EQ(search.firstIn<PlainUnitBlock>(text, from), first) << "round " << round;
    }
}

TEST(TextSearch, TakesTimeForTheTextAloneNotForTheNeedleToo)
{
    // Comparing the whole search text at every place would take an hour.
    const QString needle = QString(500'000, u'a') + u'b' + QString(500'000, u'a');
    const QString text = QString(3'000'000, u'A');
    EXPECT_EQ(TextSearch(needle).firstIn(text, 0), -1);
    EXPECT_EQ(TextSearch(needle).firstIn(text + needle, 0), 3'000'000);
}

TEST(TextSearch, ContinuesFromAnyPlace)
{
    const TextSearch search(u"ab");
    const QString text = u"abxAB"_s;
    EXPECT_EQ(search.firstIn(text, -7), 0);
    EXPECT_EQ(search.firstIn(text, 1), 3);
    EXPECT_EQ(search.firstIn(text, 4), -1);
    EXPECT_EQ(search.firstIn(text, 99), -1);
    EXPECT_EQ(TextSearch(u"").firstIn(text, 5), 5);
    EXPECT_EQ(TextSearch(u"").firstIn(text, 6), -1);
}
