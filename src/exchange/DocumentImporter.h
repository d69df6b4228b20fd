#pragma once

#include "exchange/ExchangeError.h"

#include <QSet>
#include <QString>

#include <functional>

/// Why a file gave no text. If its bytes can't be read, that is a FileError instead.
class ImportError : public ExchangeError {
public:
    enum class Kind {
        unreadable, ///< not what its extension says, damaged, or locked
        noTextLayer, ///< no page has text
        empty,
    };

    /// `fileName` is the last component of the path, with its extension; `Kind::empty` doesn't mention it.
    explicit ImportError(Kind kind, const QString &fileName = {});
};

/// Reads one file of any supported kind as plain text.
namespace DocumentImporter {

struct Extracted {
    QString text; ///< untrimmed, with the file's line ends
    QString sourceKind; ///< a lower-case extension
};

/// Lower-case, without a dot.
[[nodiscard]] const QSet<QString> &supportedExtensions();
/// What follows the last dot of the file's name, in lower case; empty without a dot, or if it is the first character.
[[nodiscard]] QString extension(const QString &path);

/// Asked now and then during long steps.
using MayGoOn = std::function<bool()>;
inline const MayGoOn always = [] { return true; };

/// Reads the file as its extension says, as plain text if that is none of the others. The text may be empty or blank.
/// Throws ImportError, FileError if the bytes can't be read, or ImportStopped when `mayGoOn` says no.
[[nodiscard]] Extracted extract(const QString &path, const MayGoOn &mayGoOn = always);
/// The main text of a Word document. Throws ImportError or ImportStopped.
[[nodiscard]] QString readDocx(const QString &path, const MayGoOn &mayGoOn = always);
/// The pages that have text, an empty line between them. Throws ImportError or ImportStopped.
[[nodiscard]] QString readPDF(const QString &path, const MayGoOn &mayGoOn = always);

} // namespace DocumentImporter
