#pragma once

#include <QLineEdit>

class QAbstractButton;

/// A field to search with: a quiet track with a magnifying glass, and a cross that empties it once it is filled.
/// Escape empties it too.
class SearchField final : public QLineEdit {
    Q_OBJECT

public:
    explicit SearchField(const QString &placeholder, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    [[nodiscard]] QRect glassRect() const;
    void makeRoom();
    void placeCross();

    QAbstractButton *m_cross;
};
