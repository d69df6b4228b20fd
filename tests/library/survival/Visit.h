#pragma once

#include <QString>

/// Opens the library at `path` as a start of the program does and does with it all that a user can do, with files in
/// `folder`. Returns "refused: " and the reason, or "open", what was wrong if something was, and in a second line what
/// was seen at first: "documents | codes with their passages | complaint".
[[nodiscard]] QString visit(const QString &path, const QString &folder);
