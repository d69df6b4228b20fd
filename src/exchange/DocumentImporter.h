#pragma once

#include <QSet>
#include <QString>

#include <functional>

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

/// Asked now and then where a file may take long.
using MayGoOn = std::function<bool()>;
inline bool always()
{
    return true;
}

/// Reads the file as its extension says, and as plain text if that says nothing. The text may be empty or blank.
/// Throws ImportError, FileError if the bytes can't be read, or ImportStopped when `mayGoOn` says no.
[[nodiscard]] Extracted extract(const QString &path, const MayGoOn &mayGoOn = always);
/// The main text of a Word document. Throws ImportError or ImportStopped.
[[nodiscard]] QString readDocx(const QString &path, const MayGoOn &mayGoOn = always);
/// The pages that have text, an empty line between them. Throws ImportError or ImportStopped.
[[nodiscard]] QString readPDF(const QString &path, const MayGoOn &mayGoOn = always);

} // namespace DocumentImporter
