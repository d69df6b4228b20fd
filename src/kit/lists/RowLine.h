#pragma once

#include <QFont>
#include <QRect>
#include <QtGlobal>

class QColor;
class QFont;
class QPainter;
class QString;

/// One line of text in a row.
namespace RowText {

/// Line breaks and tabs as blanks.
[[nodiscard]] QString withoutBreaks(QString text);
/// The beginning of `text`, as much as the widest row can show, with line breaks as blanks.
[[nodiscard]] QString oneLine(const QString &text);
/// What of `text` fits into `width` logical pixels, with "…" where it had to be cut, line breaks as blanks. The cost
/// doesn't grow with the part that doesn't fit.
[[nodiscard]] QString fitting(const QString &text, const QFont &font, int width);
/// A name for an entry of a menu: cut to a fitting width, and with ampersands and tabs that don't begin shortcuts.
[[nodiscard]] QString forMenu(const QString &name, const QFont &font);
/// "1 passage", "1,234 passages": a count in the user's locale, and a noun whose plural ends in "s".
[[nodiscard]] QString counted(qint64 count, const QString &noun);

} // namespace RowText

/// One line of a row, filled from both ends: marks take room at its beginning, counts at its end, and the name gets the
/// rest. All distances are in logical pixels and for a layout from left to right, and are mirrored if need be.
class RowLine {
public:
    /// Without a painter it only measures.
    RowLine(QPainter *painter, const QRect &rect, Qt::LayoutDirection direction, bool isHighlighted = false)
        : m_painter(painter),
          m_whole(rect),
          m_rest(rect),
          m_direction(direction),
          m_isHighlighted(isHighlighted)
    {
    }

    [[nodiscard]] QPainter *painter() const { return m_painter; }
    /// What hasn't been taken yet; not mirrored.
    [[nodiscard]] const QRect &rest() const { return m_rest; }
    [[nodiscard]] Qt::LayoutDirection direction() const { return m_direction; }
    [[nodiscard]] bool isHighlighted() const { return m_isHighlighted; }
    /// A line as wide as the rest of this one, `top` below its upper edge.
    [[nodiscard]] RowLine line(int top, int height) const;

    void skip(int width) { m_rest.setLeft(m_rest.left() + width); }
    void skipAtEnd(int width) { m_rest.setRight(m_rest.right() - width); }
    /// A square in the middle of the line's height, with `gap` behind it.
    void symbol(const QString &name, const QColor &color, int side, int gap, double stroke = 0);
    void dot(const QColor &color, int side, int gap);
    /// At the end, with `gap` before it. Takes at least `minWidth`, and is never cut.
    void count(qint64 count, const QFont &font, int gap, int minWidth = 0);
    /// At the end, with `gap` before it.
    void bar(double width, int height, int gap, const QColor &color);
    /// Fills the rest with the beginning of `text`, close to the marks whichever way the text reads. Returns whether
    /// all of it is shown. Most who paint needn't know. NOLINTNEXTLINE(modernize-use-nodiscard)
    bool text(const QString &text, const QFont &font, const QColor &color) const;

private:
    [[nodiscard]] QRect takeSquare(int side, int gap);
    [[nodiscard]] QRect placed(const QRect &part) const;

    QPainter *m_painter;
    QRect m_whole;
    QRect m_rest;
    Qt::LayoutDirection m_direction;
    bool m_isHighlighted;
};
