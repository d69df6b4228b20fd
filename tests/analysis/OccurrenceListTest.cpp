#include "analysis/OccurrenceList.h"
#include "support/NastyText.h"

#include <gtest/gtest.h>

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
