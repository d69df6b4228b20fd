#pragma once

#include <QString>

#include <array>

/// The kinds of report that excerpts are exported as.
enum class ExportFormat { markdown, csv, html };

namespace ExportFormats {
/// All formats, in the order they are offered.
[[nodiscard]] constexpr std::array<ExportFormat, 3> formats()
{
    return {ExportFormat::markdown, ExportFormat::csv, ExportFormat::html};
}
/// A name that stays the same whatever the label says.
[[nodiscard]] QString rawValue(ExportFormat format);
/// What the user reads.
[[nodiscard]] QString label(ExportFormat format);
/// Without a dot.
[[nodiscard]] QString fileExtension(ExportFormat format);
} // namespace ExportFormats
