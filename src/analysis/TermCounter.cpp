#include "analysis/TermCounter.h"

#include "analysis/TextRuns.h"
#include "records/CharacterTable.h"

#include <QAnyStringView>

#include <algorithm>
#include <optional>

namespace {

/// A word of the text, with its first units packed in lower case while it was walked.
struct Word {
    TextRuns::Run run;
    ShortWord packed; ///< the term, if the word is short, Latin-1 in lower case and not complex

    [[nodiscard]] bool isPacked() const
    {
        constexpr quint16 unfit = CharacterTable::complex | CharacterTable::wideLower;
        return (run.traits & unfit) == 0 && run.length() <= ShortWord::maxLength;
    }
};

inline Word wordAt(QStringView text, qsizetype start, const CharacterTable &table)
{
    const char16_t *const units = text.utf16();
    qsizetype position = start;
    quint16 traits = 0;
    const auto packUpToEight = [&] {
        quint64 packed = 0;
        for (int shift = 0; shift < 64 && position < text.size(); shift += 8) {
            const CharacterTable::Entry entry = table[units[position]];
            if (!entry.has(CharacterTable::word))
                break;
            traits |= entry.traits;
            packed |= quint64(quint8(entry.lower)) << shift;
            ++position;
        }
        return packed;
    };
    const quint64 low = packUpToEight();
    const quint64 high = position - start == 8 ? packUpToEight() : 0;
    Word word{{start, position, traits}, {low, high, quint32(position - start)}};
    if (position - start == ShortWord::maxLength)
        TextRuns::extend(word.run, text, CharacterTable::word);
    return word;
}

std::optional<ShortWord> packed(QStringView word)
{
    if (word.isEmpty() || word.size() > ShortWord::maxLength)
        return {};
    ShortWord result{0, 0, quint32(word.size())};
    for (qsizetype index = 0; index < word.size(); ++index) {
        const char16_t unit = word[index].unicode();
        if (unit > 0xFF)
            return {};
        (index < 8 ? result.low : result.high) |= quint64(unit) << (index % 8 * 8);
    }
    return result;
}

// As UTF-16 units, surrogate pairs sort before U+E000…U+FFFF; as code points, after them.
constexpr char16_t inCodePointOrder(char16_t unit)
{
    if (unit >= 0xE000)
        return char16_t(unit - 0x800);
    return unit >= 0xD800 ? char16_t(unit + 0x2000) : unit;
}

bool precedesByCodePoints(const TermRanking::Term &a, const TermRanking::Term &b)
{
    const auto precedes = [](auto first, auto second) {
        for (qsizetype index = 0; index < std::min(first.size(), second.size()); ++index) {
            const char16_t one = inCodePointOrder(first[index].unicode());
            const char16_t other = inCodePointOrder(second[index].unicode());
            if (one != other)
                return one < other;
        }
        return first.size() < second.size();
    };
    return std::visit(precedes, a, b);
}

} // namespace

void TermCounter::add(QStringView text)
{
    count(text, PassageCursor(text.size()));
}

void TermCounter::add(QStringView text, std::span<const TextRange> passages)
{
    if (!passages.empty())
        count(text, PassageCursor(passages, text.size()));
}

void TermCounter::count(QStringView text, PassageCursor isInPassage)
{
    const CharacterTable &table = CharacterTable::shared();
    const auto countWord = [&](const Word &word) {
        if (!isInPassage(word.run.start, word.run.end))
            return;
        const QStringView units = text.sliced(word.run.start, word.run.length());
        if (word.isPacked())
            m_shortWords.add(word.packed);
        else if ((word.run.traits & CharacterTable::complex) == 0)
            m_otherTerms.add(CharacterTable::lowered(units), false);
        else
            addComplexWord(units);
    };
    const auto countIdeographs = [&](const TextRuns::Run &term) {
        if (!isInPassage(term.start, term.end))
            return;
        const QStringView units = text.sliced(term.start, term.length());
        if ((term.traits & CharacterTable::complex) == 0)
            m_bigrams.add(Bigram::from(units));
        else
            addComplexIdeographs(units);
    };
    for (qsizetype position = 0; position < text.size();) {
        const CharacterTable::Entry &entry = table[text.utf16()[position]];
        if (entry.has(CharacterTable::word)) {
            const Word word = wordAt(text, position, table);
            countWord(word);
            position = word.run.end;
        } else if (entry.has(CharacterTable::ideograph)) {
            TextRuns::Run run{position, position, 0};
            TextRuns::extend(run, text, CharacterTable::ideograph);
            TextRuns::forEachIdeographicTerm(run, text, countIdeographs);
            position = run.end;
        } else {
            ++position;
        }
    }
    m_shortWords.flush();
    m_bigrams.flush();
}

// The composed form decides which table counts a word: it may be Latin-1 although the text's spelling isn't.
void TermCounter::addComplexWord(QStringView units)
{
    const QString term = CharacterTable::composed(CharacterTable::lowered(units));
    if (const auto word = packed(term))
        m_shortWords.add(*word);
    else
        m_otherTerms.add(term, false);
}

// An ideograph composes to one ideograph, though perhaps one of a supplementary plane.
void TermCounter::addComplexIdeographs(QStringView ideographs)
{
    const QString term = CharacterTable::composed(ideographs);
    const bool needsPairs = std::ranges::any_of(term, [](QChar unit) { return unit.isSurrogate(); });
    if (needsPairs)
        m_otherTerms.add(term, true);
    else
        m_bigrams.add(Bigram::from(term));
}

QList<WordFrequency::Item> TermCounter::top(qsizetype minLength, bool ignoreStopwords, qsizetype limit) const
{
    TermRanking ranking(limit);
    const auto isIgnored = [&](QLatin1StringView term) {
        return ignoreStopwords && WordFrequency::stopwords().contains(QString(term));
    };
    m_shortWords.forEach([&](QLatin1StringView term, qint64 count) {
        if (ranking.mayKeep(count) && term.size() >= minLength && !isIgnored(term))
            ranking.add(term, count);
    });
    m_bigrams.forEach([&](QStringView term, qint64 count) {
        if (ranking.mayKeep(count))
            ranking.add(term, count);
    });
    m_otherTerms.forEach([&](QStringView term, qint64 clusters, qint64 count) {
        if (ranking.mayKeep(count) && clusters >= minLength)
            ranking.add(term, count);
    });
    return ranking.items();
}

TermRanking::TermRanking(qsizetype limit) : m_limit(std::size_t(std::max<qsizetype>(limit, 0)))
{
}

bool TermRanking::precedes(const Candidate &a, const Candidate &b)
{
    return a.count != b.count ? a.count > b.count : precedesByCodePoints(a.term, b.term);
}

void TermRanking::add(const Term &term, qint64 count)
{
    const Candidate candidate{term, count};
    if (m_kept.size() == m_limit) {
        if (m_limit == 0 || !precedes(candidate, m_kept.front()))
            return;
        std::ranges::pop_heap(m_kept, precedes);
        m_kept.pop_back();
    }
    m_kept.push_back(candidate);
    std::ranges::push_heap(m_kept, precedes);
}

QList<WordFrequency::Item> TermRanking::items() const
{
    std::vector<Candidate> ordered = m_kept;
    std::ranges::sort_heap(ordered, precedes);
    QList<WordFrequency::Item> result;
    result.reserve(qsizetype(ordered.size()));
    for (const auto &[term, count] : ordered)
        result.append({std::visit([](auto view) { return QAnyStringView(view).toString(); }, term), count});
    return result;
}
