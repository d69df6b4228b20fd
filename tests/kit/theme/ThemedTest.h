#pragma once

#include "kit/theme/Appearance.h"
#include "kit/theme/Theme.h"
#include "support/Cases.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QContextMenuEvent>
#include <QHash>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

#include <stdexcept>

/// A desktop that says what the test wants it to say.
class FakeDesktopSettings final : public DesktopSettings {
public:
    [[nodiscard]] QVariant value(const QString &group, const QString &key) const override
    {
        return m_values.value(group + u'/' + key);
    }
    void set(const QString &path, const QVariant &value)
    {
        m_values[path] = value;
        Q_EMIT changed();
    }

private:
    QHash<QString, QVariant> m_values;
};

/// A dressed application without animations, in the light look, and a window to put things into.
class ThemedTest : public testing::Test {
protected:
    ThemedTest() : m_appearance(m_settings, lightPalette())
    {
        animate(false);
        Theme::follow(m_appearance);
        m_window.resize(900, 600);
        m_window.setFocusPolicy(Qt::StrongFocus);
    }
    ~ThemedTest() override { Theme::setLook({}); }

    void animate(bool animates)
    {
        m_settings.set(QStringLiteral("org.gnome.desktop.interface/enable-animations"), animates);
    }
    void showWindow()
    {
        m_window.show();
        QApplication::setActiveWindow(&m_window);
    }
    template <typename Widget>
    [[nodiscard]] static Widget &childOf(const QWidget *parent, const QString &name)
    {
        auto *found = parent != nullptr ? parent->findChild<Widget *>(name) : nullptr;
        if (found == nullptr)
            throw std::runtime_error("no such widget: " + name.toStdString());
        return *found;
    }
    static void pressButton(const QWidget &parent, const QString &label)
    {
        for (auto *button : parent.findChildren<QPushButton *>()) {
            if (button->isVisible() && button->text() == label)
                return QTest::mouseClick(button, Qt::LeftButton);
        }
        throw std::runtime_error("no such button: " + label.toStdString());
    }
    [[nodiscard]] static QStringList textsOf(const QAbstractItemView &list)
    {
        QStringList texts;
        for (int number = 0; number < list.model()->rowCount(); ++number)
            texts.append(list.model()->index(number, 0).data().toString());
        return texts;
    }
    /// The text of the selected row; empty without one.
    [[nodiscard]] static QString selectedIn(const QAbstractItemView &list)
    {
        return list.selectionModel()->selectedIndexes().value(0).data().toString();
    }
    /// The menu that opens at a place of a list.
    [[nodiscard]] static QMenu &menuAt(
        const QAbstractItemView &rows, const QPoint &place, QContextMenuEvent::Reason reason = QContextMenuEvent::Mouse)
    {
        QContextMenuEvent event(reason, place, rows.viewport()->mapToGlobal(place));
        QApplication::sendEvent(rows.viewport(), &event);
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (menu == nullptr)
            throw std::runtime_error("no menu has opened");
        return *menu;
    }
    [[nodiscard]] static QAction &entry(const QMenu &menu, const QString &title)
    {
        for (QAction *action : menu.actions()) {
            if (action->text() == title)
                return *action;
        }
        throw std::runtime_error("no such entry: " + title.toStdString());
    }
    /// Takes the entry that a path of titles leads to, by the keyboard.
    static void take(QMenu &menu, const QStringList &path)
    {
        QAction &action = entry(menu, path.first());
        menu.setActiveAction(&action);
        QTest::keyClick(&menu, path.size() == 1 ? Qt::Key_Return : Qt::Key_Right);
        QApplication::processEvents();
        if (path.size() > 1)
            take(*action.menu(), path.mid(1));
    }
    static QPalette lightPalette() { return QPalette(Qt::black, QColor(0xEF, 0xEF, 0xEF)); }

    FakeDesktopSettings m_settings;
    Appearance m_appearance;
    QWidget m_window;
};
