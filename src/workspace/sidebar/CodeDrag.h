#pragma once

#include <QUuid>

#include <optional>

class QMimeData;

/// A dragged code travels as text: its identifier in upper case with hyphens.
namespace CodeDrag {

[[nodiscard]] QString mimeType();
/// Owned by the caller.
[[nodiscard]] QMimeData *mimeData(const QUuid &codeID);
/// Absent for every text that isn't an identifier of 36 characters, in either case.
[[nodiscard]] std::optional<QUuid> codeID(const QMimeData &data);

} // namespace CodeDrag
