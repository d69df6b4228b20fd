#pragma once

#include "records/Code.h"
#include "records/ExcerptHit.h"

#include <QList>

/// A code with its passages, in the order they are listed under it.
struct ExportCodeGroup {
    Code code;
    QList<ExcerptHit> hits;

    bool operator==(const ExportCodeGroup &) const = default;
};
