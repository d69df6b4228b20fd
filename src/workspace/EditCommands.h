#pragma once

class QMenu;

/// Undo, redo, cut, copy, paste and select all, acting on the field that has the focus.
namespace EditCommands {
/// Adds the entries to the menu; each is enabled while the focused field can do it.
void addTo(QMenu &menu);
} // namespace EditCommands
