#pragma once

#include <QString>

/// The path to give to unzip so that it opens exactly the file at the absolute `path`: unzip takes its argument for a
/// pattern when it holds '[', '*' or '?'.
[[nodiscard]] QString literalForUnzip(const QString &path);

/// Whether there is a regular, readable file at `path` that ends as a zip archive does. Told of any other, unzip goes
/// on to look for one with ".zip" behind the name, and would read that.
[[nodiscard]] bool endsLikeArchive(const QString &path);
