#pragma once

#include <QString>

/// The folder of the user's own data of this program: "Vorn" below `$XDG_DATA_HOME` or its equivalent.
namespace ApplicationFolder {
/// The folder's path, after making it, for the user alone, where it is missing. A folder that can't be made shows when
/// a file in it is opened.
[[nodiscard]] QString prepared();
} // namespace ApplicationFolder
