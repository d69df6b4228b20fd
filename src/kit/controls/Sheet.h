#pragma once

#include "kit/controls/FocusHandling.h"

#include <QColor>
#include <QDialog>
#include <QList>
#include <QPointer>
#include <QRect>
#include <QWidget>

class QVariantAnimation;

/// Dims a window under a sheet, follows its size, and takes its clicks. Where windows can't be translucent it also
/// paints what a sheet's own window can't: its shadow and its smooth corners.
class Scrim final : public QWidget {
    Q_OBJECT

public:
    /// Over all of `window`, or over the body of a sheet. `strength` is a share of the scrim's usual opacity.
    Scrim(QWidget &window, double strength);

    /// From 0, nothing, to 1.
    void setPresence(double presence);
    /// The sheet's body on the screen.
    void setCaster(const QRect &globalBody);

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    double m_strength;
    double m_presence = 1;
    QRect m_caster;
};

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
