#pragma once

#include <QPointer>
#include <QWidget>

class QWidget;

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

/// Tab within one widget, for what lies over a window without being one.
namespace FocusLoop {

/// Gives the focus to the next or previous widget below `root` that Tab reaches, round and round. False if there is
/// none.
bool advance(QWidget &root, bool forwards);

} // namespace FocusLoop
