#pragma once

#include "records/Code.h"
#include "records/Coding.h"
#include "records/Document.h"
#include "records/Snippet.h"
#include "records/TextRange.h"

#include <QList>
#include <QString>
#include <QUuid>

#include <array>
#include <span>
#include <vector>

/// What is asked of the coded passages of a project.
struct QuerySpec {
    enum class Mode {
        any, ///< passages coded with at least one of the codes
        all ///< stretches of text where all the codes overlap
    };

    QList<QUuid> codeIDs = {}; ///< in the order chosen, which the summary and the results keep
    Mode mode = Mode::any;
    QString textFilter = {}; ///< as typed; nothing but blanks and line breaks is no filter

    bool operator==(const QuerySpec &) const = default;

    /// In the order they are offered.
    [[nodiscard]] static const std::array<Mode, 2> &modes()
    {
        static constexpr std::array<Mode, 2> all{Mode::any, Mode::all};
        return all;
    }
    [[nodiscard]] static QString label(Mode mode)
    {
        switch (mode) {
        case Mode::any:
            return QStringLiteral("Any of the codes");
        case Mode::all:
            return QStringLiteral("All of the codes");
        }
        Q_UNREACHABLE();
    }
};

/// One passage that a query found.
struct QueryResult {
    QUuid id; ///< made anew by each run, never stored
    QUuid documentID;
    QString documentTitle;
    TextRange range; ///< within the text, at least one unit
    Snippet snippet; ///< the whole text of the passage, as it stands
    QList<QUuid> codeIDs; ///< the one code of the coding, or all codes of the query

    bool operator==(const QueryResult &) const = default;
};

/// Where some codes apply, or all of them at once. A coding of no length covers one unit. Positions in UTF-16 code
/// units; those of codings may be any number.
namespace CompoundQuery {

/// The stretches that lie in at least one coding of every code, ascending and apart from each other. `codings` are
/// those of one document. Ranges that touch don't overlap, but are united. O(n log n).
[[nodiscard]] std::vector<TextRange> intersectCodings(std::span<const Coding> codings, const QList<QUuid> &codeIDs);

/// The passages, clamped to their texts, in the order of `documents` and then of their locations; at the same location
/// in the order of `codings`. Codings of other documents and codes may be among `codings`. No codes, no result.
[[nodiscard]] QList<QueryResult> evaluate(
    const QuerySpec &spec, std::span<const Coding> codings, const QList<Document> &documents);

/// The query in a line, with the codes' present names.
[[nodiscard]] QString summary(const QuerySpec &spec, const QList<Code> &codes);

} // namespace CompoundQuery
