#pragma once

#include "kit/lists/BlockHeights.h"

#include <QAbstractTextDocumentLayout>
#include <QFont>

#include <unordered_map>
#include <vector>

class QTextBlock;
class QTextLine;
struct TextMarks;

/// Lays out a document that never changes, only where it is looked at: every other block has an estimated height. The
/// text stands in one column, centred on a page whose width is the document's page size. At most about 100 blocks are
/// laid out at a time; a block that was knows its height from then on, until the width or the font changes.
///
/// Coordinates are the document's, in logical pixels. Blocks stand on whole pixels, so that what is on screen can stay
/// exactly where it is when the blocks above turn out higher or lower than estimated.
class LazyTextLayout final : public QAbstractTextDocumentLayout {
    Q_OBJECT
public:
    /// `marks` is drawn with the text and must outlive the layout. The document, which owns the layout, must be filled.
    LazyTextLayout(QTextDocument *document, const TextMarks &marks);

    void draw(QPainter *painter, const PaintContext &context) override;
    [[nodiscard]] int hitTest(const QPointF &point, Qt::HitTestAccuracy accuracy) const override;
    [[nodiscard]] int pageCount() const override { return 1; }
    [[nodiscard]] QSizeF documentSize() const override;
    [[nodiscard]] QRectF frameBoundingRect(QTextFrame *frame) const override;
    [[nodiscard]] QRectF blockBoundingRect(const QTextBlock &block) const override;

    [[nodiscard]] int blockCount() const { return m_heights.count(); }
    [[nodiscard]] int blockAt(qint64 y) const;
    /// The upper edge of a block, as far as it is known.
    [[nodiscard]] qint64 top(int block) const;
    /// The height of a block, as far as it is known.
    [[nodiscard]] int height(int block) const { return m_heights.height(block); }
    [[nodiscard]] int columnLeft() const;
    [[nodiscard]] int columnWidth() const;
    /// The line that shows a position, which is laid out for it.
    [[nodiscard]] QTextLine lineAt(int position) const;
    /// The line of a laid-out block at, or next to, a height below the block's top.
    [[nodiscard]] QTextLine lineNear(int block, qreal y) const;
    /// The character under a point, or the nearest one.
    [[nodiscard]] int characterAt(const QPointF &point) const;

    /// Lays out a block unless it is. If its height isn't the estimated one, `heightsChanged` says so.
    void layOut(int block) const;
    /// Lets a view that shows so many blocks keep them all.
    void expectVisible(int blocks) const;
    /// Tells those who scroll the document when its size isn't the one they were told before.
    void announceSize();
    [[nodiscard]] int laidOutCount() const { return int(m_laidOut.size()); }

Q_SIGNALS:
    void heightsChanged() const;
    /// Every height is an estimate again.
    void rewrapped();

protected:
    void documentChanged(int position, int charactersRemoved, int charactersAdded) override;

private:
    struct Estimate {
        qreal unitWidth = 0;
        qreal lineHeight = 0;
    };

    void measure();
    [[nodiscard]] Estimate sampled() const;
    void estimateHeights();
    void releaseAll();
    void release(int block) const;
    void releaseOldest() const;

    const TextMarks &m_marks;
    QFont m_font;
    qreal m_pageWidth = 0;
    QSizeF m_announcedSize;
    Estimate m_estimate;
    std::vector<int> m_lengths; ///< of the blocks, without their ends

    // What is learned while answering questions.
    mutable BlockHeights m_heights;
    mutable std::unordered_map<int, quint64> m_laidOut; ///< when each was last looked at
    mutable quint64 m_now = 0;
    mutable size_t m_mostLaidOut = 100;
};
