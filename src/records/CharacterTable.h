#pragma once

#include <QString>
#include <QStringView>

#include <array>

/// Character properties for each of the 65,536 UTF-16 code units, built once from ICU.
class CharacterTable {
public:
    /// Properties of a unit, combined in an entry's `traits`.
    enum Trait : quint16 {
        word = 1, ///< a letter, mark or number, ideographs excluded
        ideograph = 2,
        surrogate = 4,
        /// A term that holds the unit may change under canonical composition, or have fewer grapheme clusters than
        /// units. Only words and ideographs bear it.
        complex = 8,
        wideLower = 16, ///< `lower` lies beyond Latin-1
        lowersApart = 32, ///< `lower` is unusable: a surrogate, or a lower case of several units
        joins = 64, ///< may share a grapheme cluster with a neighbour; CR and LF, which join only each other, lack it
        blank = 128, ///< a space separator or the tabulator
        lineBreak = 256
    };
    struct Entry {
        quint16 traits = 0;
        char16_t lower = 0;

        [[nodiscard]] constexpr bool has(quint16 anyOf) const noexcept { return (traits & anyOf) != 0; }
    };

    [[nodiscard]] static const CharacterTable &shared();
    [[nodiscard]] const Entry &operator[](char16_t unit) const noexcept { return m_entries[unit]; }

    /// `word`, `ideograph` or 0, for any code point; 0 for surrogates.
    [[nodiscard]] static quint16 wordTrait(char32_t character);
    [[nodiscard]] static bool changesInLowerCase(char32_t character);

    /// The full lower-case mapping of each code point by itself: capital sigma becomes σ even at the end of a word. All
    /// case-insensitive comparisons use this.
    [[nodiscard]] static QString lowered(QStringView text);
    /// The canonically composed form (NFC): equal exactly for canonically equivalent texts.
    [[nodiscard]] static QString composed(QStringView text);

private:
    CharacterTable();

    std::array<Entry, 0x10000> m_entries;
};
