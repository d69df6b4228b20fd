#pragma once

#include "records/TextRange.h"

#include <QSet>
#include <QString>
#include <QStringView>
#include <QUuid>

#include <variant>

/// What a term is, and how a text splits into them. All positions in UTF-16 code units.
///
/// A text is read unit by unit. A word is a run of letters, marks and numbers; a run of ideographs gives its
/// overlapping pairs, or the one ideograph it consists of. Everything else separates, halves of surrogate pairs
/// included. Terms are lower case, and canonically equivalent terms are one. A minimum length counts grapheme clusters;
/// neither it nor the stop words concern ideographs.
namespace WordFrequency {

struct AllDocuments {
    bool operator==(const AllDocuments &) const = default;
};
struct InDocument {
    QUuid documentID;
    bool operator==(const InDocument &) const = default;
};
/// Only the tokens that share a unit with a passage coded with the code.
struct InCode {
    QUuid codeID;
    bool operator==(const InCode &) const = default;
};
using Scope = std::variant<AllDocuments, InDocument, InCode>;

struct Item {
    QString term;
    qint64 count = 0;
    bool operator==(const Item &) const = default;
};

/// One place where a term stands.
struct Occurrence {
    QUuid id; ///< made anew for each listing, never stored
    QUuid documentID;
    QString documentTitle;
    TextRange range;
    QString context; ///< the text at `contextOf(range)`, as it stands
    bool operator==(const Occurrence &) const = default;
};

/// 136 English words in lower case.
[[nodiscard]] const QSet<QString> &stopwords();

/// What is shown around a token: from 28 units before it to 90 behind it, as far as the text goes.
[[nodiscard]] TextRange contextOf(const TextRange &token, qsizetype textLength);

} // namespace WordFrequency
