#pragma once

#include "records/Code.h"

/// One line of the flattened code tree.
struct FlatCode {
    Code code;
    qint64 depth = 0; ///< 0 for a line at the left edge

    [[nodiscard]] QUuid id() const noexcept { return code.id; }
    bool operator==(const FlatCode &) const = default;
};
