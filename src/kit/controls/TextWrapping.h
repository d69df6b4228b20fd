#pragma once

#include <QStringView>
#include <QTextOption>

/// How a text's lines are to be parted.
namespace TextWrapping {

/// Between words, or anywhere in a text with a word so long that the search for its end at every line would take
/// minutes.
[[nodiscard]] QTextOption::WrapMode modeFor(QStringView text);

} // namespace TextWrapping
