#include "records/TextTrimming.h"

#include "records/CharacterTable.h"

#include <algorithm>

namespace {

constexpr char16_t firstBeyondASCII = 0x80;

template <typename Predicate>
QStringView withoutEnds(QStringView text, Predicate goes)
{
    const auto stays = [&](QChar unit) { return !goes(unit.unicode()); };
    const auto begin = std::find_if(text.begin(), text.end(), stays);
    const auto end = std::find_if(text.rbegin(), std::make_reverse_iterator(begin), stays).base();
    return {begin, end};
}

} // namespace

// ASCII doesn't need the table, so trimming a name doesn't build it.
bool TextTrimming::isBlank(char16_t unit)
{
    if (unit < firstBeyondASCII)
        return unit == u' ' || unit == u'\t';
    return CharacterTable::shared()[unit].has(CharacterTable::blank);
}

bool TextTrimming::isLineBreak(char16_t unit)
{
    if (unit < firstBeyondASCII)
        return unit >= u'\n' && unit <= u'\r';
    return CharacterTable::shared()[unit].has(CharacterTable::lineBreak);
}

QStringView TextTrimming::trimmed(QStringView text)
{
    return withoutEnds(text, [](char16_t unit) { return isBlank(unit) || isLineBreak(unit); });
}

QStringView TextTrimming::trimmedBlanks(QStringView text)
{
    return withoutEnds(text, isBlank);
}
