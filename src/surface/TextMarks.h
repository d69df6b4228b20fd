#pragma once

#include "records/TextRange.h"
#include "surface/PassageSegments.h"

#include <QColor>

#include <optional>
#include <vector>

/// What is drawn under and over the text, besides the selection.
struct TextMarks {
    /// A passage that was revealed: for a moment its band is drawn instead of all others there.
    struct Flash {
        int start = 0;
        int end = 0;
        QColor color;

        bool operator==(const Flash &) const = default;
    };

    PassageSegments passages;
    std::optional<Flash> flash;
    std::vector<TextRange> findMatches; ///< sorted, without overlaps, inside the text; the selected one isn't outlined
    std::optional<int> caret;
};
