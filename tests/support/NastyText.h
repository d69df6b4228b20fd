#pragma once

#include <QString>

#include <random>

/// Random texts of the characters that programs get wrong: marks, joiners, jamo, flags, prepended and capital oddities,
/// ideographs that compose to others, halves of surrogate pairs, and plain stretches long enough for whole blocks.
class NastyText {
public:
    explicit NastyText(unsigned seed) : m_random(seed) { }

    /// Of up to `pieces` characters, words and stretches.
    [[nodiscard]] QString next(int pieces);
    /// At least `lowest`, at most `highest`.
    [[nodiscard]] int number(int lowest, int highest)
    {
        return std::uniform_int_distribution(lowest, highest)(m_random);
    }
    /// True once in `n` calls.
    [[nodiscard]] bool onceIn(int n) { return number(1, n) == 1; }

private:
    [[nodiscard]] QString piece();

    std::mt19937 m_random;
};
