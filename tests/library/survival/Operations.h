#pragma once

#include "library/survival/Workplace.h"

#include <span>

/// One thing that a user does, which writes into the library or changes nothing.
struct Operation {
    const char *name;
    void (*perform)(TestLibrary &library, const Workplace &place);
    const char *complaint = nullptr; ///< the beginning of what a failure says; null where the lists show it
};

/// Each can be done by itself on the library of a `Workplace`, and all of them one behind the other.
[[nodiscard]] std::span<const Operation> operations();
