#pragma once

#include <QString>

/// The answer to `--help`.
namespace CommandLineHelp {
/// Lines of at most 80 characters in ASCII, which any terminal shows; no line feed at the end.
[[nodiscard]] QString text();
} // namespace CommandLineHelp
