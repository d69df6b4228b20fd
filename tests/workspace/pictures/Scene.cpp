#include "Scene.h"

#include "kit/theme/ScrollActivity.h"
#include "workspace/StatusBanner.h"

#include <QAbstractItemView>
#include <QScrollBar>
#include <QWindow>

#include <algorithm>

using namespace Qt::StringLiterals;

Scene::Scene()
{
    QApplication::setCursorFlashTime(0); // the caret is always seen
}

void Scene::openSample()
{
    library.store.loadSampleContent();
    open();
    const auto never = [](std::chrono::milliseconds, const std::function<void()> &) {};
    root().banner().setRunLater(never); // flashes and banners stay
    text().setRunLater(never);
    library.store.statusMessage().set({});
    library.store.codingHintDismissed().set(true);
    library.store.selectedDocumentID().set(library.document(u"Field notes — week 1"_s).id);
    QApplication::processEvents();
}

void Scene::draw(const QWidget *part)
{
    waitForScrollBars();
    for (const uint scheme : {1U, 2U}) {
        m_settings.set(u"org.freedesktop.appearance/color-scheme"_s, scheme);
        for (int round = 0; round < 3; ++round) // one layout asks the one around it
            QApplication::processEvents();
        (scheme == 1 ? m_dark : m_light).append(Picture::of(root(), part));
    }
}

void Scene::waitForScrollBars() const
{
    const QList<QScrollBar *> bars = root().findChildren<QScrollBar *>();
    EXPECT_TRUE(QTest::qWaitFor([&bars] {
        return std::ranges::none_of(bars, [](const QScrollBar *bar) {
            return ScrollActivity::isActive(*bar) && bar->isVisible()
                && !bar->parentWidget()->parentWidget()->underMouse();
        });
    }));
}

QWidget &Scene::top() const
{
    for (QWidget *candidate : {QApplication::activePopupWidget(), QApplication::activeModalWidget()}) {
        if (candidate != nullptr)
            return *candidate;
    }
    return root();
}

QPoint Scene::row(const QString &list, const QString &text) const
{
    const auto &view = find<QAbstractItemView>(list);
    for (int number = 0; number < view.model()->rowCount(); ++number) {
        const QModelIndex index = view.model()->index(number, 0);
        if (index.data().toString().contains(text) || index.data(Qt::AccessibleTextRole).toString().contains(text))
            return view.visualRect(index).center();
    }
    throw std::runtime_error("no such row: " + text.toStdString());
}

void Scene::hover(const QWidget &widget, const QPoint &place)
{
    QTest::mouseMove(widget.window()->windowHandle(), widget.mapTo(widget.window(), place));
    QApplication::processEvents();
}

void Scene::click(const QWidget &widget, const QPoint &place, Qt::MouseButton button) const
{
    QTest::mouseClick(widget.window()->windowHandle(), button, {}, widget.mapTo(widget.window(), place));
    QApplication::processEvents();
    QApplication::setActiveWindow(&top()); // as a desktop would
    QApplication::processEvents();
}

void Scene::clickRow(const QString &list, const QString &text, Qt::MouseButton button) const
{
    click(*find<QAbstractItemView>(list).viewport(), row(list, text), button);
}

void Scene::hoverRow(const QString &list, const QString &text) const
{
    hover(*find<QAbstractItemView>(list).viewport(), row(list, text));
}

void Scene::press(Qt::Key key, Qt::KeyboardModifiers modifiers) const
{
    QTest::keyClick(top().windowHandle(), key, modifiers);
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::setActiveWindow(&top());
    QApplication::processEvents();
}

void Scene::type(const QString &text)
{
    QTest::keyClicks(QApplication::focusWidget(), text);
    QApplication::processEvents();
}

void Scene::goTo(const QStringList &path) const
{
    for (const QString &title : path) {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        for (QAction *action : menu->actions()) {
            if (action->text() == title)
                menu->setActiveAction(action);
        }
        if (title != path.last())
            press(Qt::Key_Right);
    }
}

void Scene::select(const QString &passage)
{
    const qint64 start = text().text().indexOf(passage);
    drag(start, start + passage.size());
}
