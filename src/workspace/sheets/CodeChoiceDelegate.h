#pragma once

#include "kit/theme/RowPainter.h"

#include <QFont>
#include <QStyledItemDelegate>

/// Paints the rows of a `CodeChoiceList`: a mark that says whether the code is chosen, its dot, its name, and how many
/// passages it has.
class CodeChoiceDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    explicit CodeChoiceDelegate(QObject *parent = nullptr);

    /// Of so many rows together, in logical pixels.
    [[nodiscard]] qint64 heightOf(qint64 rowCount) const;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    /// The list itself takes clicks and keys, wherever in the row.
    bool editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
        const QModelIndex &index) override;

private:
    void paintContent(
        QPainter &painter, const QRect &ground, Qt::LayoutDirection direction, const QModelIndex &index) const;

    QFont m_nameFont;
    QFont m_countFont;
    int m_rowHeight;
    RowPainter m_ground;
};
