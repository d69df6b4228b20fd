#pragma once

#include "kit/controls/Capsule.h"

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
