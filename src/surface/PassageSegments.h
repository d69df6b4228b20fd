#pragma once

#include "records/TextRange.h"

#include <QColor>
#include <QList>
#include <QRgb>
#include <QString>
#include <QUuid>

#include <optional>
#include <span>
#include <vector>

/// A coded passage as the text surface shows it.
struct TextHighlight {
    QUuid codingID;
    TextRange range; ///< may lie outside the text: it is cut at the end, or left out
    QString colorHex;
    QString name; ///< the code's name

    bool operator==(const TextHighlight &) const = default;
};

/// A stretch of text, in UTF-16 code units, that shows one passage's colour.
struct PassageSegment {
    int start = 0;
    int end = 0;
    QRgb color = 0;

    bool operator==(const PassageSegment &) const = default;
};

/// What is seen of a list of passages: sorted segments that don't overlap. Where passages do, the later one in the list
/// is seen and nothing is mixed. Passages that lie outside the text or whose colour doesn't parse are left out.
class PassageSegments {
public:
    /// Removes all passages; later ones are cut at `textLength`.
    void reset(qsizetype textLength);
    /// Takes the next list and returns whether it differs from the last one. Only the text from the first to the last
    /// changed passage is worked out again.
    bool assign(const QList<TextHighlight> &highlights);

    [[nodiscard]] const QList<TextHighlight> &highlights() const { return m_highlights; }
    /// The segments that share a unit with the stretch from `start` to `end`. O(log n).
    [[nodiscard]] std::span<const PassageSegment> within(int start, int end) const;
    [[nodiscard]] bool covers(int position) const { return !within(position, position + 1).empty(); }
    /// The first passage in the list's order that is drawn and whose drawn part holds one of the two positions.
    [[nodiscard]] const TextHighlight *firstAt(qint64 position, qint64 otherPosition) const;

private:
    struct Passage { // a highlight, cut at the text's end; empty when it isn't drawn
        int start = 0;
        int end = 0;
        QRgb color = 0;
    };
    [[nodiscard]] Passage passageOf(const TextHighlight &highlight) const;
    [[nodiscard]] std::vector<PassageSegment> flattened(int from, int to) const;
    void flattenAgain(int from, int to);

    int m_textLength = 0;
    QList<TextHighlight> m_highlights;
    std::vector<Passage> m_passages; ///< one for each highlight
    std::vector<PassageSegment> m_segments;
};

/// The stretches, from first to last, that don't show the same colour in both. O(n).
[[nodiscard]] std::vector<TextRange> differences(
    std::span<const PassageSegment> before, std::span<const PassageSegment> after);

/// The colour of a stored code as Qt has it; nothing if the text is no colour.
[[nodiscard]] std::optional<QRgb> parsedColor(const QString &colorHex);

/// What is drawn under and over the text, besides the selection.
struct TextMarks {
    /// A passage that was revealed: for a moment its band is drawn instead of all others there.
    struct Flash {
        int start = 0;
        int end = 0;
        QColor color;

        bool operator==(const Flash &) const = default;
    };

    PassageSegments passages;
    std::optional<Flash> flash;
    std::vector<TextRange> findMatches; ///< sorted, without overlaps, inside the text; the selected one isn't outlined
    std::optional<int> caret;
};
