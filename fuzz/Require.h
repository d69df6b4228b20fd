#pragma once

#include <cstdlib>

/// Ends the run as a finding unless it holds.
inline void require(bool holds)
{
    if (!holds)
        std::abort();
}
