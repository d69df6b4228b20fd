#pragma once

#include <QWidget>

class ElidedLabel;
class EmptyState;
class QHBoxLayout;
class QStackedWidget;
class QVBoxLayout;
class RowList;

/// What was found: a header that says what for and how much, and below it the list, or a panel when it is empty.
class ResultPage final : public QWidget {
    Q_OBJECT

public:
    /// Takes both as its children.
    ResultPage(RowList *list, EmptyState *empty, QWidget *parent = nullptr);

    [[nodiscard]] RowList &list() const { return *m_list; }

    /// Puts a row above the header, `gapBelow` logical pixels away from it.
    void addTopRow(QHBoxLayout *row, int gapBelow);
    /// Keeps the header that far away from the page's upper edge.
    void setTopPadding(int padding);
    /// Shows the panel if the list is empty.
    void render(const QString &title, const QString &count);
    /// Gives the focus to the list, or to the page's button if the list is empty.
    void takeFocus(Qt::FocusReason reason);

private:
    QVBoxLayout *m_column;
    ElidedLabel *m_title;
    ElidedLabel *m_count;
    QStackedWidget *m_pages;
    RowList *m_list;
    EmptyState *m_empty;
};
