#pragma once

#include "kit/lists/BlockHeights.h"

#include <QAbstractTextDocumentLayout>
#include <QFont>

#include <unordered_map>
#include <vector>

class QTextBlock;
class QTextLine;
struct TextMarks;

/// Lays out only the blocks of a read-only document that are looked at; the heights of all others are estimated. The
/// text stands in one column, centred on a page as wide as the document's page size. About 100 blocks stay laid out at
/// a time. The height of a block that was laid out once stays known until the width or the font changes.
///
/// Coordinates are the document's, in logical pixels. Blocks begin at whole pixels, so that the text on screen need not
/// move when the blocks above turn out higher or lower than estimated.
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

    /// Lays out a block unless it is laid out already. Emits `heightsChanged` if its height wasn't the estimated one.
    void layOut(int block) const;
    /// Raises the number of blocks that stay laid out for a view that shows so many.
    void expectVisible(int blocks) const;
    /// Emits `documentSizeChanged` if the size has changed since the last call.
    void announceSize();
    [[nodiscard]] int laidOutCount() const { return int(m_laidOut.size()); }

Q_SIGNALS:
    void heightsChanged() const;
    /// Every height is an estimate again: the width or the font has changed.
    void rewrapped();

protected:
    void documentChanged(int position, int charactersRemoved, int charactersAdded) override;

private:
    static constexpr size_t minKept = 100;

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

    // Found out while answering const questions.
    mutable BlockHeights m_heights;
    mutable std::unordered_map<int, quint64> m_laidOut; ///< when each was last looked at
    mutable quint64 m_now = 0;
    mutable size_t m_maxLaidOut = minKept;
};
