#pragma once

#include "records/TextRange.h"

#include <QString>
#include <QUuid>

/// A coded passage as the text surface shows it.
struct TextHighlight {
    QUuid codingID;
    TextRange range; ///< may lie outside the text: it is cut at the end, or left out
    QString colorHex;
    QString name; ///< the code's name

    bool operator==(const TextHighlight &) const = default;
};
