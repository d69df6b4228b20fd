#pragma once

#include <QColor>
#include <QRect>
#include <QWidget>

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
