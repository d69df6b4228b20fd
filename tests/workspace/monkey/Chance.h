#pragma once

#include <QRect>

#include <algorithm>
#include <random>

/// What happens next, the same way for the same seed.
class Chance {
public:
    explicit Chance(unsigned seed) : m_random(seed) { }

    /// 0 to `end` - 1; 0 also for an `end` that leaves no choice.
    [[nodiscard]] int below(qsizetype end) { return int(m_random() % unsigned(std::max<qsizetype>(1, end))); }
    [[nodiscard]] bool oneIn(int count) { return below(count) == 0; }
    /// `list` mustn't be empty.
    template <typename List>
    [[nodiscard]] const auto &oneOf(const List &list)
    {
        return list[typename List::size_type(below(qsizetype(list.size())))];
    }
    [[nodiscard]] QPoint placeIn(const QRect &area)
    {
        const int x = area.left() + below(area.width()); // one after the other: the order of arguments isn't fixed
        return {x, area.top() + below(area.height())};
    }

private:
    std::mt19937 m_random;
};
