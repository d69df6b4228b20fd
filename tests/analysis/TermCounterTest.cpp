#include "analysis/TermCounter.h"
#include "analysis/TermOccurrences.h"
#include "records/CharacterTable.h"
#include "support/NastyText.h"
#include "support/PlainAnalysis.h"
#include "support/Printing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

using namespace Qt::StringLiterals;
using PlainAnalysis::Source;
using WordFrequency::Item;

namespace {

constexpr qsizetype noLimit = std::numeric_limits<qsizetype>::max();
constexpr qint64 highest = std::numeric_limits<qint64>::max();
constexpr qint64 lowest = std::numeric_limits<qint64>::min();

TermCounter counted(const QList<Source> &sources)
{
    TermCounter counter;
    for (const Source &source : sources) {
        if (source.passages)
            counter.add(source.text, *source.passages);
        else
            counter.add(source.text);
    }
    return counter;
}

qint64 anyPosition(NastyText &nasty, const QString &text)
{
    switch (nasty.number(1, 30)) {
    case 1:
        return highest - nasty.number(0, 3);
    case 2:
        return lowest + nasty.number(0, 3);
    default:
        return nasty.number(-3, int(text.size()) + 3);
    }
}

std::vector<TextRange> anyPassages(NastyText &nasty, const QString &text)
{
    std::vector<TextRange> passages;
    for (int count = nasty.number(0, 5); count > 0; --count)
        passages.push_back(
            {anyPosition(nasty, text), nasty.onceIn(3) ? anyPosition(nasty, text) : nasty.number(-1, 8)});
    std::ranges::sort(passages, {}, &TextRange::location);
    return passages;
}

Source anySource(NastyText &nasty)
{
    Source source{nasty.next(40)};
    if (nasty.onceIn(2))
        source.passages = anyPassages(nasty, source.text);
    return source;
}

} // namespace

TEST(TermCounter, FindsInNastyTextsWhatThePlainWayFinds)
{
    NastyText nasty(5);
    for (int round = 0; round < 10'000; ++round) {
        const QList<Source> sources{anySource(nasty), anySource(nasty)};
        const int minLength = nasty.number(-1, 4);
        const int limit = nasty.number(0, 60);
        ASSERT_EQ(counted(sources).top(minLength, round % 2 == 0, limit),
            PlainAnalysis::topTerms(sources, minLength, round % 2 == 0, limit))
            << "round " << round;
    }
}

TEST(TermCounter, CountsManyDifferentTermsOfEveryTable)
{
    QString text;
    NastyText nasty(6);
    for (int index = 0; index < 20'000; ++index) {
        text += u"w%1 слово%1 überaus-lang-%1-%2 "_s.arg(nasty.number(0, 10'000)).arg(index, 20, 10, QChar(u'0'));
        text += QChar(nasty.number(0x4E00, 0x4FFF));
        text += QChar(nasty.number(0x4E00, 0x4FFF));
    }
    EXPECT_EQ(counted({{text}}).top(3, true, noLimit), PlainAnalysis::topTerms({{text}}, 3, true, 1'000'000));
}

TEST(TermCounter, JudgesOneTotalByEveryRule)
{
    TermCounter counter = counted({{u"The cat, the cafe\u0301 and the CAF\u00C9"_s}});
    EXPECT_EQ(counter.top(4, false, 9), (QList<Item>{{u"caf\u00E9"_s, 2}}));
    EXPECT_EQ(counter.top(3, true, 9), (QList<Item>{{u"caf\u00E9"_s, 2}, {u"cat"_s, 1}}));
    EXPECT_EQ(counter.top(1, false, 2), (QList<Item>{{u"the"_s, 3}, {u"caf\u00E9"_s, 2}}));
    EXPECT_EQ(counter.top(1, false, -1), QList<Item>());
    counter.clear();
    EXPECT_EQ(counter.top(1, false, 9), QList<Item>());
}

// The minimum length is judged once for a term, though its forms are spelt with different numbers of units.
TEST(TermCounter, CompositionChangesNoLength)
{
    const QStringList before{u""_s, u"a"_s, u"\u1100"_s, u"가"_s, u"각"_s, u"\u0915"_s};
    const QStringList behind{u""_s, u"a"_s, u"\u0301"_s, u"\u1161"_s, u"\u11A8"_s, u"\u0CC2"_s};
    for (char32_t unit = 0; unit <= 0xFFFF; ++unit) {
        if (!CharacterTable::shared()[char16_t(unit)].has(CharacterTable::complex))
            continue;
        for (const QString &start : before) {
            for (const QString &end : behind) {
                const QString term = CharacterTable::lowered(start + QChar(char16_t(unit)) + end);
                ASSERT_EQ(
                    PlainAnalysis::characterCount(term), PlainAnalysis::characterCount(PlainAnalysis::composed(term)))
                    << std::hex << unsigned(unit);
            }
        }
    }
}

TEST(TermCounter, CountsATokenOfPassagesOnceAndWhole)
{
    const QString text = u"alpha beta 研究法"_s; // at 0, 6 and 11
    const auto terms = [&](const std::vector<TextRange> &passages) {
        return counted({{text, passages}}).top(1, false, noLimit);
    };
    EXPECT_EQ(terms({{2, 1}, {3, 3}}), (QList<Item>{{u"alpha"_s, 1}}));
    EXPECT_EQ(terms({{5, 1}, {7, 0}, {lowest, highest}}), QList<Item>());
    EXPECT_EQ(terms({{12, 1}}), (QList<Item>{{u"研究"_s, 1}, {u"究法"_s, 1}}));
}

TEST(TermCounter, WalksManyPassagesOnce)
{
    // Looking at every passage for every token would take hours.
    constexpr int words = 300'000;
    std::vector<TextRange> passages;
    passages.reserve(words);
    for (qint64 index = 0; index < words; ++index)
        passages.push_back({index * 5, index % 2});
    TermCounter counter;
    counter.add(u"word "_s.repeated(words), passages);
    EXPECT_EQ(counter.top(1, false, 1), (QList<Item>{{u"word"_s, words / 2}}));
}

TEST(TermOccurrences, FindInNastyTextsWhatThePlainWayFinds)
{
    NastyText nasty(7);
    for (int round = 0; round < 4'000; ++round) {
        const Source source = anySource(nasty);
        const int minLength = nasty.number(-1, 4);
        QStringList terms{nasty.next(2), u"The"_s};
        for (const WordFrequency::Token &token : PlainAnalysis::tokens(source, 0, false))
            terms << token.term << PlainAnalysis::composed(token.term);
        for (const QString &term : std::as_const(terms)) {
            ASSERT_EQ(TermOccurrences::occurrences(source.text, term, minLength, round % 2 == 0, source.passages),
                PlainAnalysis::occurrences(source, term, minLength, round % 2 == 0))
                << "round " << round;
        }
    }
}

TEST(TermOccurrences, AreAsManyAsWereCounted)
{
    NastyText nasty(8);
    const Source source{nasty.next(3000), std::vector<TextRange>{{100, 500}, {1000, 900}}};
    for (const Item &item : counted({source}).top(2, true, noLimit)) {
        EXPECT_EQ(TermOccurrences::occurrences(source.text, item.term, 2, true, source.passages).size(), item.count)
            << item.term.toStdString();
    }
}

TEST(TermOccurrences, FindNothingForNoTerm)
{
    EXPECT_TRUE(TermOccurrences::occurrences(u"some text", u"", 1, false, {}).empty());
    EXPECT_TRUE(TermOccurrences::occurrences(u"some text", u"Text", 1, false, {}).empty());
}
