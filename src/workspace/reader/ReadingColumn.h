#pragma once

#include <QWidget>

/// Keeps what it holds on the text's left edge: as wide as the text, in the middle of the pane.
class ReadingColumn final : public QWidget {
    Q_OBJECT

public:
    /// The margin on both sides of a pane that is not wider than the column.
    static constexpr int sideMargin = 32;
    static constexpr int textWidth = 660;

    explicit ReadingColumn(QWidget *parent);

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void centre();
};
