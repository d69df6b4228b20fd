#pragma once

#include "records/TextRange.h"

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>
#include <vector>

class QIODevice;

namespace RefiQdpx {

/// What an import takes from a project document. Codes may come after the passages that refer to them, so the whole
/// document is parsed first.
struct ParsedDocument {
    struct ParsedCode {
        QString name;
        QString colorHex; ///< normalised
        std::optional<QString> memo; ///< untrimmed
        std::optional<size_t> parent; ///< index of a code before this one
    };
    struct CodedRange {
        TextRange range; ///< not empty and not negative, but may lie beyond the text
        size_t target = 0; ///< index into `codeOfTarget`
    };
    struct Source {
        QString title;
        std::optional<QString> plainTextPath;
        std::optional<QByteArray> content; ///< UTF-8
        std::optional<QString> memo; ///< untrimmed
        std::vector<CodedRange> codedRanges;
    };

    bool isProject = false; ///< whether the root element is <Project>; if not, the rest is empty
    std::vector<ParsedCode> codes; ///< in document order, not deeper than eight levels
    std::vector<std::optional<size_t>>
        codeOfTarget; ///< for each identifier in the document, the index of the code that has it
    std::vector<Source> sources; ///< in document order
};

inline constexpr qint64 maxText = qint64(1) << 30; ///< of one source, in bytes

/// Throws XmlError if the document isn't well-formed and RefiError if it is larger than any project; what else is wrong
/// with it is ignored. `onPiece` is called now and then and may stop the reading by throwing.
[[nodiscard]] ParsedDocument readProjectDocument(
    QIODevice &device, const std::function<void()> &onPiece = [] {});

} // namespace RefiQdpx
