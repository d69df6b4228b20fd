#pragma once

#include "surface/ParagraphShape.h"

#include <QAbstractTextDocumentLayout>
#include <QRectF>
#include <QTransform>

#include <vector>

class QPainter;
class QTextBlock;
class QTextLayout;
class QTextLine;
struct TextMarks;

/// Draws laid-out blocks: the passages' bands, the selection over them, the text, the passages' underlines, and the
/// outlines of find matches. Nothing of this is a format of the text, so none of it can move a letter.
class PassagePainter {
public:
    /// All must outlive the painter.
    PassagePainter(QPainter &painter, const TextMarks &marks, const QAbstractTextDocumentLayout::PaintContext &context);

    /// Draws the block with its layout's corner at `origin`.
    void paint(const QTextBlock &block, QPointF origin);

    /// From the upper to the lower edge of a line's band, relative to its layout.
    struct Extent {
        qreal top = 0;
        qreal bottom = 0;
    };
    [[nodiscard]] static Extent bandExtent(const QTextLine &line);

private:
    struct Block { // the one that is being drawn
        const QTextLayout &layout;
        const ParagraphShape shape;
        QPointF origin;
        int start = 0; ///< its first position in the document
        int end = 0; ///< behind its last position, the block's end included
    };

    [[nodiscard]] std::vector<QTextLine> visibleLines(const Block &block) const;
    [[nodiscard]] std::vector<QRectF> rectangles(const Block &block, const QTextLine &line, int start, int end) const;
    [[nodiscard]] QRectF snapped(const QRectF &rectangle) const;
    [[nodiscard]] bool isBanded(int position) const;

    void paintBands(const Block &block, const QTextLine &line);
    void paintBand(const Block &block, const QTextLine &line, int start, int end, const QColor &color);
    void paintSelection(const Block &block, const QTextLine &line);
    void paintText(const Block &block);
    void paintUnderlines(const Block &block, const QTextLine &line);
    void paintFindMatches(const Block &block, const QTextLine &line);
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
