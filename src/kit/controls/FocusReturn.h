#pragma once

#include <QPointer>
#include <QWidget>

/// Where the focus was before something came over the window, and how it had come there.
class FocusReturn {
public:
    void note();
    /// Gives it back, unless that widget has gone or is hidden meanwhile.
    void giveBack();

private:
    QPointer<QWidget> m_widget;
    bool m_byKeyboard = false;
};
