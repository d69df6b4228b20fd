#pragma once

#include "kit/theme/Metrics.h"

#include <QFont>
#include <QRegion>

class QWidget;

/// The outline of menus, lists of pop-up buttons and tool tips.
namespace PopupShape {

inline constexpr double radius = Metrics::menuRadius;

/// Whether `widget` is a window of that kind.
[[nodiscard]] bool concerns(const QWidget &widget);
/// To be called whenever `popup` appears, changes its size or place, or goes away. Where windows can't be translucent,
/// cuts its corners off, and lets the window below paint its shadow and smooth corners.
void update(QWidget &popup);
/// The pixels of a rounded rectangle at the origin that its rounding covers whole.
[[nodiscard]] QRegion core(const QSize &size, double cornerRadius);
/// Of the shortcuts in menus.
[[nodiscard]] QFont shortcutFont();

} // namespace PopupShape

/// Whether windows can be translucent, so that a menu may have round corners and a shadow. Wayland and macOS always
/// compose their windows; under X11 a program of its own does, or none.
[[nodiscard]] bool windowsCanBeTranslucent();
/// Whether windows can be faded as a whole. Wayland has no means for that.
[[nodiscard]] bool windowsCanFade();
