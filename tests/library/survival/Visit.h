#pragma once

#include <QString>

/// Opens the library at `path` as a start of the program does and takes the whole tour through it, with files for it in
/// `folder`. Returns "refused: " and the reason, or "open", what was wrong if something was, and in a second line what
/// was seen at first: "documents | codes with their passages | complaint". A refused file must stay as it was, and so
/// must one that was only looked at; with a journal beside it SQLite may have had something to finish, and
/// `isWhole` must be false.
[[nodiscard]] QString visit(const QString &path, const QString &folder, bool isWhole = true);
