#pragma once

#include "kit/controls/Capsule.h"

/// The tip that teaches selecting a passage, until it is closed or the first passage is coded.
class CodingHint final : public Capsule {
    Q_OBJECT

public:
    explicit CodingHint(QWidget *parent);

    void setShown(bool isShown);
    /// To be called when the parent's size has changed. `top` is where the room for it begins.
    void place(int top);

Q_SIGNALS:
    void dismissed();

private:
    bool m_isIn = false;
};
