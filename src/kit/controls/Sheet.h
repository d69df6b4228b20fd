#pragma once

#include "kit/controls/FocusReturn.h"

#include <QDialog>
#include <QList>
#include <QPointer>

class QVariantAnimation;
class Scrim;

/// A panel that hangs in its window and keeps everything else from being used until it is answered: window-modal,
/// without a frame of the desktop's. `open()` shows it. Escape rejects, Return presses the default button, Tab stays
/// inside, and the focus goes back to where it was. Set a layout on it; the layout's margins are inside the panel.
/// Deletes itself after it has closed.
class Sheet : public QDialog {
    Q_OBJECT

public:
    /// Hangs in the window of `parent`, which may be another sheet. `bodyWidth` is without the shadow.
    Sheet(QWidget &parent, int bodyWidth);

    /// The panel itself, in the widget's coordinates.
    [[nodiscard]] QRect bodyRect() const;

    void setVisible(bool visible) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;

private:
    [[nodiscard]] QWidget &rootWindow() const;
    void takeOver();
    void keepKeyboard();
    void giveBack();
    void fit();
    void place();
    void animateIn();
    void setPresence(double presence);

    int m_bodyWidth;
    double m_presence = 1;
    const bool m_paintsShadow;
    QList<QPointer<Scrim>> m_scrims; ///< one in each window below
    FocusReturn m_focusReturn;
};
