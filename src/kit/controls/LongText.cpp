#include "kit/controls/LongText.h"

#include <QRegularExpression>
#include <QTextDocument>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {

/// Of a run in which no line may end, in UTF-16 code units.
constexpr qsizetype maxWordLength = 16'000;

bool isBreakingSpace(QChar unit)
{
    return unit.isSpace() && unit != QChar::Nbsp && unit != u'\u2007' && unit != u'\u202F';
}

/// Ideographs and syllables of Hangul: a line may end between two of them. Not so beside punctuation and small kana,
/// which nobody writes by the thousand.
bool standsAlone(QChar unit)
{
    const auto isAmong = [unit](char16_t first, char16_t last) { return unit >= first && unit <= last; };
    return isAmong(0x3400, 0x4DBF) || isAmong(0x4E00, 0x9FFF) || isAmong(0xAC00, 0xD7A3) || isAmong(0xF900, 0xFAFF)
        || isAmong(0xD840, 0xD8BF); // the first half of an ideograph of a supplementary plane
}

bool hasEndlessWord(QStringView text)
{
    qsizetype length = 0;
    bool stoodAlone = false;
    for (const QChar unit : text) {
        if (unit.isLowSurrogate())
            continue;
        const bool isAlone = standsAlone(unit);
        length = isBreakingSpace(unit) || (isAlone && stoodAlone) ? 0 : length + 1;
        stoodAlone = isAlone;
        if (length > maxWordLength)
            return true;
    }
    return false;
}

} // namespace

QString LongText::shortened(const QString &text, qsizetype maxLength)
{
    if (text.size() <= maxLength)
        return text;
    const bool partsPair = text[maxLength].isLowSurrogate() && text[maxLength - 1].isHighSurrogate();
    return text.left(partsPair ? maxLength - 1 : maxLength) + u'…';
}

void LongText::showToolTip(const QPoint &position, const QString &text, QWidget *owner)
{
    constexpr qsizetype maxUnits = 1'000;
    static const QRegularExpression partOfLongWord(uR"(((?:(?!\s)\X){40})(?!\s))"_s);
    QString breakable = shortened(text, maxUnits);
    breakable.replace(partOfLongWord, u"\\1\u200B"_s); // a tool tip is as wide as its longest word
    QToolTip::showText(position, Qt::convertFromPlainText(breakable), owner);
}

QTextOption::WrapMode LongText::wrapMode(QStringView text)
{
    const bool isEndless = text.size() > maxWordLength && hasEndlessWord(text);
    return isEndless ? QTextOption::WrapAnywhere : QTextOption::WrapAtWordBoundaryOrAnywhere;
}
