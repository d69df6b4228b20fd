#include "analysis/TextMatches.h"
#include "records/CharacterTable.h"
#include "support/Printing.h"
#include "workspace/reader/SelectableTitle.h"

#include <QApplication>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QString randomWords(QRandomGenerator &random, const QStringList &words, int count)
{
    QString text;
    for (; count > 0; --count)
        text += words[random.bounded(int(words.size()))];
    return text;
}

/// Compares at every position: each letter of the text is lowered by itself, and a match takes whole letters.
std::vector<TextRange> plainMatches(const QString &text, const QString &needle)
{
    QString lowered;
    std::vector<TextRange> letters; // of the text, for each unit of `lowered`
    for (qsizetype at = 0; at < text.size();) {
        const bool isPair = text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
        const qsizetype units = isPair ? 2 : 1;
        const QString letter = CharacterTable::lowered(QStringView(text).mid(at, units));
        lowered += letter;
        letters.insert(letters.end(), size_t(letter.size()), {at, units});
        at += units;
    }
    const QString wanted = CharacterTable::lowered(needle);
    std::vector<TextRange> matches;
    for (qsizetype at = 0; !wanted.isEmpty() && at + wanted.size() <= lowered.size();) {
        if (QStringView(lowered).mid(at, wanted.size()) != wanted) {
            ++at;
            continue;
        }
        const qint64 start = letters[size_t(at)].location;
        matches.push_back({start, letters[size_t(at + wanted.size() - 1)].end() - start});
        at += wanted.size();
    }
    return matches;
}

} // namespace

TEST(FindMatches, AreThoseOfAPlainComparison)
{
    const QStringList letters{u"a"_s, u"A"_s, u"b"_s, u" "_s, u"\u0130"_s, u"\u0307"_s, u"\u00DF"_s, u"\u03A3"_s,
        u"\u03C3"_s, u"\u212A"_s, u"k"_s, u"\U00010400"_s, u"\U00010428"_s};
    QRandomGenerator random(3);
    for (int round = 0; round < 3'000; ++round) {
        const QStringList used = letters.mid(0, random.bounded(2) ? 4 : letters.size());
        const QString text = randomWords(random, used, random.bounded(40));
        const QString needle = randomWords(random, used, random.bounded(4));
        ASSERT_EQ(TextMatches::allIn(text, needle), plainMatches(text, needle))
            << needle.toStdString() << " in " << text.toStdString();
    }
}

TEST(SelectableTitle, ShowsUpToSixLinesWholeAtAnyWidth)
{
    const QStringList words{u"interview "_s, u"of "_s, u"\u4E2D\u6587\u5B57\u7B26"_s, u"\u05E9\u05DC\u05D5\u05DD "_s,
        u"\u0639\u0644\u064A\u0643\u0645 "_s, u"\U0001F469 "_s, u"Bundesverfassungsgerichtsentscheidung "_s};
    QRandomGenerator random(6);
    QFont font(u"Inter"_s);
    font.setPointSizeF(16.5);
    SelectableTitle title(font);
    title.show();
    for (int round = 0; round < 300; ++round) {
        title.setTitle(randomWords(random, words, random.bounded(1, 14)));
        title.resize(random.bounded(60, 700), random.bounded(20, 60)); // where it may need a scroll bar
        const int width = random.bounded(60, 700);
        title.resize(width, title.heightForWidth(width));
        QApplication::processEvents();
        int lines = 0;
        for (QTextBlock block = title.document()->begin(); block.isValid(); block = block.next())
            lines += block.layout()->lineCount();
        ASSERT_EQ(title.verticalScrollBar()->maximum() == 0, lines <= 6) << round << ": " << lines;
    }
}
