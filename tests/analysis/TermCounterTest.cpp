#include "analysis/TermCounter.h"
#include "analysis/TermOccurrences.h"
#include "support/NastyText.h"
#include "support/PlainAnalysis.h"
#include "support/Printing.h"

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

TEST(TermCounter, SplitsATextIntoTerms)
{
    const std::pair<QString, QStringList> rows[]{
        {u"don't The THE thee"_s, {u"thee"_s}},
        {u"co-working snake_case"_s, {u"case"_s, u"snake"_s, u"working"_s}},
        {u"COVID19 2024 42"_s, {u"2024"_s, u"covid19"_s}},
        {u"e\u0301t e\u0301te"_s, {u"éte"_s}},
        {u"\u0130x"_s, {}}, // clusters are counted after lowering
        {u"研究方法，我，"_s, {u"我"_s, u"方法"_s, u"研究"_s, u"究方"_s}},
        {u"研\U00020000究"_s, {u"研"_s, u"究"_s}},
    };
    for (const auto &[text, terms] : rows) {
        QStringList found;
        for (const Item &item : counted({{text}}).top(3, true, 9))
            found.append(item.term);
        EXPECT_EQ(found, terms) << text.toStdString();
    }
}

TEST(TermCounter, HasItsStopWords)
{
    EXPECT_EQ(WordFrequency::stopwords().size(), 136);
    for (const QString &word : {u"the"_s, u"number"_s, u"don"_s, u"they"_s})
        EXPECT_TRUE(WordFrequency::stopwords().contains(word)) << word.toStdString();
}

TEST(TermCounter, FindsInNastyTextsWhatThePlainWayFinds)
{
    NastyText nasty(5);
    for (int round = 0; round < 6'000; ++round) {
        const QList<Source> sources{anySource(nasty), anySource(nasty)};
        const TermCounter counter = counted(sources);
        for (const bool ignoreStopwords : {true, false}) { // one total serves every rule
            const int minLength = nasty.number(-1, 4);
            const int limit = nasty.number(-1, 60);
            ASSERT_EQ(counter.top(minLength, ignoreStopwords, limit),
                PlainAnalysis::topTerms(sources, minLength, ignoreStopwords, std::max(limit, 0)))
                << "round " << round;
        }
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
        for (const PlainAnalysis::Token &token : PlainAnalysis::tokens(source, 0, false))
            terms << token.term << PlainAnalysis::composed(token.term);
        for (const QString &term : std::as_const(terms)) {
            ASSERT_EQ(TermOccurrences::occurrences(source.text, term, minLength, round % 2 == 0, source.passages),
                PlainAnalysis::occurrences(source, term, minLength, round % 2 == 0))
                << "round " << round;
        }
    }
}
