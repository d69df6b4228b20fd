#pragma once

#include <QString>

#include <limits>
#include <random>

/// Random texts of the characters that programs get wrong: marks, joiners, jamo, flags, prepended and capital oddities,
/// ideographs that compose to others, unpaired surrogates, and plain stretches long enough for whole blocks.
class NastyText {
public:
    explicit NastyText(unsigned seed) : m_random(seed) { }

    /// Of up to `pieces` characters, words and stretches.
    [[nodiscard]] QString next(int pieces);
    /// From `lowest` to `highest`, both included.
    [[nodiscard]] int number(int lowest, int highest)
    {
        return std::uniform_int_distribution(lowest, highest)(m_random);
    }
    /// True once in `n` calls.
    [[nodiscard]] bool onceIn(int n) { return number(1, n) == 1; }
    /// The same, but once in thirty calls one of the three lowest or highest numbers that there are.
    [[nodiscard]] qint64 position(int lowest, int highest)
    {
        using Limits = std::numeric_limits<qint64>;
        const bool isExtreme = onceIn(30);
        return !isExtreme ? number(lowest, highest)
            : onceIn(2)   ? Limits::max() - number(0, 2)
                          : Limits::min() + number(0, 2);
    }

private:
    [[nodiscard]] QString piece();

    std::mt19937 m_random;
};
