#pragma once

#include "records/TextRange.h"
#include "surface/PassageSegments.h"

#include <QColor>

#include <optional>
#include <vector>

/// What is drawn over and under the text besides the selection.
struct TextMarks {
    /// A passage that is shown to the reader for a moment: its band takes the place of all others there.
    struct Flash {
        int start = 0;
        int end = 0;
        QColor color;

        bool operator==(const Flash &) const = default;
    };

    PassageSegments passages;
    std::optional<Flash> flash;
    std::vector<TextRange> findMatches; ///< sorted, without overlaps, inside the text; a selected one isn't outlined
    std::optional<int> caret;
};
