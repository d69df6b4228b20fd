#pragma once

#include "kit/controls/Capsule.h"

class ElidedLabel;
class QPushButton;

/// Floats below the text while a passage is selected: how long it is, and "Add Code".
class SelectionBar final : public Capsule {
    Q_OBJECT

public:
    explicit SelectionBar(QWidget *parent);

    [[nodiscard]] QPushButton &addButton() const { return *m_addButton; }

    /// Shows the bar for a passage of so many UTF-16 code units; 0 takes it away.
    void showLength(qint64 length);
    /// To be called when the parent's size has changed.
    void place();

Q_SIGNALS:
    void addRequested();

private:
    ElidedLabel *m_count;
    QPushButton *m_addButton;
    bool m_isIn = false;
};
