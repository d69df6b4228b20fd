#pragma once

#include "records/TextRange.h"

#include <QUuid>

/// Asks the reader to open a passage. The rising token makes a second request for the same passage another one.
struct RevealRequest {
    QUuid documentID;
    QUuid codingID; ///< the item that asked: a coding, or the identity of a row of results
    TextRange range;
    qint64 token = 0;

    bool operator==(const RevealRequest &) const = default;
};
