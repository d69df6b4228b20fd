#pragma once

#include <QString>

#include <vector>

class QTextBlock;
class QTextLine;

/// Where stretches of a laid-out paragraph are seen. Positions are UTF-16 code units from the paragraph's start,
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
    /// The end of what is seen of a line: the space that a soft line break swallows is not.
    [[nodiscard]] int visibleEnd(const QTextLine &line) const;
    /// The spans that a stretch covers on a line: one, or several where directions mix. `start` and `end` are cut to
    /// what is seen of the line.
    [[nodiscard]] std::vector<Span> spans(const QTextLine &line, int start, int end) const;

private:
    [[nodiscard]] std::vector<Span> mixedSpans(const QTextLine &line, int start, int end) const;

    QString m_text;
    bool m_isMixed = false;
};
