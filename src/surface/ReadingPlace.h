#pragma once

#include <QtGlobal>

class LazyTextLayout;

/// What is at the top of the view: a block and an offset in it rather than a scroll value, since the blocks above may
/// turn out higher or lower than estimated; and a character, to find the place again after the text was rewrapped.
class ReadingPlace {
public:
    /// The text's start. The layout must outlive the place.
    explicit ReadingPlace(const LazyTextLayout &layout);

    /// The distance of the view's top from the document's.
    [[nodiscard]] qint64 scrollValue() const;

    void moveToStart();
    void moveToEnd(int viewHeight);
    /// Moves by exactly so many pixels: the blocks on the way are laid out.
    void moveBy(int pixels);
    /// Moves to a value that may be far off, by the estimated heights of the blocks on the way.
    void moveTo(qint64 scrollValue);
    /// The smallest move that shows the lines from the one that holds `first` to the one that holds `last`, or the
    /// first of them if there are more than the view can show.
    void show(int first, int last, int viewHeight);
    /// Lays out what is in view, and goes back up if the document ends above the view's bottom.
    void layOutView(int viewHeight);
    /// Finds the place again after the text was rewrapped.
    void findAgain();

private:
    struct Line {
        int block = 0;
        int top = 0; ///< from the block's top
        int bottom = 0;
    };

    [[nodiscard]] Line lineAt(int position) const;
    /// The pixels from the top of `from` to the bottom of `to`, which isn't above it. Lays out the blocks in between,
    /// and stops early at a distance of more than `limit`.
    [[nodiscard]] int distance(const Line &from, const Line &to, int limit) const;
    void set(int block, int offset);
    void normalise();
    void remember();

    const LazyTextLayout *m_layout;
    int m_block = 0;
    int m_offset = 0; ///< from the block's top to the view's; negative only above the first block
    int m_position = 0; ///< the first character of the line at the view's top
    int m_belowLine = 0; ///< from that line's top to the view's
};
