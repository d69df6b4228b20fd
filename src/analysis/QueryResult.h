#pragma once

#include "records/Snippet.h"
#include "records/TextRange.h"

#include <QList>
#include <QString>
#include <QUuid>

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
