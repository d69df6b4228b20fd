#include "analysis/TermCounter.h"
#include "analysis/OccurrenceList.h"
#include "analysis/TermOccurrences.h"
#include "support/NastyText.h"
#include "support/PlainAnalysis.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using PlainAnalysis::Source;

namespace {

TermCounter counted(const QList<Source> &sources)
{
    TermCounter counter;
    for (const Source &source : sources)
        source.passages ? counter.add(source.text, *source.passages) : counter.add(source.text);
    return counter;
}

Source anySource(NastyText &nasty)
{
    Source source{nasty.next(40)};
    if (nasty.onceIn(2))
        return source;
    source.passages.emplace();
    const int end = int(source.text.size()) + 3;
    for (int count = nasty.number(0, 5); count > 0; --count)
        source.passages->push_back(
            {nasty.position(-3, end), nasty.onceIn(3) ? nasty.position(-3, end) : nasty.number(-1, 8)});
    return source;
}

} // namespace

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
    constexpr qsizetype noLimit = std::numeric_limits<qsizetype>::max();
    EXPECT_EQ(counted({{text}}).top(3, true, noLimit), PlainAnalysis::topTerms({{text}}, 3, true, noLimit));
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

TEST(OccurrenceList, GivesEachPlaceAsAListOfCopiesWould)
{
    NastyText nasty(21);
    for (int round = 0; round < 200; ++round) {
        OccurrenceList list;
        QList<WordFrequency::Occurrence> copies;
        for (int document = nasty.number(0, 6); document > 0; --document) {
            const QUuid id = QUuid::createUuid();
            const QString title = QString::number(document);
            const QString text = nasty.next(60);
            std::vector<TextRange> ranges;
            for (int place = nasty.number(0, 4); place > 0; --place) {
                const int start = nasty.number(0, int(text.size()));
                ranges.push_back({start, nasty.number(0, int(text.size()) - start)});
                const TextRange context = WordFrequency::contextOf(ranges.back(), text.size());
                copies.append({{}, id, title, ranges.back(), text.mid(context.location, context.length)});
            }
            list.add(id, title, text, ranges);
        }
        ASSERT_EQ(list.size(), copies.size());
        QSet<QUuid> ids;
        for (qsizetype index = 0; index < copies.size(); ++index) {
            ids.insert(list.at(index).id);
            copies[index].id = list.at(index).id;
            ASSERT_EQ(list.at(index), copies[index]) << "round " << round;
        }
        ASSERT_EQ(ids.size(), copies.size());
        ASSERT_EQ(list, OccurrenceList(list));
        ASSERT_EQ(list == OccurrenceList(), list.isEmpty());
    }
}

TEST(OccurrenceList, ShowsAContextThatReachesAsFarAsTheText)
{
    EXPECT_EQ(WordFrequency::contextOf({100, 5}, 1000), (TextRange{72, 123}));
    EXPECT_EQ(WordFrequency::contextOf({28, 5}, 1000), (TextRange{0, 123}));
    EXPECT_EQ(WordFrequency::contextOf({100, 5}, 110), (TextRange{72, 38}));
    EXPECT_EQ(WordFrequency::contextOf({20, 5}, 25), (TextRange{0, 25}));
}
