#include "records/RGBComponents.h"

#include "records/TextTrimming.h"

#include <QString>

#include <algorithm>

namespace {

bool isHexDigit(QChar character)
{
    const char16_t unit = character.unicode();
    return (unit >= u'0' && unit <= u'9') || (unit >= u'a' && unit <= u'f') || (unit >= u'A' && unit <= u'F');
}

} // namespace

std::optional<RGBComponents> RGBComponents::from(QStringView hex)
{
    QStringView digits = TextTrimming::trimmed(hex);
    if (digits.startsWith(u'#'))
        digits = digits.sliced(1);
    // QStringView::toUInt would take a sign or blanks for a number.
    if (digits.size() != 6 || !std::ranges::all_of(digits, isHexDigit))
        return {};
    const uint value = digits.toUInt(nullptr, 16);
    const auto component = [&](int shift) { return double((value >> shift) & 0xFF) / 255.0; };
    return RGBComponents{component(16), component(8), component(0)};
}
