#pragma once

#include "surface/ParagraphShape.h"

#include <QAbstractTextDocumentLayout>
#include <QRectF>
#include <QTextLayout>
#include <QTransform>

#include <vector>

class QPainter;
class QTextBlock;
struct TextMarks;

/// Draws laid-out blocks: the passages' bands, the selection over them, the text, the passages' underlines, and the
/// outlines of find matches. None of these is a format of the text, because formats change how letters are joined and
/// where lines break.
class PassagePainter {
public:
    /// All must outlive the painter.
    PassagePainter(QPainter &painter, const TextMarks &marks, const QAbstractTextDocumentLayout::PaintContext &context);

    /// Draws the block with its layout's corner at `origin`.
    void paint(const QTextBlock &block, QPointF origin);

    struct Extent {
        qreal top = 0;
        qreal bottom = 0;
    };
    /// The upper and the lower edge of a line's band, in its layout's coordinates.
    [[nodiscard]] static Extent bandExtent(const QTextLine &line);

private:
    struct Block {
        const QTextLayout &layout;
        const ParagraphShape shape;
        QPointF origin;
        int start = 0; ///< its first position in the document
        int end = 0; ///< after its last position, the block's end included
    };
    struct Line {
        QTextLine text;
        int start = 0; ///< positions in the document
        int end = 0;
    };

    [[nodiscard]] std::vector<Line> visibleLines(const Block &block) const;
    [[nodiscard]] std::vector<QRectF> rectangles(const Block &block, const Line &line, int start, int end) const;
    [[nodiscard]] QRectF snapped(const QRectF &rectangle) const;
    [[nodiscard]] bool isBanded(int position) const;

    void paintBands(const Block &block, const Line &line);
    void paintBand(const Block &block, const Line &line, int start, int end, const QColor &color);
    void paintSelection(const Block &block, const Line &line);
    void paintText(const Block &block);
    void paintUnderlines(const Block &block, const Line &line);
    void paintFindMatches(const Block &block, const Line &line);
    void paintCaret(const Block &block);

    QPainter &m_painter;
    const TextMarks &m_marks;
    const QAbstractTextDocumentLayout::PaintContext &m_context;
    QTransform m_toDevice;
    QTransform m_fromDevice;
    int m_selectionStart = 0;
    int m_selectionEnd = 0;
    QTextCharFormat m_selectionFormat;
};
