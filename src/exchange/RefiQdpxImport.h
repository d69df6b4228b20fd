#pragma once

#include "exchange/ImportStep.h"

#include <QUuid>

class DatabaseQueue;

namespace RefiQdpx {

/// How many records an import has made.
struct ImportSummary {
    qint64 codes = 0;
    qint64 documents = 0;
    qint64 excerpts = 0;

    bool operator==(const ImportSummary &) const = default;
};

/// Reads an archive, of this program or another, and adds its codes, documents and coded passages to the project, all
/// with new identifiers. Unusable parts of a sound archive are skipped silently. All or nothing: when RefiError,
/// XmlError, FileError, DatabaseError or ImportStopped is thrown, nothing was added. `mayImport` is asked inside the
/// transaction and must not use the queue.
ImportSummary importQdpx(
    const QString &archive, DatabaseQueue &queue, const QUuid &projectID, const MayImport &mayImport = {});

} // namespace RefiQdpx
