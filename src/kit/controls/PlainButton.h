#pragma once

#include <QPushButton>

/// A quiet button: an icon, a label, or both, in secondary until the mouse is over it. Without a label it needs an
/// accessible name, which then is its tool tip too.
class PlainButton final : public QPushButton {
    Q_OBJECT

public:
    /// `symbol` is a name of `Symbols`; may be empty.
    PlainButton(const QString &symbol, const QString &label, QWidget *parent = nullptr);

    /// A button that shows `symbol` alone and calls itself `name`.
    [[nodiscard]] static PlainButton *iconOnly(const QString &symbol, const QString &name, QWidget *parent = nullptr);
};
