#pragma once

#include <QString>

/// Names of files made from names that the user, or somebody else's file, has given to things.
namespace FileNames {
/// `name` without what would make a path or a strange name of it.
[[nodiscard]] QString cleaned(const QString &name);
} // namespace FileNames
