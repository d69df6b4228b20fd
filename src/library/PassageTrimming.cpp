#include "library/PassageTrimming.h"

#include "records/TextTrimming.h"

#include <algorithm>
#include <limits>

namespace {

qint64 endOf(const TextRange &range)
{
    qint64 end = 0;
    if (!__builtin_add_overflow(range.location, range.length, &end))
        return end;
    return range.length > 0 ? std::numeric_limits<qint64>::max() : std::numeric_limits<qint64>::min();
}

bool isBlank(QChar unit)
{
    return TextTrimming::isBlank(unit.unicode()) || TextTrimming::isLineBreak(unit.unicode());
}

} // namespace

TextRange PassageTrimming::passage(QStringView text, const TextRange &range)
{
    const qint64 size = text.size();
    qint64 start = std::clamp<qint64>(range.location, 0, size);
    qint64 end = std::min(endOf(range), size);
    while (start < end && isBlank(text[start]))
        ++start;
    while (start < end && isBlank(text[end - 1]))
        --end;
    return start < end ? TextRange{start, end - start} : TextRange{};
}

bool PassageTrimming::liesIn(QStringView text, const TextRange &range)
{
    return range.location >= 0 && range.length >= 1 && range.length <= text.size()
        && range.location <= text.size() - range.length;
}
