#include "analysis/TextMatches.h"

#include "analysis/TextSearch.h"
#include "records/CharacterTable.h"

namespace {

char32_t characterAt(QStringView text, qsizetype position)
{
    const QChar unit = text[position];
    if (unit.isHighSurrogate() && position + 1 < text.size() && text[position + 1].isLowSurrogate())
        return QChar::surrogateToUcs4(unit, text[position + 1]);
    return unit.unicode();
}

qsizetype endOfCharacter(QStringView text, qsizetype position)
{
    return position + (QChar::requiresSurrogates(characterAt(text, position)) ? 2 : 1);
}

/// The end of the character at `position` and of the marks that belong to it.
qsizetype endOfLetter(QStringView text, qsizetype position)
{
    do
        position = endOfCharacter(text, position);
    while (position < text.size() && QChar::combiningClass(characterAt(text, position)) != 0);
    return position;
}

QString decomposed(QStringView letter)
{
    return CharacterTable::lowered(letter).normalized(QString::NormalizationForm_D);
}

/// A copy of a text with each piece of it folded, which may change its length.
struct FoldedCopy {
    QString text;
    std::vector<qsizetype> origins; ///< where the piece of each unit starts in the original; then the original's length

    template <typename EndOfPiece, typename Fold>
    FoldedCopy(QStringView original, EndOfPiece endOfPiece, Fold fold)
    {
        text.reserve(original.size());
        for (qsizetype start = 0; start < original.size();) {
            const qsizetype end = endOfPiece(original, start);
            text += fold(original.sliced(start, end - start));
            origins.resize(size_t(text.size()), start);
            start = end;
        }
        origins.push_back(original.size());
    }

    [[nodiscard]] bool isWithinPiece(qsizetype unit) const
    {
        return unit > 0 && origins[size_t(unit)] == origins[size_t(unit - 1)];
    }
};

std::vector<TextRange> plainMatches(QStringView text, const TextSearch &search, qsizetype length)
{
    std::vector<TextRange> matches;
    for (qsizetype at = search.firstIn(text, 0); at >= 0; at = search.firstIn(text, at + length))
        matches.push_back({at, length});
    return matches;
}

} // namespace

std::vector<TextRange> TextMatches::allIn(QStringView text, QStringView needle)
{
    const QString lowered = CharacterTable::lowered(needle);
    if (lowered.isEmpty())
        return {};
    if (!TextSearch::needsLowering(text))
        return plainMatches(text, TextSearch(lowered), lowered.size());
    const FoldedCopy copy(text, endOfCharacter, CharacterTable::lowered);
    std::vector<TextRange> matches;
    for (qsizetype at = copy.text.indexOf(lowered); at >= 0; at = copy.text.indexOf(lowered, at + lowered.size())) {
        qsizetype end = at + lowered.size();
        while (copy.isWithinPiece(end)) // a character that became several is shown whole
            ++end;
        const qsizetype start = copy.origins[size_t(at)];
        matches.push_back({start, copy.origins[size_t(end)] - start});
    }
    return matches;
}

TextRange TextMatches::firstIn(QStringView text, QStringView term)
{
    const QString folded = FoldedCopy(term, endOfLetter, decomposed).text;
    if (folded.isEmpty())
        return {};
    const FoldedCopy copy(text, endOfLetter, decomposed);
    for (qsizetype at = copy.text.indexOf(folded); at >= 0; at = copy.text.indexOf(folded, at + 1)) {
        const qsizetype end = at + folded.size();
        if (!copy.isWithinPiece(at) && !copy.isWithinPiece(end)) {
            const qsizetype start = copy.origins[size_t(at)];
            return {start, copy.origins[size_t(end)] - start};
        }
    }
    return {};
}
