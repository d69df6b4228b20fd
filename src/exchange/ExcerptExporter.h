#pragma once

#include "records/Code.h"
#include "records/Snippet.h"

#include <QList>
#include <QString>

#include <array>
#include <functional>

class QDateTime;

/// A code with its passages, in the order they are listed under it.
struct ExportCodeGroup {
    Code code;
    QList<ExcerptHit> hits;

    bool operator==(const ExportCodeGroup &) const = default;
};

/// The kinds of report that excerpts are exported as.
enum class ExportFormat { markdown, csv, html };

namespace ExportFormats {
/// All formats, in the order they are offered.
[[nodiscard]] constexpr std::array<ExportFormat, 3> formats()
{
    return {ExportFormat::markdown, ExportFormat::csv, ExportFormat::html};
}
/// What the user reads.
[[nodiscard]] QString label(ExportFormat format);
/// Without a dot.
[[nodiscard]] QString fileExtension(ExportFormat format);
/// As self-tests print it.
[[nodiscard]] QString rawValue(ExportFormat format);
} // namespace ExportFormats

/// Reports of coded passages for people to read. Lines end in a line feed; a group without passages is counted, and
/// shown where the format has headings. O(n); throws only what `take` throws.
///
/// A report is handed over in pieces of whole lines, as it may quote whole documents many times.
namespace ExcerptExporter {

using TakePiece = std::function<void(QStringView piece)>;

/// One row per passage. Begins with U+FEFF, by which spreadsheets know that the file is UTF-8.
void csv(const QList<ExportCodeGroup> &groups, const TakePiece &take);
/// `date` is the moment of export. Names and passages stand as they are, nothing is escaped.
void markdown(
    const QString &projectName, const QList<ExportCodeGroup> &groups, const QDateTime &date, const TakePiece &take);
/// A page that needs no other file.
void html(
    const QString &projectName, const QList<ExportCodeGroup> &groups, const QDateTime &date, const TakePiece &take);

} // namespace ExcerptExporter
