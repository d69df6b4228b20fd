#pragma once

class LibraryStore;
class RootView;

/// The menus of the window.
namespace Menus {
/// Fills the window's menu bar.
void build(RootView &window, LibraryStore &store);
} // namespace Menus
