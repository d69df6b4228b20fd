#include "analysis/TermMatch.h"

#include "records/CharacterTable.h"

#include <vector>

namespace {

constexpr qsizetype inside = -1;

/// A text in which spellings that count as the same are the same, and where each unit of it comes from.
struct Folded {
    QString units;
    /// For each unit, and for the end: where it begins in the original, or `inside` a letter.
    std::vector<qsizetype> origins;
};

char32_t characterAt(QStringView text, qsizetype position)
{
    const QChar unit = text[position];
    if (unit.isHighSurrogate() && position + 1 < text.size() && text[position + 1].isLowSurrogate())
        return QChar::surrogateToUcs4(unit, text[position + 1]);
    return unit.unicode();
}

/// Behind the character at `position` and the marks that belong to it.
qsizetype endOfLetter(QStringView text, qsizetype position)
{
    do
        position += QChar::requiresSurrogates(characterAt(text, position)) ? 2 : 1;
    while (position < text.size() && QChar::combiningClass(characterAt(text, position)) != 0);
    return position;
}

QString foldedLetter(QStringView letter)
{
    return CharacterTable::lowered(letter).normalized(QString::NormalizationForm_D);
}

Folded folded(QStringView text)
{
    Folded result;
    result.units.reserve(text.size());
    for (qsizetype start = 0; start < text.size();) {
        const qsizetype end = endOfLetter(text, start);
        result.origins.push_back(start);
        result.units += foldedLetter(text.sliced(start, end - start));
        result.origins.resize(size_t(result.units.size()), inside);
        start = end;
    }
    result.origins.push_back(text.size());
    return result;
}

} // namespace

TextRange TermMatch::firstIn(QStringView text, QStringView term)
{
    const Folded where = folded(text);
    const QString what = folded(term).units;
    if (what.isEmpty())
        return {};
    for (qsizetype at = where.units.indexOf(what); at >= 0; at = where.units.indexOf(what, at + 1)) {
        const qsizetype start = where.origins[size_t(at)];
        const qsizetype end = where.origins[size_t(at + what.size())];
        if (start != inside && end != inside)
            return {start, end - start};
    }
    return {};
}
