#pragma once

#include <QWidget>

class ElidedLabel;
class EmptyState;
class QHBoxLayout;
class QStackedWidget;
class QVBoxLayout;
class RowList;

/// A header with what was searched for and how much was found, and below it the list, or a panel when that is empty.
class ResultPage final : public QWidget {
    Q_OBJECT

public:
    /// Takes all three as its children. `spacing` below the title is in logical pixels.
    ResultPage(QWidget *title, int spacing, RowList *list, EmptyState *empty);

    [[nodiscard]] RowList &list() const { return *m_list; }
    [[nodiscard]] ElidedLabel &count() const { return *m_count; }

    /// Puts a row above the header, `gapBelow` logical pixels away from it.
    void addTopRow(QHBoxLayout *row, int gapBelow);
    /// In logical pixels.
    void setTopPadding(int padding);
    /// Says how much was found, and shows the panel if the list is empty.
    void renderCount(const QString &count);

private:
    QVBoxLayout *m_column;
    ElidedLabel *m_count;
    QStackedWidget *m_pages;
    RowList *m_list;
    EmptyState *m_empty;
};
