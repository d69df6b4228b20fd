#pragma once

#include "kit/controls/FocusHandling.h"

#include <QPointer>
#include <QWidget>

class QPainterPath;

/// A raised panel with an arrow that points down at what it belongs to. It lies over its window as a child, so it
/// behaves alike on every platform. A click elsewhere or Escape closes it; Tab stays inside; the focus goes back to
/// where it was. Set a layout on it; its margins are inside the panel.
class Popover : public QWidget {
    Q_OBJECT

public:
    explicit Popover(QWidget &window);
    ~Popover() override;

    /// The panel without arrow and shadow, in the coordinates of the window.
    [[nodiscard]] QRect bodyInWindow() const;

    /// Opens above `bar` with the arrow at the middle of `target`, moved sideways as far as the window's edges ask for.
    /// The focus goes to `firstFocus`, or to the first stop inside.
    void openAbove(const QWidget &bar, const QWidget &target, QWidget *firstFocus = nullptr);
    void openAbove(const QWidget &target, QWidget *firstFocus = nullptr) { openAbove(target, target, firstFocus); }
    void close();
    /// A press on `widget` or inside it only closes, so that what is there stays as it is.
    void onlyCloseAt(const QWidget &widget) { m_quiet = &widget; }
    /// To be called when the content has become higher or lower.
    void place();

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void opened();
    void closed();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    bool event(QEvent *event) override;

private:
    [[nodiscard]] QRect bodyRect() const;
    [[nodiscard]] QPainterPath outline() const;
    [[nodiscard]] bool closesAt(const QWidget *clicked) const;
    /// Whether moving `widget` moves what the popover points to.
    [[nodiscard]] bool hangsOn(const QWidget *widget) const;

    QPointer<const QWidget> m_bar;
    QPointer<const QWidget> m_target;
    QPointer<const QWidget> m_quiet;
    FocusReturn m_focusReturn;
    int m_arrowMiddle = 0;
};
