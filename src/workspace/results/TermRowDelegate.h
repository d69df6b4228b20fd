#pragma once

#include "kit/theme/RowPainter.h"

#include <QFont>
#include <QStyledItemDelegate>

/// Paints a term with a bar that compares its count with that of the top term.
class TermRowDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    /// What a model gives beside the term, its `Qt::DisplayRole`.
    enum Role {
        countRole = Qt::UserRole + 1, ///< qint64
        topCountRole, ///< qint64, that of the first row
    };

    explicit TermRowDelegate(QObject *parent = nullptr);

    /// In logical pixels.
    [[nodiscard]] static double barWidth(qint64 count, qint64 topCount);

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    bool helpEvent(QHelpEvent *event, QAbstractItemView *view, const QStyleOptionViewItem &option,
        const QModelIndex &index) override;

private:
    /// The parts of a row, from left to right.
    struct Parts {
        QRect term;
        QRectF bar;
        QRect count;
    };
    [[nodiscard]] Parts partsOf(const QStyleOptionViewItem &option, const QModelIndex &index) const;

    QFont m_termFont;
    QFont m_countFont;
    RowPainter m_ground;
};
