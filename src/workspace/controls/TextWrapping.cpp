#include "workspace/controls/TextWrapping.h"

namespace {

/// A run without spaces, in UTF-16 code units. Ideographs may be parted anywhere and don't count.
constexpr qsizetype longestWord = 16'000;

bool hasEndlessWord(QStringView text)
{
    constexpr char16_t firstIdeographic = 0x2E80;
    qsizetype length = 0;
    for (const QChar unit : text) {
        const bool mayBePartedAt = unit.isSpace() || unit.unicode() >= firstIdeographic;
        length = mayBePartedAt ? 0 : length + 1;
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
