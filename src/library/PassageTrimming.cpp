#include "library/PassageTrimming.h"

#include "analysis/SaturatingArithmetic.h"
#include "records/TextTrimming.h"

#include <algorithm>

namespace {

bool isBlank(QChar unit)
{
    return TextTrimming::isBlank(unit.unicode()) || TextTrimming::isLineBreak(unit.unicode());
}

} // namespace

TextRange PassageTrimming::passage(QStringView text, const TextRange &range)
{
    const qint64 size = text.size();
    qint64 start = std::clamp<qint64>(range.location, 0, size);
    qint64 end = std::min(saturatingAdd(range.location, range.length), size);
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
