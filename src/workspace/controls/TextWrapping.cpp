#include "workspace/controls/TextWrapping.h"

namespace {

/// A run in which no line may end, in UTF-16 code units.
constexpr qsizetype longestWord = 16'000;

bool isBreakingSpace(QChar unit)
{
    return unit.isSpace() && unit != QChar::Nbsp && unit != u'\u2007' && unit != u'\u202F';
}

/// Of ideographs, syllables of Hangul and their like, between which a line may end.
bool standsAlone(QChar unit)
{
    const auto isAmong = [unit](char16_t first, char16_t last) { return unit >= first && unit <= last; };
    return isAmong(0x2E80, 0x9FFF) || isAmong(0xAC00, 0xD7A3) || isAmong(0xF900, 0xFAFF) || isAmong(0xFF00, 0xFFEF)
        || isAmong(0xD840, 0xD8BF); // the first half of an ideograph of a supplementary plane
}

bool hasEndlessWord(QStringView text)
{
    qsizetype length = 0;
    for (const QChar unit : text) {
        length = isBreakingSpace(unit) || standsAlone(unit) ? 0 : length + 1;
        if (length > longestWord)
            return true;
    }
    return false;
}

} // namespace

QTextOption::WrapMode TextWrapping::modeFor(QStringView text)
{
    const bool isEndless = text.size() > longestWord && hasEndlessWord(text);
    return isEndless ? QTextOption::WrapAnywhere : QTextOption::WrapAtWordBoundaryOrAnywhere;
}
