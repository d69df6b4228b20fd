#pragma once

#include <QColor>
#include <QString>

/// A code's stored colour on the screen.
namespace CodeColor {
/// The colour, opaque; the accent where the text is no colour.
[[nodiscard]] QColor orAccent(const QString &hex);
} // namespace CodeColor
