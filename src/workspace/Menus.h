#pragma once

#include <functional>

class LibraryStore;
class QMainWindow;

/// The menus of the window.
namespace Menus {
/// Fills the window's menu bar. `openFindBar` is what "Find…" does.
void build(QMainWindow &window, LibraryStore &store, const std::function<void()> &openFindBar);
} // namespace Menus
