#pragma once

#include <QSet>
#include <QString>

/// Reads one file of any supported kind as plain text. The file is not needed afterwards.
namespace DocumentImporter {

struct Extracted {
    QString text; ///< not trimmed, line ends as in the file
    QString sourceKind; ///< what the text came from: a lower-case extension
};

/// Lower-case, without a dot.
[[nodiscard]] const QSet<QString> &supportedExtensions();
/// What follows the last dot of the file's name, in lower case; empty for a name without a dot or with a leading one.
[[nodiscard]] QString extension(const QString &path);

/// Reads the file as its extension says, and as plain text if that says nothing. The text may be empty or blank.
/// Throws ImportError, or FileError if the bytes can't be read.
[[nodiscard]] Extracted extract(const QString &path);
/// The main text of a Word document. Throws ImportError.
[[nodiscard]] QString readDocx(const QString &path);
/// The pages that have text, an empty line between them. Throws ImportError.
[[nodiscard]] QString readPDF(const QString &path);

} // namespace DocumentImporter
