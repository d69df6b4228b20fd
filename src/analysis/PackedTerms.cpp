#include "analysis/PackedTerms.h"

std::optional<ShortWord> ShortWord::from(QStringView word)
{
    if (word.isEmpty() || word.size() > longest)
        return {};
    ShortWord packed{0, 0, quint32(word.size())};
    for (qsizetype index = 0; index < word.size(); ++index) {
        const char16_t unit = word[index].unicode();
        if (unit > 0xFF)
            return {};
        (index < 8 ? packed.low : packed.high) |= quint64(unit) << (index % 8 * 8);
    }
    return packed;
}
