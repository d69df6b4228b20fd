#include "Corpus.h"
#include "Row.h"

#include "analysis/CompoundQuery.h"
#include "analysis/TermCounter.h"
#include "analysis/TermOccurrences.h"
#include "records/TextStats.h"
#include "support/PlainAnalysis.h"

#include <random>

using namespace Qt::StringLiterals;

namespace {

QList<PlainAnalysis::Source> sourcesOf(const QList<QString> &texts)
{
    QList<PlainAnalysis::Source> sources;
    for (const QString &text : texts)
        sources.append({text});
    return sources;
}

BenchRow wordCountRow()
{
    return {"4 word count over 100 MB", [] {
                const QList<QString> texts = largeCorpus().texts();
                return BenchRow::Jobs{
                    .straightforward = [=] { keep(PlainAnalysis::topTerms(sourcesOf(texts), 3, true, 50).size()); },
                    .ours =
                        [=] {
                            TermCounter counter;
                            for (const QString &text : texts)
                                counter.add(text);
                            keep(counter.top(3, true, 50).size());
                        },
                    .megabytes = largeCorpus().megabytes(),
                };
            }};
}

BenchRow recountRow()
{
    return {"4 word count once more, with other settings", [] {
                const QList<QString> texts = largeCorpus().texts();
                const auto counter = std::make_shared<TermCounter>();
                for (const QString &text : texts)
                    counter->add(text);
                return BenchRow::Jobs{
                    .straightforward = [=] { keep(PlainAnalysis::topTerms(sourcesOf(texts), 4, false, 100).size()); },
                    .ours = [=] { keep(counter->top(4, false, 100).size()); },
                };
            }};
}

BenchRow occurrencesRow()
{
    return {"5 occurrences of a term in 100 MB", [] {
                const QList<QString> texts = largeCorpus().texts();
                TermCounter counter;
                for (const QString &text : texts)
                    counter.add(text);
                const QString term = counter.top(6, true, 40).last().term;
                return BenchRow::Jobs{
                    .straightforward =
                        [=] {
                            size_t found = 0;
                            for (const QString &text : texts)
                                found += PlainAnalysis::occurrences({text}, term, 3, true).size();
                            keep(found);
                        },
                    .ours =
                        [=] {
                            size_t found = 0;
                            for (const QString &text : texts)
                                found += TermOccurrences::occurrences(text, term, 3, true, {}).size();
                            keep(found);
                        },
                    .megabytes = largeCorpus().megabytes(),
                };
            }};
}

BenchRow intersectionRow()
{
    return {"8 all of two codes, 2 x 20,000 codings of one document", [] {
                std::mt19937 random(6);
                const QList<QUuid> codeIDs{QUuid::createUuid(), QUuid::createUuid()};
                std::vector<Coding> codings;
                for (int index = 0; index < 40'000; ++index) {
                    Coding coding;
                    coding.codeID = codeIDs.at(index % 2);
                    coding.start = qint64(random() % 5'000'000);
                    coding.length = 20 + qint64(random() % 200);
                    codings.push_back(coding);
                }
                return BenchRow::Jobs{
                    .straightforward = [=] { keep(PlainAnalysis::intersectCodings(codings, codeIDs).size()); },
                    .ours = [=] { keep(CompoundQuery::intersectCodings(codings, codeIDs).size()); },
                    .items = 40'000,
                };
            }};
}

template <typename Plain, typename Ours>
BenchRow statisticRow(const std::string &name, Plain plain, Ours ours)
{
    return {name, [=] {
                const QList<QString> texts = largeCorpus().texts();
                const auto over = [texts](auto count) {
                    return [=] {
                        qint64 total = 0;
                        for (const QString &text : texts)
                            total += count(text);
                        keep(total);
                    };
                };
                return BenchRow::Jobs{
                    .straightforward = over(plain), .ours = over(ours), .megabytes = largeCorpus().megabytes()};
            }};
}

} // namespace

BenchRows analysisRows()
{
    return {
        wordCountRow(),
        recountRow(),
        occurrencesRow(),
        intersectionRow(),
        statisticRow(
            "9 wordCount", [](const QString &text) { return PlainAnalysis::wordCount(text); },
            [](const QString &text) { return TextStats::wordCount(text); }),
        statisticRow(
            "9 charCount", [](const QString &text) { return PlainAnalysis::characterCount(text); },
            [](const QString &text) { return TextStats::characterCount(text); }),
    };
}
