#include "support/PlainAnalysis.h"

#include <QHash>

#include <unicode/ubrk.h>
#include <unicode/uchar.h>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>

#include <algorithm>
#include <limits>
#include <ranges>

namespace {

enum class Kind { separator, word, ideograph };

Kind kindOf(uint character)
{
    if (u_hasBinaryProperty(UChar32(character), UCHAR_IDEOGRAPHIC))
        return Kind::ideograph;
    constexpr auto wordCategories = U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK;
    return (U_MASK(u_charType(UChar32(character))) & wordCategories) != 0 ? Kind::word : Kind::separator;
}

std::vector<TextRange> runs(const QString &text, Kind kind)
{
    std::vector<TextRange> result;
    for (qsizetype index = 0; index < text.size(); ++index) {
        if (kindOf(text[index].unicode()) != kind)
            continue;
        if (!result.empty() && result.back().end() == index)
            ++result.back().length;
        else
            result.push_back({index, 1});
    }
    return result;
}

qint64 endOf(qint64 start, qint64 length)
{
    qint64 end = 0;
    if (__builtin_add_overflow(start, length, &end))
        return length > 0 ? std::numeric_limits<qint64>::max() : std::numeric_limits<qint64>::min();
    return end;
}

bool isWanted(const PlainAnalysis::Source &source, const TextRange &token)
{
    const auto sharesUnit = [&](const TextRange &passage) {
        const qint64 end = std::min(endOf(passage.location, passage.length), token.end());
        return std::max(passage.location, token.location) < end;
    };
    return !source.passages || std::ranges::any_of(*source.passages, sharesUnit);
}

struct Stretch {
    qint64 lower;
    qint64 upper;
};

std::vector<Stretch> stretchesOf(std::span<const Coding> codings, const QUuid &codeID)
{
    std::vector<Stretch> result;
    for (const Coding &coding : codings) {
        if (coding.codeID == codeID)
            result.push_back({coding.start, endOf(coding.start, std::max<qint64>(coding.length, 1))});
    }
    return result;
}

std::vector<Stretch> pairwise(const std::vector<Stretch> &some, const std::vector<Stretch> &others)
{
    std::vector<Stretch> result;
    for (const Stretch &one : some) {
        for (const Stretch &other : others) {
            const Stretch shared{std::max(one.lower, other.lower), std::min(one.upper, other.upper)};
            if (shared.lower < shared.upper)
                result.push_back(shared);
        }
    }
    return result;
}

std::vector<TextRange> merged(std::vector<Stretch> stretches)
{
    std::ranges::stable_sort(stretches, {}, &Stretch::lower);
    std::vector<TextRange> result;
    qint64 end = 0; // of the last range
    for (const Stretch &stretch : stretches) {
        const bool isApart = result.empty() || end < stretch.lower;
        if (isApart)
            result.push_back({stretch.lower, 0});
        end = isApart ? stretch.upper : std::max(end, stretch.upper);
        if (__builtin_sub_overflow(end, result.back().location, &result.back().length))
            result.back().length = std::numeric_limits<qint64>::max();
    }
    return result;
}

} // namespace

QString PlainAnalysis::lowered(QStringView text)
{
    QString result;
    for (qsizetype index = 0; index < text.size();) {
        const bool isPair =
            text[index].isHighSurrogate() && index + 1 < text.size() && text[index + 1].isLowSurrogate();
        const qsizetype length = isPair ? 2 : 1;
        char16_t lower[8];
        UErrorCode status = U_ZERO_ERROR;
        const int32_t lowerLength = u_strToLower(lower, 8, text.utf16() + index, int32_t(length), "", &status);
        result += QStringView(lower, lowerLength);
        index += length;
    }
    return result;
}

QString PlainAnalysis::composed(QStringView text)
{
    UErrorCode status = U_ZERO_ERROR;
    std::vector<char16_t> buffer(std::size_t(text.size() * 3 + 1)); // no unit composes to more than three
    const int32_t length = unorm2_normalize(unorm2_getNFCInstance(&status), text.utf16(), int32_t(text.size()),
        buffer.data(), int32_t(buffer.size()), &status);
    return QString(reinterpret_cast<const QChar *>(buffer.data()), length);
}

qint64 PlainAnalysis::wordCount(QStringView text)
{
    qint64 count = 0;
    bool inWord = false;
    for (const uint character : text.toUcs4()) {
        const Kind kind = kindOf(character);
        count += kind == Kind::ideograph || (kind == Kind::word && !inWord);
        inWord = kind == Kind::word;
    }
    return count;
}

qint64 PlainAnalysis::characterCount(QStringView text)
{
    UErrorCode status = U_ZERO_ERROR;
    static UBreakIterator *iterator = ubrk_open(UBRK_CHARACTER, "", nullptr, 0, &status);
    ubrk_setText(iterator, text.utf16(), int32_t(text.size()), &status);
    qint64 count = 0;
    while (ubrk_next(iterator) != UBRK_DONE)
        ++count;
    return count;
}

std::vector<PlainAnalysis::Token> PlainAnalysis::tokens(const Source &source, qsizetype minLength, bool ignoreStopwords)
{
    std::vector<Token> result;
    for (const TextRange &run : runs(source.text, Kind::word)) {
        const QString term = lowered(source.text.mid(run.location, run.length));
        const bool isIgnored = ignoreStopwords && WordFrequency::stopwords().contains(term);
        if (characterCount(term) >= minLength && !isIgnored)
            result.push_back({term, run});
    }
    for (const TextRange &run : runs(source.text, Kind::ideograph)) {
        const qint64 length = std::min<qint64>(run.length, 2);
        for (qint64 start = run.location; start + length <= run.end(); ++start)
            result.push_back({source.text.mid(start, length), {start, length}});
    }
    std::erase_if(result, [&](const Token &token) { return !isWanted(source, token.range); });
    return result;
}

QList<WordFrequency::Item> PlainAnalysis::topTerms(
    const QList<Source> &sources, qsizetype minLength, bool ignoreStopwords, qsizetype limit)
{
    QHash<QString, qint64> counts;
    for (const Source &source : sources) {
        for (const Token &token : tokens(source, minLength, ignoreStopwords))
            ++counts[composed(token.term)];
    }
    QList<WordFrequency::Item> items;
    for (auto entry = counts.cbegin(); entry != counts.cend(); ++entry)
        items.append({entry.key(), entry.value()});
    std::ranges::sort(items, [](const WordFrequency::Item &a, const WordFrequency::Item &b) {
        return a.count != b.count ? a.count > b.count
                                  : std::ranges::lexicographical_compare(a.term.toUcs4(), b.term.toUcs4());
    });
    return items.first(std::min(limit, items.size()));
}

std::vector<TextRange> PlainAnalysis::occurrences(
    const Source &source, QStringView term, qsizetype minLength, bool ignoreStopwords)
{
    std::vector<TextRange> result;
    for (const Token &token : tokens(source, minLength, ignoreStopwords)) {
        if (composed(token.term) == composed(term))
            result.push_back(token.range);
    }
    return result;
}

qsizetype PlainAnalysis::firstInLowered(QStringView text, QStringView needle, qsizetype from)
{
    return lowered(text).indexOf(lowered(needle), from);
}

std::vector<TextRange> PlainAnalysis::intersectCodings(std::span<const Coding> codings, const QList<QUuid> &codeIDs)
{
    std::vector<Stretch> shared;
    for (qsizetype index = 0; index < codeIDs.size(); ++index) {
        const std::vector<Stretch> stretches = stretchesOf(codings, codeIDs[index]);
        shared = index == 0 ? stretches : pairwise(shared, stretches);
        if (shared.empty())
            return {};
    }
    return merged(shared);
}
