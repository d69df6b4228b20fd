#pragma once

#include <QtGlobal>

#include <array>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

// Sixteen neighbouring UTF-16 code units, examined at once. Both classes do the same; algorithms take the class as a
// template parameter, so that the portable one is compiled and tested everywhere. A comparison gives a block of masks,
// each all ones or all zeros; `bits` packs them into one bit per unit, the first unit lowest.

class PlainUnitBlock {
public:
    static constexpr qsizetype size = 16;

    /// Reads `size` units.
    [[nodiscard]] static PlainUnitBlock at(const char16_t *units)
    {
        PlainUnitBlock block;
        std::memcpy(block.m_units.data(), units, sizeof block.m_units);
        return block;
    }
    [[nodiscard]] static PlainUnitBlock filledWith(char16_t unit)
    {
        PlainUnitBlock block;
        block.m_units.fill(unit);
        return block;
    }

    [[nodiscard]] PlainUnitBlock equalTo(const PlainUnitBlock &other) const
    {
        return combined(other, [](char16_t a, char16_t b) { return truth(a == b); });
    }
    /// Where a unit lies in `first`…`last`.
    [[nodiscard]] PlainUnitBlock within(char16_t first, char16_t last) const
    {
        return combined(*this, [=](char16_t unit, char16_t) { return truth(unit >= first && unit <= last); });
    }
    [[nodiscard]] PlainUnitBlock operator|(const PlainUnitBlock &other) const
    {
        return combined(other, [](char16_t a, char16_t b) { return char16_t(a | b); });
    }
    [[nodiscard]] PlainUnitBlock operator&(const PlainUnitBlock &other) const
    {
        return combined(other, [](char16_t a, char16_t b) { return char16_t(a & b); });
    }
    [[nodiscard]] quint32 bits() const
    {
        quint32 result = 0;
        for (std::size_t index = 0; index < m_units.size(); ++index)
            result |= quint32(m_units[index] & 1) << index;
        return result;
    }

private:
    [[nodiscard]] static char16_t truth(bool value) { return value ? char16_t(0xFFFF) : char16_t(0); }
    template <typename Operation>
    [[nodiscard]] PlainUnitBlock combined(const PlainUnitBlock &other, Operation operation) const
    {
        PlainUnitBlock result;
        for (std::size_t index = 0; index < m_units.size(); ++index)
            result.m_units[index] = operation(m_units[index], other.m_units[index]);
        return result;
    }

    std::array<char16_t, size> m_units;
};

#if defined(__SSE2__)
class Sse2UnitBlock {
public:
    static constexpr qsizetype size = 16;

    [[nodiscard]] static Sse2UnitBlock at(const char16_t *units)
    {
        const auto *halves = reinterpret_cast<const __m128i *>(units);
        return {_mm_loadu_si128(halves), _mm_loadu_si128(halves + 1)};
    }
    [[nodiscard]] static Sse2UnitBlock filledWith(char16_t unit)
    {
        const __m128i half = _mm_set1_epi16(short(unit));
        return {half, half};
    }

    [[nodiscard]] Sse2UnitBlock equalTo(const Sse2UnitBlock &other) const
    {
        return {_mm_cmpeq_epi16(m_low, other.m_low), _mm_cmpeq_epi16(m_high, other.m_high)};
    }
    [[nodiscard]] Sse2UnitBlock within(char16_t first, char16_t last) const
    {
        // SSE2 compares signed numbers only; a saturating subtraction is 0 exactly where a <= b.
        const __m128i lowest = _mm_set1_epi16(short(first));
        const __m128i highest = _mm_set1_epi16(short(last));
        const auto halfWithin = [&](__m128i half) {
            const __m128i outside = _mm_or_si128(_mm_subs_epu16(lowest, half), _mm_subs_epu16(half, highest));
            return _mm_cmpeq_epi16(outside, _mm_setzero_si128());
        };
        return {halfWithin(m_low), halfWithin(m_high)};
    }
    [[nodiscard]] Sse2UnitBlock operator|(const Sse2UnitBlock &other) const
    {
        return {_mm_or_si128(m_low, other.m_low), _mm_or_si128(m_high, other.m_high)};
    }
    [[nodiscard]] Sse2UnitBlock operator&(const Sse2UnitBlock &other) const
    {
        return {_mm_and_si128(m_low, other.m_low), _mm_and_si128(m_high, other.m_high)};
    }
    [[nodiscard]] quint32 bits() const { return quint32(_mm_movemask_epi8(_mm_packs_epi16(m_low, m_high))); }

private:
    Sse2UnitBlock(__m128i low, __m128i high) : m_low(low), m_high(high) { }

    __m128i m_low;
    __m128i m_high;
};

using UnitBlock = Sse2UnitBlock;
#else
using UnitBlock = PlainUnitBlock;
#endif
