#pragma once

#include "kit/lists/RowDelegate.h"

class SnippetLayout;
class SnippetList;
class QAbstractItemModel;

/// Paints the rows of a `SnippetList`: the beginning of a passage, and below it the title of its document, with the
/// dots of its codes before it where it has some.
class SnippetRowDelegate final : public RowDelegate {
public:
    /// What a model gives beside the passage, its `Qt::DisplayRole`, of which `maxUnits` are enough.
    enum Role {
        documentTitleRole = Qt::UserRole + 1, ///< QString
        dotColorsRole, ///< QList<QColor>; none after the first `maxDots` is asked for
        emphasisStartRole, ///< qint64, UTF-16 code units; see emphasisLengthRole
        emphasisLengthRole, ///< qint64; 0 for no emphasis
    };

    /// More dots than a row has room for.
    static constexpr qsizetype maxDots = 64;
    /// Of a passage, which may be a whole document; more than a row has room for.
    static constexpr qsizetype maxUnits = 1 << 14;

    explicit SnippetRowDelegate(QObject *parent = nullptr);

    /// A list with such a delegate. Rows that haven't been measured yet count as having `lineCount` lines of passage.
    [[nodiscard]] static SnippetList *makeList(
        const QString &accessibleName, const QString &objectName, int lineCount, QAbstractItemModel *model);

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

protected:
    bool fill(RowLine &line, const QModelIndex &index) const override;

private:
    [[nodiscard]] SnippetLayout layOut(int width, Qt::LayoutDirection direction, const QModelIndex &index) const;
    [[nodiscard]] int groundHeight(int lineCount) const;
    void fillSource(RowLine line, const QModelIndex &index) const;

    QFont m_snippetFont;
    QFont m_sourceFont;
};
