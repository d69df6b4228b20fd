#pragma once

#include "kit/controls/Capsule.h"

class ElidedLabel;
class QPushButton;

/// Floats over the bottom of the text while a passage is selected: the passage's length, and "Add Code".
class SelectionBar final : public Capsule {
    Q_OBJECT

public:
    explicit SelectionBar(QWidget *parent);

    [[nodiscard]] QPushButton &addButton() const { return *m_addButton; }

    /// Shows the bar for a passage of so many UTF-16 code units; 0 hides it.
    void showLength(qint64 length);
    /// Moves the bar to its place in the parent; to be called when the parent's size has changed.
    void place();

Q_SIGNALS:
    void addRequested();

private:
    ElidedLabel *m_count;
    QPushButton *m_addButton;
};

/// The tip that explains coding, floating over the top of the reader.
class CodingHint final : public Capsule {
    Q_OBJECT

public:
    explicit CodingHint(QWidget *parent);

    void setShown(bool isShown);
    /// Moves the tip to its place in the parent; to be called when the parent's size has changed.
    void place();

Q_SIGNALS:
    void dismissed();
};
