#pragma once

#include "records/Code.h"
#include "records/Coding.h"
#include "records/Document.h"
#include "records/Project.h"

#include <QByteArray>
#include <QList>

namespace RefiQdpx {

struct ExportInput {
    Project project;
    QList<Document> documents; ///< those to write, with their texts
    QList<Code> codes; ///< all of the project
    QList<Coding> codings; ///< may hold more than those of `documents`
};

/// Writes the archive to `destination`, in place of a file that is there; if that fails, no file is left there. Throws
/// FileError or RefiError.
void exportArchive(const ExportInput &input, const QString &destination);

/// The project document, in UTF-8. A coding whose code isn't among the codes, or that lies outside its text, is left
/// out; one that reaches past the end is cut there. Nothing but the identifiers of selections differs from call to
/// call. Costs O(n log n).
[[nodiscard]] QByteArray buildProjectXML(const ExportInput &input);
/// The codebook alone, in UTF-8.
[[nodiscard]] QByteArray buildCodebookXML(const QList<Code> &codes);

} // namespace RefiQdpx
