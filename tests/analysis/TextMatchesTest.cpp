#include "analysis/TextMatches.h"
#include "support/NastyText.h"
#include "support/PlainAnalysis.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

bool isPairAt(const QString &text, qsizetype position)
{
    return position + 1 < text.size() && text[position].isHighSurrogate() && text[position + 1].isLowSurrogate();
}

/// Case and spelling taken away.
QString plain(QStringView text)
{
    return PlainAnalysis::composed(PlainAnalysis::lowered(text));
}

/// Where no letter is separated from its marks.
QList<qsizetype> edgesOf(const QString &text)
{
    QList<qsizetype> edges;
    for (qsizetype position = 0; position < text.size(); position += isPairAt(text, position) ? 2 : 1) {
        const char32_t character = isPairAt(text, position) ? QChar::surrogateToUcs4(text[position], text[position + 1])
                                                            : text[position].unicode();
        if (position == 0 || QChar::combiningClass(character) == 0)
            edges.append(position);
    }
    edges.append(text.size());
    return edges;
}

/// Tries every stretch.
TextRange plainFirstIn(const QString &text, const QString &term)
{
    const QList<qsizetype> edges = edgesOf(text);
    for (const qsizetype start : edges) {
        for (const qsizetype end : edges) {
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
    for (qsizetype position = 0; position < text.size(); position += isPairAt(text, position) ? 2 : 1) {
        const TextRange origin{position, isPairAt(text, position) ? 2 : 1};
        lowered += PlainAnalysis::lowered(QStringView(text).sliced(position, origin.length));
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

TEST(TextMatches, FindTheFirstTermThatTryingEveryStretchFinds)
{
    NastyText texts(41);
    int foundCount = 0;
    for (int turn = 0; turn < 1500; ++turn) {
        const QString text = texts.next(6).left(40);
        const QString term = texts.onceIn(4) ? texts.next(1) : text.mid(texts.number(0, 6), texts.number(1, 4));
        const TextRange found = TextMatches::firstIn(text, term);
        ASSERT_EQ(found, plainFirstIn(text, term)) << turn;
        foundCount += found.length > 0 ? 1 : 0;
    }
    EXPECT_GT(foundCount, 300);
    EXPECT_EQ(TextMatches::firstIn(u"\u0130\u0130 headphones phone", u"PHONE"), (TextRange{7, 5}));
}

TEST(TextMatches, FindAllPlacesThatGoingUnitByUnitFinds)
{
    NastyText texts(42);
    int foundCount = 0;
    for (int turn = 0; turn < 4000; ++turn) {
        const QString text = texts.next(20);
        const QString needle =
            texts.onceIn(4) ? texts.next(1) : text.mid(texts.number(0, 20), texts.number(1, 3)).toUpper();
        if (!needle.isValidUtf16())
            continue;
        const std::vector<TextRange> found = TextMatches::allIn(text, needle);
        ASSERT_EQ(found, plainAllIn(text, needle)) << turn;
        foundCount += int(found.size());
    }
    EXPECT_GT(foundCount, 1000);
}
