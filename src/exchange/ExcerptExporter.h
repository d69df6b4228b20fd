#pragma once

#include "exchange/ExportCodeGroup.h"

#include <QList>
#include <QString>

#include <optional>

class QDateTime;

/// Reports of coded passages for people to read. Lines end in one line feed; a group without passages is counted and
/// shown where the format has headings. Costs are linear, and nothing can fail.
namespace ExcerptExporter {

/// One row per passage. Begins with U+FEFF, by which spreadsheets know that the file is UTF-8.
[[nodiscard]] QString csv(const QList<ExportCodeGroup> &groups);
/// `date` is the moment of export. Names and passages stand as they are, nothing is escaped.
[[nodiscard]] QString markdown(const QString &projectName, const QList<ExportCodeGroup> &groups, const QDateTime &date);
/// A page that needs no other file.
[[nodiscard]] QString html(const QString &projectName, const QList<ExportCodeGroup> &groups, const QDateTime &date);

/// Without blanks and line breaks at both ends; absent if nothing is left.
[[nodiscard]] std::optional<QString> trimmed(const std::optional<QString> &text);

} // namespace ExcerptExporter
