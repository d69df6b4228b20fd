#pragma once

#include "kit/theme/RowPainter.h"

#include <QFont>
#include <QStyledItemDelegate>

/// Paints a document's row: an icon for its kind and its title, and below them its facts.
class DocumentRowDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    explicit DocumentRowDelegate(QObject *parent = nullptr);

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    /// The same for every row.
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    /// Shows a title that is cut off.
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
        const QModelIndex &index) override;

private:
    struct Lines {
        QRect icon;
        QRect title;
        QRect subtitle;
    };
    /// Where everything stands, mirrored where the window is.
    [[nodiscard]] Lines linesIn(const QStyleOptionViewItem &option) const;

    QFont m_titleFont;
    QFont m_subtitleFont;
    RowPainter m_ground;
};
