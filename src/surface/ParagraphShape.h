#pragma once

#include <QString>
#include <QTextLayout>

#include <vector>

class QTextBlock;
class QTextLine;

/// The number of the first line for which `isBefore` is false, or the count of lines. It must be true for all lines up
/// to some line and false from there on. A binary search: a paragraph may have thousands of lines.
template <typename Predicate>
[[nodiscard]] int firstLineNot(const QTextLayout &layout, Predicate isBefore)
{
    int low = 0;
    int high = layout.lineCount();
    while (low < high) {
        const int middle = low + (high - low) / 2;
        if (isBefore(layout.lineAt(middle)))
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

/// Where stretches of a laid-out paragraph are drawn. Positions are UTF-16 code units from the paragraph's start,
/// coordinates are its layout's.
class ParagraphShape {
public:
    struct Span {
        qreal left = 0;
        qreal right = 0;
    };

    /// O(n) in the paragraph's length.
    explicit ParagraphShape(const QTextBlock &block);

    /// Whether letters may run from right to left anywhere in the paragraph.
    [[nodiscard]] bool isMixed() const { return m_isMixed; }
    /// The end of a line without the spaces at which it was wrapped.
    [[nodiscard]] int visibleEnd(const QTextLine &line) const;
    /// The spans that a stretch covers on a line: at most one, or several where directions mix. `start` and `end` are
    /// cut at the line's start and at its visible end.
    [[nodiscard]] std::vector<Span> spans(const QTextLine &line, int start, int end) const;

private:
    [[nodiscard]] std::vector<Span> mixedSpans(const QTextLine &line, int start, int end) const;

    QString m_text;
    bool m_isMixed = false;
};
