#pragma once

#include "exchange/ExportCodeGroup.h"

#include <QList>
#include <QString>

#include <functional>
#include <optional>

class QDateTime;

/// Reports of coded passages for people to read. Lines end in one line feed; a group without passages is counted and
/// shown where the format has headings. Costs are linear, and only what the taker throws can fail.
///
/// A report is handed over in pieces, which end with a line: it may quote whole documents, many times over.
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

/// Without blanks and line breaks at both ends; absent if nothing is left.
[[nodiscard]] std::optional<QString> trimmed(const std::optional<QString> &text);

} // namespace ExcerptExporter
