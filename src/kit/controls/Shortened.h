#pragma once

#include <QtGlobal>

class QString;

/// The text, or its first `longest` UTF-16 code units and "…": for names within sentences that wrap. An endless one
/// would push what follows off the screen.
[[nodiscard]] QString shortened(const QString &text, qsizetype longest = 200);
