#pragma once

#include "records/Snippet.h"
#include "records/TextRange.h"

#include <QDateTime>
#include <QString>
#include <QUuid>

/// One coded passage as listed under a code. Not stored.
struct ExcerptHit {
    QUuid id; ///< the id of the coding it shows
    QUuid documentID;
    QString documentTitle;
    Snippet snippet; ///< the whole passage, line feeds as spaces
    qint64 start = 0; ///< UTF-16 code units
    qint64 length = 0; ///< UTF-16 code units
    QDateTime createdAt;

    [[nodiscard]] TextRange range() const noexcept { return {start, length}; }
    bool operator==(const ExcerptHit &) const = default;
};
