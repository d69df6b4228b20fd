#pragma once

#include "kit/controls/Alert.h"
#include "kit/theme/ThemedTest.h"
#include "support/Printing.h"
#include "support/TestLibrary.h"
#include "workspace/sidebar/InlineField.h"
#include "workspace/sidebar/SidebarList.h"
#include "workspace/sidebar/SidebarModel.h"
#include "workspace/sidebar/SidebarView.h"

#include <QLineEdit>

#include <memory>
#include <stdexcept>

/// The real sidebar over the real store, driven by mouse and keys.
class ShownSidebar : public ThemedTest {
protected:
    /// Codes of these names in the current project.
    void open(const QStringList &names = {})
    {
        library.makeCodes(names);
        m_view = std::make_unique<SidebarView>(library.store);
        m_view->setParent(&m_window);
        m_view->resize(210, 500);
        showWindow();
        QApplication::processEvents();
    }
    /// "Code 0" and so on.
    void openMany(int count)
    {
        QStringList names;
        for (int number = 0; number < count; ++number)
            names.append(QStringLiteral("Code %1").arg(number));
        open(names);
    }
    template <typename Widget>
    [[nodiscard]] Widget &find(const QString &name = {}) const
    {
        return childOf<Widget>(&m_window, name);
    }
    [[nodiscard]] SidebarView &view() const { return *m_view; }
    [[nodiscard]] SidebarList &list() const { return find<SidebarList>(); }
    [[nodiscard]] InlineField &newCodeField() const { return find<InlineField>(QStringLiteral("newCodeField")); }
    [[nodiscard]] InlineField &renameField() const { return find<InlineField>(QStringLiteral("renameField")); }

    [[nodiscard]] QStringList rows() const { return textsOf(list()); }
    [[nodiscard]] QModelIndex row(const QString &text) const
    {
        const qsizetype number = rows().indexOf(text);
        if (number < 0)
            throw std::runtime_error("no such row: " + text.toStdString());
        return list().model()->index(int(number), 0);
    }
    [[nodiscard]] QPoint middleOf(const QString &text) const { return list().visualRect(row(text)).center(); }
    [[nodiscard]] QString selectedRow() const { return selectedIn(list()); }
    void click(const QString &text) const { QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, middleOf(text)); }
    void moveTo(const QString &text) const
    {
        list().setFocus(Qt::TabFocusReason);
        list().selectionModel()->setCurrentIndex(row(text), QItemSelectionModel::NoUpdate);
    }

    [[nodiscard]] QMenu &openMenu(const QString &text) const { return menuAt(list(), middleOf(text)); }
    /// The entry that a path of titles leads to; opens the submenus on its way.
    [[nodiscard]] static QAction &entry(const QMenu &menu, const QStringList &path)
    {
        for (QAction *action : menu.actions()) {
            if (action->text() != path.first())
                continue;
            if (path.size() == 1)
                return *action;
            Q_EMIT action->menu()->aboutToShow();
            return entry(*action->menu(), path.mid(1));
        }
        throw std::runtime_error("no such entry: " + path.first().toStdString());
    }
    void choose(const QString &text, const QStringList &path)
    {
        QMenu &menu = openMenu(text);
        QAction &action = entry(menu, path);
        menu.close();
        action.trigger();
        QApplication::processEvents();
        if (!hasAlert())
            QApplication::setActiveWindow(&m_window); // without a desktop nobody does when the menu has gone
    }

    [[nodiscard]] Alert &alert() const { return find<Alert>(); }
    [[nodiscard]] bool hasAlert() const { return m_window.findChild<Alert *>() != nullptr; }
    void answer(const QString &label) const
    {
        pressButton(alert(), label);
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    TestLibrary library;

private:
    std::unique_ptr<SidebarView> m_view; // goes before the store and the window
};
