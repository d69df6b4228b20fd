#pragma once

#include "records/TextRange.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>
#include <vector>

class QIODevice;

namespace RefiQdpx {

/// What an import takes from a project document, as plain values, since codes may stand behind the passages that refer
/// to them.
struct ParsedDocument {
    struct ParsedCode {
        QString name;
        QString colorHex; ///< normalised
        std::optional<QString> memo; ///< untrimmed
        std::optional<size_t> parent; ///< index of a code before this one
    };
    struct CodedRange {
        TextRange range; ///< starts at 0 or later and isn't empty, but may lie beyond the text
        size_t target = 0; ///< index into `codeOfTarget`
    };
    struct Source {
        QString title;
        std::optional<QString> plainTextPath;
        std::optional<QByteArray> content; ///< UTF-8
        std::optional<QString> memo; ///< untrimmed
        std::vector<CodedRange> codedRanges;
    };

    bool isProject = false; ///< whether the root element was the right one; if not, there is nothing else
    std::vector<ParsedCode> codes; ///< in document order, not deeper than eight levels
    std::vector<std::optional<size_t>>
        codeOfTarget; ///< for each identifier in use, the index of the code that bears it
    std::vector<Source> sources; ///< in document order
};

inline constexpr qint64 largestText = qint64(1) << 30; ///< of one source, in bytes

/// Reads a project document. Only one that isn't well-formed, or holds more than any project, is a failure: throws
/// XmlError or RefiError. `onPiece` is called now and then and may end the reading by throwing.
[[nodiscard]] ParsedDocument readProjectDocument(
    QIODevice &device, const std::function<void()> &onPiece = [] {});

} // namespace RefiQdpx
