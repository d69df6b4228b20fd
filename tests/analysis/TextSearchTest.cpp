#include "analysis/TextSearch.h"
#include "analysis/TextMatches.h"
#include "support/NastyText.h"
#include "support/PlainAnalysis.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// The code points of the text; an unpaired surrogate counts as one.
std::vector<TextRange> charactersOf(const QString &text)
{
    std::vector<TextRange> characters;
    for (qsizetype at = 0; at < text.size(); at += characters.back().length) {
        const bool isPair = at + 1 < text.size() && text[at].isHighSurrogate() && text[at + 1].isLowSurrogate();
        characters.push_back({at, isPair ? 2 : 1});
    }
    return characters;
}

bool plainlyNeedsLowering(const QString &text)
{
    return std::ranges::any_of(charactersOf(text), [&](const TextRange &range) {
        const QString character = text.mid(range.location, range.length);
        const QString lowered = PlainAnalysis::lowered(character);
        return lowered.size() != character.size() || (range.length == 2 && lowered != character);
    });
}

/// Without case and spelling.
QString plain(QStringView text)
{
    return PlainAnalysis::composed(PlainAnalysis::lowered(text));
}

/// Tries every stretch that separates no letter from its marks.
TextRange plainFirstIn(const QString &text, const QString &term)
{
    QList<qsizetype> edges;
    for (const auto &[at, length] : charactersOf(text)) {
        const char32_t character =
            length == 2 ? QChar::surrogateToUcs4(text[at], text[at + 1]) : char32_t(text[at].unicode());
        if (at == 0 || QChar::combiningClass(character) == 0)
            edges.append(at);
    }
    edges.append(text.size());
    for (const qsizetype start : std::as_const(edges)) {
        for (const qsizetype end : std::as_const(edges)) {
            if (end > start && plain(QStringView(text).sliced(start, end - start)) == plain(term))
                return {start, end - start};
        }
    }
    return {};
}

/// Notes for each unit of the lowered text which units of the text it came from.
std::vector<TextRange> plainAllIn(const QString &text, const QString &needle)
{
    QString lowered;
    QList<TextRange> origins;
    for (const TextRange &origin : charactersOf(text)) {
        lowered += PlainAnalysis::lowered(QStringView(text).sliced(origin.location, origin.length));
        origins.resize(lowered.size(), origin);
    }
    const QString wanted = PlainAnalysis::lowered(needle);
    std::vector<TextRange> matches;
    for (qsizetype at = 0; !wanted.isEmpty() && at + wanted.size() <= lowered.size(); ++at) {
        if (lowered.mid(at, wanted.size()) != wanted)
            continue;
        const qint64 start = origins[at].location;
        at += wanted.size() - 1;
        matches.push_back({start, origins[at].end() - start});
    }
    return matches;
}

} // namespace

TEST(TextSearch, FindsInNastyTextsWhatThePlainWayFinds)
{
    NastyText nasty(9);
    for (int round = 0; round < 5'000; ++round) {
        const QString text = nasty.next(60);
        const bool needsLowering = plainlyNeedsLowering(text);
        ASSERT_EQ(TextSearch::needsLowering(text), needsLowering) << "round " << round;
        ASSERT_EQ(TextSearch::needsLowering<PlainUnitBlock>(text), needsLowering) << "round " << round;
        const int start = nasty.number(-2, int(text.size()) + 2);
        const QString needle =
            nasty.onceIn(4) ? nasty.next(3) : text.mid(std::max(start, 0), nasty.number(0, 20)).toUpper();
        const bool isIn = PlainAnalysis::firstInLowered(text, needle) >= 0;
        const TextSearch search(needle);
        ASSERT_EQ(search.isIn(text), isIn) << "round " << round;
        ASSERT_EQ(search.isInLowered(text, nasty.number(1, 8)), isIn) << "round " << round;
        if (needsLowering)
            continue;
        const qsizetype first = PlainAnalysis::firstInLowered(text, needle, std::max(start, 0));
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
        const int from = random.number(0, 20'000);
        const qsizetype first = PlainAnalysis::firstInLowered(text, needle, from);
        ASSERT_EQ(search.firstIn(text, from), first) << "round " << round;
        ASSERT_EQ(search.firstIn<PlainUnitBlock>(text, from), first) << "round " << round;
    }
}

TEST(TextSearch, TakesTimeForTheTextAloneNotForTheNeedleToo)
{
    // Comparing the whole search text at every place would take an hour.
    const QString needle = QString(500'000, u'a') + u'b' + QString(500'000, u'a');
    const QString text = QString(3'000'000, u'A');
    EXPECT_EQ(TextSearch(needle).firstIn(text + needle, 0), 3'000'000);
}

TEST(TextMatches, FindTheFirstTermThatTryingEveryStretchFinds)
{
    NastyText texts(41);
    int foundCount = 0;
    for (int round = 0; round < 1500; ++round) {
        const QString text = texts.next(6).left(40);
        const QString term = texts.onceIn(4) ? texts.next(1) : text.mid(texts.number(0, 6), texts.number(1, 4));
        const TextRange found = TextMatches::firstIn(text, term);
        ASSERT_EQ(found, plainFirstIn(text, term)) << "round " << round;
        foundCount += found.length > 0 ? 1 : 0;
    }
    EXPECT_GT(foundCount, 300);
}

TEST(TextMatches, FindAllPlacesThatGoingUnitByUnitFinds)
{
    NastyText texts(42);
    int foundCount = 0;
    for (int round = 0; round < 4000; ++round) {
        const QString text = texts.next(20);
        const QString needle =
            texts.onceIn(4) ? texts.next(1) : text.mid(texts.number(0, 20), texts.number(1, 3)).toUpper();
        if (!needle.isValidUtf16())
            continue;
        const std::vector<TextRange> found = TextMatches::allIn(text, needle);
        ASSERT_EQ(found, plainAllIn(text, needle)) << "round " << round;
        foundCount += int(found.size());
    }
    EXPECT_GT(foundCount, 1000);
}
