#pragma once

#include "analysis/WordFrequency.h"
#include "records/Coding.h"
#include "records/TextRange.h"

#include <QList>
#include <QString>
#include <QStringView>

#include <optional>
#include <span>
#include <vector>

/// What the fast ways of counting, searching and intersecting must find, each written the obvious way: character by
/// character from ICU, in lists of copies. The tests compare with it, the benchmarks run beside it.
namespace PlainAnalysis {

[[nodiscard]] QString lowered(QStringView text);
[[nodiscard]] QString composed(QStringView text);
[[nodiscard]] qint64 wordCount(QStringView text);
[[nodiscard]] qint64 characterCount(QStringView text);

/// A text of which only the tokens in some passages may be asked for.
struct Source {
    QString text;
    std::optional<std::vector<TextRange>> passages = {};
};
struct Token {
    QString term;
    TextRange range;
};
/// All words in text order, then all terms of ideographs in text order.
[[nodiscard]] std::vector<Token> tokens(const Source &source, qsizetype minLength, bool ignoreStopwords);
[[nodiscard]] QList<WordFrequency::Item> topTerms(
    const QList<Source> &sources, qsizetype minLength, bool ignoreStopwords, qsizetype limit);
[[nodiscard]] std::vector<TextRange> occurrences(
    const Source &source, QStringView term, qsizetype minLength, bool ignoreStopwords);

/// The first unit from `from` on where the lowered `needle` stands in the lowered `text`, or −1.
[[nodiscard]] qsizetype firstInLowered(QStringView text, QStringView needle, qsizetype from = 0);

/// Every coding of a code against every stretch that the codes before it share.
[[nodiscard]] std::vector<TextRange> intersectCodings(std::span<const Coding> codings, const QList<QUuid> &codeIDs);

} // namespace PlainAnalysis
