#pragma once

#include <QFont>

/// The type styles of the window. Sizes are set in points, so they grow with the user's font resolution; the families
/// are tried in turn, and nothing may rely on the width of one of them.
namespace Fonts {

[[nodiscard]] QFont readerTitle(); ///< the document's title, 21
[[nodiscard]] QFont thirdTitle(); ///< empty states, 16
[[nodiscard]] QFont columnTitle(); ///< heads of the columns, 15
[[nodiscard]] QFont headline(); ///< sheets and dialogs, 14
[[nodiscard]] QFont body(); ///< rows, fields, menus, messages, 13
[[nodiscard]] QFont bodyMedium(); ///< titles of rows, buttons, 13
[[nodiscard]] QFont callout(); ///< descriptions, plain buttons, capsules, 12
[[nodiscard]] QFont calloutMedium(); ///< small buttons and buttons in capsules, 12
[[nodiscard]] QFont caption(); ///< counts, subtitles, labels, 11
[[nodiscard]] QFont sectionHead(); ///< heads within lists, 11
[[nodiscard]] QFont pill(); ///< the document's type, 10, upper case
[[nodiscard]] QFont reader(); ///< the document's text, 14.5
[[nodiscard]] QFont memo(); ///< memos, 12.5

} // namespace Fonts
