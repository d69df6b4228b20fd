#pragma once

#include "workspace/theme/RowPainter.h"

#include <QFont>
#include <QStyledItemDelegate>

class SnippetLayout;

/// Paints the rows of a `SnippetList`: the beginning of a passage, and below it the title of its document, with the dot
/// of its code before it where it has one.
class SnippetRowDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    /// What a model gives beside the passage, its `Qt::DisplayRole`.
    enum Role {
        documentTitleRole = Qt::UserRole + 1, ///< QString
        dotColorRole, ///< QColor; invalid for no dot
        emphasisStartRole, ///< qint64, UTF-16 code units; see emphasisLengthRole
        emphasisLengthRole, ///< qint64; 0 for no emphasis
    };

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

    QFont m_snippetFont;
    QFont m_sourceFont;
    RowPainter m_ground;
};
