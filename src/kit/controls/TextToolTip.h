#pragma once

class QPoint;
class QString;
class QWidget;

/// What a text that had to be cut says beyond its end.
namespace TextToolTip {

/// Shows `text` as it stands, whatever markup it holds, and no more of it than anybody reads in a tool tip: to lay out
/// a whole document would hold up the window. `place` is on the screen.
void show(const QPoint &place, const QString &text, QWidget *owner);

} // namespace TextToolTip
