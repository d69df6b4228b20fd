#pragma once

/// How the window is to look: which of the palettes applies.
struct Look {
    bool isDark = false;
    bool hasHighContrast = false;

    bool operator==(const Look &) const = default;
};
