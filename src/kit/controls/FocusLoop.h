#pragma once

class QWidget;

/// Tab within one widget, for what lies over a window without being one.
namespace FocusLoop {

/// Gives the focus to the next or previous widget below `root` that Tab reaches, round and round. False if there is
/// none.
bool advance(QWidget &root, bool forwards);

} // namespace FocusLoop
