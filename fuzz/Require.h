#pragma once

#include <cstdio>
#include <cstdlib>

/// Aborts unless `holds`, after printing the place of the call; a fuzzer counts that as a finding.
inline void require(bool holds, const char *file = __builtin_FILE(), int line = __builtin_LINE())
{
    if (holds)
        return;
    std::fprintf(stderr, "%s:%d: requirement failed\n", file, line);
    std::abort();
}
