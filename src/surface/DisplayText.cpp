#include "surface/DisplayText.h"

#include "platform/UnpairedSurrogates.h"

namespace {

constexpr char16_t lineFeed = u'\n';
constexpr char16_t carriageReturn = u'\r';
constexpr char16_t lineSeparator = 0x2028;
constexpr char16_t paragraphSeparator = 0x2029;
constexpr char16_t ideographicSpace = 0x3000;
constexpr char16_t zeroWidthSpace = 0x200B;
constexpr char16_t combiningGraphemeJoiner = 0x034F;
constexpr char16_t replacementCharacter = 0xFFFD;

/// A long paragraph is split at the first space after so many units.
constexpr qsizetype pieceLength = 4'000;

/// An invisible unit for the CR of CR LF. After a letter it must combine with it, so that the caret stops only once at
/// the line's end. After a space it must not: a space with a mark may be wrapped to a line of its own, a zero width
/// space never is.
char16_t standInForCarriageReturn(QStringView text, qsizetype index)
{
    const bool followsLetter = index > 0 && !text[index - 1].isSpace();
    return followsLetter ? combiningGraphemeJoiner : zeroWidthSpace;
}

char16_t shownAs(QStringView text, qsizetype index)
{
    const char16_t unit = text[index].unicode();
    const bool isOrdinary = (unit >= 0x20 && unit < lineSeparator) || (unit > paragraphSeparator && unit < 0xFDD0);
    if (isOrdinary)
        return unit;
    switch (unit) {
    case carriageReturn:
        return index + 1 < text.size() && text[index + 1] == lineFeed ? standInForCarriageReturn(text, index)
                                                                      : lineFeed;
    case paragraphSeparator:
        return lineFeed;
    case 0: // the text engine treats these four as line or object marks
    case QChar::ObjectReplacementCharacter:
    case 0xFDD0:
    case 0xFDD1:
        return replacementCharacter;
    default:
        return unit;
    }
}

QString withoutTroublesomeUnits(const QString &given)
{
    const QString text = replaceUnpairedSurrogates(given);
    QString display = text;
    QChar *written = nullptr; // not detached before a unit changes: most texts stay shared
    for (qsizetype index = 0; index < text.size(); ++index) {
        const char16_t shown = shownAs(text, index);
        if (shown == text[index])
            continue;
        if (!written)
            written = display.data();
        written[index] = QChar(shown);
    }
    return display;
}

bool canBecomeBlockEnd(QChar unit)
{
    return unit == u' ' || unit == ideographicSpace || unit == lineSeparator;
}

void splitParagraph(QString &text, qsizetype start, qsizetype end)
{
    while (end - start > DisplayText::maxParagraph) {
        qsizetype split = start + pieceLength;
        while (split < end && !canBecomeBlockEnd(text.at(split)))
            ++split;
        if (split == end)
            return;
        text[split] = QChar(lineFeed);
        start = split + 1;
    }
}

bool endsParagraph(QChar unit)
{
    return unit == lineFeed || unit == carriageReturn || unit == paragraphSeparator;
}

} // namespace

QString DisplayText::of(const QString &text)
{
    QString display = withoutTroublesomeUnits(text);
    for (qsizetype start = 0; start < display.size();) {
        const qsizetype found = display.indexOf(QChar(lineFeed), start);
        const qsizetype end = found < 0 ? display.size() : found;
        splitParagraph(display, start, end);
        start = end + 1;
    }
    return display;
}

qint64 DisplayText::outsideLineBreak(QStringView text, qint64 position)
{
    const bool isInside =
        position > 0 && position < text.size() && text[position] == lineFeed && text[position - 1] == carriageReturn;
    return isInside ? position - 1 : position;
}

TextRange DisplayText::paragraphAt(QStringView text, qint64 position)
{
    qint64 start = outsideLineBreak(text, position);
    while (start > 0 && !endsParagraph(text[start - 1]))
        --start;
    qint64 end = outsideLineBreak(text, position);
    while (end < text.size() && !endsParagraph(text[end]))
        ++end;
    if (end < text.size())
        ++end;
    if (outsideLineBreak(text, end) != end)
        ++end;
    return {start, end - start};
}
