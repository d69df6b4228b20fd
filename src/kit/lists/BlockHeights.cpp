#include "kit/lists/BlockHeights.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace {

size_t lowestBit(size_t index)
{
    return index & (~index + 1);
}

} // namespace

BlockHeights::BlockHeights(std::vector<int> heights) : m_heights(std::move(heights)), m_sums(m_heights.size() + 1)
{
    for (size_t index = 1; index < m_sums.size(); ++index) {
        m_sums[index] += m_heights[index - 1];
        const size_t parent = index + lowestBit(index);
        if (parent < m_sums.size())
            m_sums[parent] += m_sums[index];
    }
}

qint64 BlockHeights::top(int block) const
{
    qint64 sum = 0;
    for (auto index = size_t(block); index > 0; index -= lowestBit(index))
        sum += m_sums[index];
    return sum;
}

int BlockHeights::blockAt(qint64 y) const
{
    size_t before = 0; // blocks that lie wholly above y
    for (size_t step = std::bit_floor(m_heights.size()); step > 0; step /= 2) {
        if (before + step < m_sums.size() && m_sums[before + step] <= y) {
            before += step;
            y -= m_sums[before];
        }
    }
    return std::min(int(before), count() - 1);
}

void BlockHeights::setHeight(int block, int height)
{
    const int difference = height - std::exchange(m_heights[size_t(block)], height);
    for (size_t index = size_t(block) + 1; index < m_sums.size(); index += lowestBit(index))
        m_sums[index] += difference;
}
