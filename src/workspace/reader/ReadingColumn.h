#pragma once

#include <QWidget>

/// Keeps what it holds on the text's left edge: as wide as the text, in the middle of the pane.
class ReadingColumn final : public QWidget {
    Q_OBJECT

public:
    /// The margin on both sides of a pane that is not wider than the column.
    static constexpr int sideMargin = 32;
    static constexpr int textWidth = 660;

    /// `outdent` is how far what it holds begins before the text, in logical pixels.
    explicit ReadingColumn(QWidget *parent, int outdent = 0);

    /// With the least margins: those of a wide pane must not keep it wide.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void centre();

    const int m_outdent;
};
