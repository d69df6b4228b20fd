#pragma once

#include "kit/theme/RowPainter.h"

#include <QFont>
#include <QStyledItemDelegate>

class SnippetLayout;

/// Paints the rows of a `SnippetList`: the beginning of a passage, and below it the title of its document, with the
/// dots of its codes before it where it has some.
class SnippetRowDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    /// What a model gives beside the passage, its `Qt::DisplayRole`, of which `maxUnits` are enough.
    enum Role {
        documentTitleRole = Qt::UserRole + 1, ///< QString
        dotColorsRole, ///< QList<QColor>; none after the first `maxDots` is asked for
        emphasisStartRole, ///< qint64, UTF-16 code units; see emphasisLengthRole
        emphasisLengthRole, ///< qint64; 0 for no emphasis
    };

    /// More than a row has room for.
    static constexpr qsizetype maxDots = 64;
    /// Of a passage, which may be a whole document.
    static constexpr qsizetype maxUnits = 1 << 14;

    explicit SnippetRowDelegate(QObject *parent = nullptr);

    /// The height of a row with that many lines of the passage, in logical pixels.
    [[nodiscard]] int heightFor(int lineCount) const;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    [[nodiscard]] SnippetLayout layOut(const QStyleOptionViewItem &option, const QModelIndex &index) const;
    void paintSeparator(QPainter &painter, const QStyleOptionViewItem &option, const QModelIndex &index) const;
    void paintSource(
        QPainter &painter, const QRect &line, Qt::LayoutDirection direction, const QModelIndex &index) const;
    /// Returns what they leave of the line for the title.
    [[nodiscard]] static QRect paintDots(
        QPainter &painter, const QRect &line, Qt::LayoutDirection direction, const QList<QColor> &colors);

    QFont m_snippetFont;
    QFont m_sourceFont;
    RowPainter m_ground;
};
