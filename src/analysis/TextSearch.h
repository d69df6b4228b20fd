#pragma once

#include "records/UnitBlock.h"

#include <QString>
#include <QStringView>

#include <array>
#include <vector>

/// One search text, looked for in many texts without regard to case: unit by unit, as if both had been lowered by the
/// rule of `CharacterTable`. Linear in each text. An empty search text is in every text.
///
/// Texts aren't copied, unless their lower case can't be found unit by unit (see `needsLowering`); then they are copied
/// in pieces.
class TextSearch {
public:
    explicit TextSearch(QStringView needle);

    /// Whether `text` holds İ, whose lower case has two units, or a capital letter of a supplementary plane.
    template <typename Block = UnitBlock>
    [[nodiscard]] static bool needsLowering(QStringView text);

    [[nodiscard]] bool isIn(QStringView text) const;
    /// The same for a text that is known to need lowering. Lowers pieces of `pieceLength` units, or of the search
    /// text's length if that is greater, because a copy of the whole text could take too much memory.
    [[nodiscard]] bool isInLowered(QStringView text, qsizetype pieceLength = 1 << 14) const;
    /// The first unit at or after `from` where the search text stands, or −1. `text` must not need lowering.
    template <typename Block = UnitBlock>
    [[nodiscard]] qsizetype firstIn(QStringView text, qsizetype from) const;

private:
    /// The units whose lower case is a given unit: no unit has more than three.
    using Cases = std::array<char16_t, 3>;

    [[nodiscard]] static Cases casesOf(char16_t lower);
    [[nodiscard]] static std::vector<qsizetype> bordersOf(QStringView needle);
    [[nodiscard]] qsizetype matchingUnits(const char16_t *units) const;
    [[nodiscard]] qsizetype firstByBorders(QStringView text, qsizetype from) const;

    QString m_needle;
    Cases m_firstCases = {};
    Cases m_lastCases = {};
    /// For each prefix of the search text, the length of its longest proper border: of what both begins and ends it.
    std::vector<qsizetype> m_borders;
};
