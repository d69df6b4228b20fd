#pragma once

#include <QObject>
#include <QTimer>

class QScrollBar;
class QWidget;

/// Knows whether a scroll bar has something to show: while its area scrolls or lies under the mouse, and shortly after.
/// A child of its bar.
class ScrollActivity final : public QObject {
    Q_OBJECT

public:
    /// Begins to watch the bar; harmless when it is watched already.
    static void watch(QScrollBar &bar);
    [[nodiscard]] static bool isActive(const QWidget &bar);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    explicit ScrollActivity(QScrollBar &bar);

    QScrollBar &m_bar;
    QWidget *m_area;
    QTimer m_lingerTime;
};
