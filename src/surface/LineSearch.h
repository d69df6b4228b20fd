#pragma once

#include <QTextLayout>

/// The number of the first line for which `isBefore` is false, or the count of lines. It must be true for all lines up
/// to some line and false from there on. A binary search: a paragraph may have thousands of lines.
template <typename Predicate>
[[nodiscard]] int firstLineNot(const QTextLayout &layout, Predicate isBefore)
{
    int low = 0;
    int high = layout.lineCount();
    while (low < high) {
        const int middle = low + (high - low) / 2;
        if (isBefore(layout.lineAt(middle)))
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}
