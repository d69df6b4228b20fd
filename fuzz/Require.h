#pragma once

#include <cstdio>
#include <cstdlib>

/// Ends the run as a finding unless it holds, and says where that was asked.
inline void require(bool holds, const char *file = __builtin_FILE(), int line = __builtin_LINE())
{
    if (holds)
        return;
    std::fprintf(stderr, "%s:%d: doesn't hold\n", file, line);
    std::abort();
}
