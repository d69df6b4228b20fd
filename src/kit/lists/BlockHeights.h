#pragma once

#include <QtGlobal>

#include <vector>

/// The heights of a column of blocks, in whole pixels, with their running sums: a Fenwick tree.
class BlockHeights {
public:
    BlockHeights() = default;
    /// O(n).
    explicit BlockHeights(std::vector<int> heights);

    [[nodiscard]] int count() const { return int(m_heights.size()); }
    [[nodiscard]] int height(int block) const { return m_heights[size_t(block)]; }
    /// The sum of the heights before `block`, which may be the count. O(log n).
    [[nodiscard]] qint64 top(int block) const;
    [[nodiscard]] qint64 total() const { return top(count()); }
    /// The block at height `y`, or the first or last one for a height outside. Needs at least one block. O(log n).
    [[nodiscard]] int blockAt(qint64 y) const;

    /// O(log n).
    void setHeight(int block, int height);

private:
    std::vector<int> m_heights;
    std::vector<qint64> m_sums; ///< m_sums[i] covers the (i & -i) blocks that end before block i
};
