#pragma once

#include <QString>

/// Opens the library at `path` as a start of the program does and does with it all that a user can do, with files in
/// `folder`. Returns "refused: " and the reason, or "open", what was wrong if something was, and in a second line what
/// was seen at first: "documents | codes with their passages | complaint". A refused file must stay as it was, and so
/// must one that was only looked at, unless SQLite had something to finish (`isWhole` is false).
[[nodiscard]] QString visit(const QString &path, const QString &folder, bool isWhole = true);
