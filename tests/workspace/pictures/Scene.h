#pragma once

#include "Picture.h"
#include "workspace/ShownWindow.h"

#include <QSplitter>

/// The real window over the sample content, used by mouse and keys and drawn in both looks.
class Scene : public ShownWindow {
public:
    using ShownWindow::library;
    using ShownWindow::open;
    using ShownWindow::root;
    using ShownWindow::text;

    Scene();
    /// Opens the window with the sample content.
    void openSample();
    /// Draws all that is to be seen, or one part of the window, beside what was drawn before.
    void draw(const QWidget *part = nullptr);
    void setContrast(bool isHigh)
    {
        m_settings.set(QStringLiteral("org.freedesktop.appearance/contrast"), uint(isHigh));
    }

    /// The window, sheet or menu that lies above all others.
    [[nodiscard]] QWidget &top() const;
    /// What bears that name in the window or in a sheet over it.
    [[nodiscard]] QWidget &widget(const QString &name) const { return childOf<QWidget>(&root(), name); }
    /// The sidebar, the middle one or the reader's.
    [[nodiscard]] QWidget &column(int number) const { return *find<QSplitter>().widget(number); }
    /// The middle of the first row that shows `text`.
    [[nodiscard]] QPoint row(const QString &list, const QString &text) const;

    static void hover(const QWidget &widget, const QPoint &place);
    static void hover(const QWidget &widget) { hover(widget, widget.rect().center()); }
    void click(const QWidget &widget, const QPoint &place, Qt::MouseButton button = Qt::LeftButton) const;
    void click(const QWidget &widget) const { click(widget, widget.rect().center()); }
    void clickRow(const QString &list, const QString &text, Qt::MouseButton button = Qt::LeftButton) const;
    /// Moves over a row without pressing it.
    void hoverRow(const QString &list, const QString &text) const;
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const;
    /// ASCII alone.
    static void type(const QString &text);
    /// Follows the titles through the menu that is open, and stays on the last one.
    void goTo(const QStringList &path) const;
    /// Selects a passage of the document that is read.
    void select(const QString &passage);

    [[nodiscard]] const QList<QImage> &light() const { return m_light; }
    [[nodiscard]] const QList<QImage> &dark() const { return m_dark; }

protected:
    void TestBody() override { }

private:
    /// Scroll bars fade some time after scrolling; a picture shows those alone that lie under the mouse.
    void waitForScrollBars() const;

    QList<QImage> m_light;
    QList<QImage> m_dark;
};
