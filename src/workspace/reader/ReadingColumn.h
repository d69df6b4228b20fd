#pragma once

#include <QWidget>

/// Holds widgets in the column of the reader's text: as wide as the text and centred in the parent.
class ReadingColumn final : public QWidget {
    Q_OBJECT

public:
    /// The content begins `outdent` logical pixels to the left of the text.
    explicit ReadingColumn(QWidget &parent, int outdent = 0);

    /// With the smallest margins, since the margins of a wide parent must not keep it from getting narrower.
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void centre();

    const int m_outdent;
};
