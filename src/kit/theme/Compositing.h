#pragma once

/// Whether windows can be translucent, so that a menu may have round corners and a shadow. Wayland and macOS always
/// compose their windows; under X11 a program of its own does, or none.
[[nodiscard]] bool windowsCanBeTranslucent();
/// Whether windows can be faded as a whole. Wayland has no means for that.
[[nodiscard]] bool windowsCanFade();
