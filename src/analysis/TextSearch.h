#pragma once

#include "records/UnitBlock.h"

#include <QString>
#include <QStringView>

#include <array>
#include <vector>

/// One search text, looked for in many texts without regard to case: plainly, unit by unit, after both were lowered by
/// the rule of `CharacterTable`. Linear in each text. An empty search text is in every text.
///
/// A text isn't copied for that, unless lowering it isn't a matter of each unit alone: see `needsLoweredCopy`.
class TextSearch {
public:
    explicit TextSearch(QStringView needle);

    /// Whether `text` holds İ, whose lower case has two units, or a capital letter of a supplementary plane.
    template <typename Block = UnitBlock>
    [[nodiscard]] static bool needsLoweredCopy(QStringView text);

    /// Makes the lowered copy where `text` needs one.
    [[nodiscard]] bool isIn(QStringView text) const;
    /// `loweredText` is what `CharacterTable::lowered` gives; for those who keep the copy.
    [[nodiscard]] bool isInLowered(QStringView loweredText) const;
    /// The first unit at or after `from` where the search text stands, or −1. `text` must not need a lowered copy.
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
