#pragma once

#include "kit/theme/Look.h"

class Appearance;
struct ThemeColors;

/// The one set of colours that the window shows. Widgets ask for them while they paint and keep no copies, so a change
/// of look only needs a repaint, which the change of the application's palette brings about by itself
/// (`QEvent::PaletteChange`).
namespace Theme {

/// The colours of the present look. Light until `setLook` is called.
[[nodiscard]] const ThemeColors &colors();

/// Shows everything in `look` from now on: sets the application's palette and thereby repaints every widget.
void setLook(Look look);

/// Dresses the application: style, fonts, and the look that `appearance` asks for, now and whenever it changes.
void follow(const Appearance &appearance);

} // namespace Theme
