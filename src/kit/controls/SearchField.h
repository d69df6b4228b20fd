#pragma once

#include <QLineEdit>

/// A field to search with: a magnifying glass, and a cross that empties the field once it is filled. Escape empties it
/// too. Its class name selects the palette that `Theme` sets for it.
class SearchField final : public QLineEdit {
    Q_OBJECT

public:
    explicit SearchField(const QString &placeholder, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
};
