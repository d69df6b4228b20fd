#pragma once

class CommandLine;

/// On what the program shows itself.
enum class DisplayChoice {
    desktop, ///< a window on the user's desktop
    offscreen, ///< nothing to show on, and nothing to show: the command line only asks for lines of text
    impossible, ///< a window is wanted and there is no display
};

/// To be asked before the application object exists.
[[nodiscard]] DisplayChoice chooseDisplay(const CommandLine &commandLine);
