#include "ShownWindow.h"

#include <QAccessible>
#include <QMenuBar>
#include <QWindow>

void ShownWindow::open()
{
    m_root = std::make_unique<RootView>(library.store);
    m_root->resize(1180, 780); // whatever the size of the screen
    m_root->show();
    settle();
}

QWidget &ShownWindow::top() const
{
    QWidget *popup = QApplication::activePopupWidget();
    QWidget *modal = QApplication::activeModalWidget();
    return popup != nullptr ? *popup : modal != nullptr ? *modal : root();
}

QPoint ShownWindow::row(const QString &list, const QString &text) const
{
    auto &view = find<QAbstractItemView>(list);
    for (int number = 0; number < view.model()->rowCount(); ++number) {
        const QModelIndex index = view.model()->index(number, 0);
        if (index.data().toString().contains(text) || index.data(Qt::AccessibleTextRole).toString().contains(text)) {
            view.scrollTo(index);
            return view.visualRect(index).center();
        }
    }
    throw std::runtime_error("no such row: " + text.toStdString());
}

void ShownWindow::settle() const
{
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::setActiveWindow(&top());
    QApplication::processEvents();
}

void ShownWindow::click(const QWidget &widget, const QPoint &place, Qt::MouseButton button) const
{
    QTest::mouseClick(widget.window()->windowHandle(), button, {}, widget.mapTo(widget.window(), place));
    settle();
}

void ShownWindow::clickRow(const QString &list, const QString &text, Qt::MouseButton button) const
{
    click(*find<QAbstractItemView>(list).viewport(), row(list, text), button);
}

void ShownWindow::press(Qt::Key key, Qt::KeyboardModifiers modifiers) const
{
    QTest::keyClick(top().windowHandle(), key, modifiers);
    settle();
}

void ShownWindow::type(const QString &text) const
{
    QTest::keyClicks(QApplication::focusWidget(), text);
    settle();
}

void ShownWindow::choose(const QString &menu, const QString &entry) const
{
    for (const QAction *action : root().menuBar()->actions()) {
        if (action->text() == menu)
            take(*action->menu(), {entry});
    }
    settle();
}

void ShownWindow::drag(qint64 from, qint64 to) const
{
    QWidget *viewport = text().viewport();
    const auto edge = [&](qint64 position) {
        const QRect box = text().characterRectangle(position);
        return QPoint(box.left() + 1, box.center().y());
    };
    QTest::mousePress(viewport, Qt::LeftButton, {}, edge(from));
    QTest::mouseMove(viewport, (edge(from) + edge(to)) / 2);
    QTest::mouseMove(viewport, edge(to));
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, edge(to));
    settle();
}

void ShownWindow::select(const QString &passage) const
{
    const qint64 start = text().text().indexOf(passage);
    drag(start, start + passage.size());
}

QStringList ShownWindow::stops() const
{
    const auto focused = [] {
        const QWidget &widget = *QApplication::focusWidget();
        return widget.objectName().isEmpty() ? widget.accessibleName() : widget.objectName();
    };
    QStringList names;
    do {
        names.append(focused());
        EXPECT_NE(
            QAccessible::queryAccessibleInterface(QApplication::focusWidget())->text(QAccessible::Name), QString());
        press(Qt::Key_Tab);
    } while (focused() != names.first() && names.size() < 40);
    for (qsizetype number = names.size(); number-- > 0;) {
        press(Qt::Key_Backtab);
        EXPECT_EQ(focused(), names[number]);
    }
    return names;
}
