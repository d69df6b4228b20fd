#include "surface/DisplayText.h"

namespace {

constexpr char16_t lineFeed = u'\n';
constexpr char16_t carriageReturn = u'\r';
constexpr char16_t lineSeparator = 0x2028;
constexpr char16_t paragraphSeparator = 0x2029;
constexpr char16_t ideographicSpace = 0x3000;
constexpr char16_t zeroWidthSpace = 0x200B;
constexpr char16_t combiningGraphemeJoiner = 0x034F;
constexpr char16_t replacementCharacter = 0xFFFD;

/// A piece of a long paragraph is about this long.
constexpr qsizetype pieceLength = 4'000;

/// Invisible. Behind a letter it forms one character with it, so that the caret stops once at the line's end. Behind a
/// space it must not: a letter may be wrapped onto a line of its own, which a zero width space never is.
char16_t standInForCarriageReturn(QStringView text, qsizetype index)
{
    const bool followsLetter = index > 0 && !text[index - 1].isSpace();
    return followsLetter ? combiningGraphemeJoiner : zeroWidthSpace;
}

bool isHalfPair(QStringView text, qsizetype index)
{
    if (text[index].isHighSurrogate())
        return index + 1 == text.size() || !text[index + 1].isLowSurrogate();
    return index == 0 || !text[index - 1].isHighSurrogate();
}

char16_t shownAs(QStringView text, qsizetype index)
{
    const char16_t unit = text[index].unicode();
    const bool isOrdinary = (unit >= 0x20 && unit < lineSeparator) || (unit > paragraphSeparator && unit < 0xD800);
    if (isOrdinary)
        return unit;
    if (QChar::isSurrogate(unit))
        return isHalfPair(text, index) ? replacementCharacter : unit;
    switch (unit) {
    case carriageReturn:
        return index + 1 < text.size() && text[index + 1] == lineFeed ? standInForCarriageReturn(text, index)
                                                                      : lineFeed;
    case paragraphSeparator:
        return lineFeed;
    case 0: // these five mean something to the text engine
    case QChar::ObjectReplacementCharacter:
    case 0xFDD0:
    case 0xFDD1:
        return replacementCharacter;
    default:
        return unit;
    }
}

QString withoutTroublesomeUnits(const QString &text)
{
    QString display = text;
    QChar *written = nullptr; // most texts need no change and stay shared
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

/// Where to part the paragraph piece from `start` to `end`, or -1: a space near the wished length, else the next one.
qsizetype partingPlace(QStringView text, qsizetype start, qsizetype end)
{
    for (qsizetype index = start + pieceLength; index > start + pieceLength / 2; --index) {
        if (canBecomeBlockEnd(text[index]))
            return index;
    }
    for (qsizetype index = start + pieceLength; index < end; ++index) {
        if (canBecomeBlockEnd(text[index]))
            return index;
    }
    return -1;
}

void partParagraph(QString &text, qsizetype start, qsizetype end)
{
    while (end - start > DisplayText::longestParagraph) {
        const qsizetype place = partingPlace(text, start, end);
        if (place < 0)
            return;
        text[place] = QChar(lineFeed);
        start = place + 1;
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
        partParagraph(display, start, end);
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
