#pragma once

#include "kit/theme/Look.h"

#include <QColor>

class Appearance;
struct ThemeColors;

/// The one set of colours that the window shows. Widgets ask for them while they paint and keep no copies, so a change
/// of look only needs a repaint, which the change of the application's palette brings about by itself
/// (`QEvent::PaletteChange`).
namespace Theme {

/// Tint of the window and fill of everything accented: sRGB 0.40, 0.39, 0.86.
inline const QColor accent = QColor::fromRgbF(0.40F, 0.39F, 0.86F);

/// The colours of the present look. Light until `setLook` is called.
[[nodiscard]] const ThemeColors &colors();

/// Shows everything in `look` from now on: sets the application's palette and thereby repaints every widget.
void setLook(Look look);

/// Dresses the application: style, fonts, and the look that `appearance` asks for, now and whenever it changes.
void follow(const Appearance &appearance);

} // namespace Theme
