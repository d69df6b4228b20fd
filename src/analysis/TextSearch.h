#pragma once

#include "records/UnitBlock.h"

#include <QString>
#include <QStringView>

#include <array>
#include <vector>

/// One search text, looked for in many texts without regard to case: plainly, unit by unit, after both were lowered by
/// the rule of `CharacterTable`. Linear in each text. An empty search text is in every text.
///
/// A text isn't copied for that. If lowering it isn't a matter of each unit alone, pieces of it are: see
/// `needsLowering`.
class TextSearch {
public:
    explicit TextSearch(QStringView needle);

    /// Whether `text` holds İ, whose lower case has two units, or a capital letter of a supplementary plane.
    template <typename Block = UnitBlock>
    [[nodiscard]] static bool needsLowering(QStringView text);

    [[nodiscard]] bool isIn(QStringView text) const;
    /// The same for those who know that the text needs lowering. Does it piece by piece, of so many units or as many as
    /// the search text has: copies of all texts that need it would take as much memory as the texts.
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
    /// For each beginning of the search text, how long its longest proper border is: a beginning that is an end, too.
    std::vector<qsizetype> m_borders;
};
