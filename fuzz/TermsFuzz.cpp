#include "InputReader.h"
#include "Require.h"
#include "analysis/TermCounter.h"
#include "analysis/TermOccurrences.h"
#include "analysis/TextSearch.h"
#include "records/TextStats.h"
#include "support/PlainAnalysis.h"

namespace {

PlainAnalysis::Source source(InputReader &input)
{
    PlainAnalysis::Source result;
    const int passages = input.byte() % 8;
    const QString text = input.units(input.below(1'000));
    if (passages > 0) {
        result.passages.emplace();
        for (int index = 0; index < passages; ++index)
            result.passages->push_back(input.range(text.size()));
        std::ranges::sort(*result.passages, {}, &TextRange::location);
    }
    result.text = text;
    return result;
}

void checkStats(QStringView text)
{
    require(TextStats::wordCount(text) == PlainAnalysis::wordCount(text));
    require(TextStats::characterCount(text) == PlainAnalysis::characterCount(text));
}

void checkSearch(QStringView text, QStringView needle)
{
    const TextSearch search(needle);
    const qsizetype plain = PlainAnalysis::firstInLowered(text, needle);
    require(search.isIn(text) == (plain >= 0));
    if (!TextSearch::needsLowering(text))
        require(search.firstIn(text, 0) == plain);
}

void checkTerms(const PlainAnalysis::Source &source, qsizetype minLength, bool ignoresStopwords)
{
    constexpr qsizetype all = 100'000;
    TermCounter counter;
    if (source.passages)
        counter.add(source.text, *source.passages);
    else
        counter.add(source.text);
    const QList<WordFrequency::Item> terms = counter.top(minLength, ignoresStopwords, all);
    require(terms == PlainAnalysis::topTerms({source}, minLength, ignoresStopwords, all));
    for (const WordFrequency::Item &item : terms) {
        const auto found =
            TermOccurrences::occurrences(source.text, item.term, minLength, ignoresStopwords, source.passages);
        require(qint64(found.size()) == item.count);
    }
}

} // namespace

/// Fast counting and searching agree with their plain versions on any text.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    InputReader input(data, size);
    const int settings = input.byte();
    const QString needle = input.units(input.byte() % 8);
    const PlainAnalysis::Source text = source(input);
    checkStats(text.text);
    checkSearch(text.text, needle);
    checkTerms(text, settings % 6, settings >= 128);
    return 0;
}
