#pragma once

#include <QFrame>

class QAbstractButton;
class QAction;
class QLineEdit;

/// What a button is for, which decides how the style paints it. Kept in the property `vornRole`.
enum class ButtonRole {
    bordered,
    prominent, ///< the one thing that this surface is there for; its default button
    destructive, ///< takes something away for good
    plain, ///< quiet, without a surface at rest
};
enum class ButtonSize {
    regular,
    small,
    capsule, ///< small, with round ends, for buttons inside capsules
};

void setRole(QAbstractButton &button, ButtonRole role, ButtonSize size = ButtonSize::regular);
[[nodiscard]] ButtonRole roleOf(const QWidget &button);
[[nodiscard]] ButtonSize sizeOf(const QWidget &button);
/// The radius of the button's corners, for a button that is `height` high.
[[nodiscard]] double cornerRadiusOf(const QWidget &button, double height);

/// A field for searching: a quiet track until it has the focus.
void setSearchRole(QLineEdit &field);
[[nodiscard]] bool hasSearchRole(const QWidget &field);

/// A menu's entry that takes something away for good.
void setDestructive(QAction &action);
[[nodiscard]] bool isDestructive(const QAction &action);

/// A horizontal line of one pixel: between two surfaces, or as `QFrame::Raised` inside a sheet or a popover.
[[nodiscard]] QFrame *makeHairline(QFrame::Shadow shadow = QFrame::Plain);
