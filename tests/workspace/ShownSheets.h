#pragma once

#include "kit/controls/SegmentedControl.h"
#include "kit/controls/Sheet.h"
#include "kit/theme/ThemedTest.h"
#include "support/TestLibrary.h"
#include "workspace/sheets/SheetPresenter.h"

#include <QPushButton>

#include <memory>

/// A window over the real store in which sheets open as the store asks, with a button that has the focus before.
class ShownSheets : public ThemedTest {
protected:
    ShownSheets()
    {
        showWindow();
        before.setFocus(Qt::OtherFocusReason);
        presenter = std::make_unique<SheetPresenter>(library.store, m_window);
    }
    ~ShownSheets() override
    {
        presenter.reset();
        delete sheet(); // before the store
    }

    /// The sheet that can be seen, if any.
    [[nodiscard]] Sheet *sheet() const
    {
        for (Sheet *found : m_window.findChildren<Sheet *>()) {
            if (found->isVisible())
                return found;
        }
        return nullptr;
    }
    /// Sets the flag, and activates the sheet as the window system would.
    void open(Observable<bool> &flag)
    {
        flag.set(true);
        ASSERT_NE(sheet(), nullptr);
        QApplication::setActiveWindow(sheet());
        QApplication::processEvents();
    }
    template <typename Widget>
    [[nodiscard]] Widget &find(const QString &name) const
    {
        return childOf<Widget>(sheet(), name);
    }
    [[nodiscard]] QPushButton &button(const QString &name) const { return find<QPushButton>(name); }
    void click(const QString &name) const
    {
        QTest::mouseClick(&button(name), Qt::LeftButton);
        QApplication::processEvents();
    }
    static void choose(SegmentedControl &control, int index)
    {
        QTest::mouseClick(&control, Qt::LeftButton, {}, control.segmentRect(index).center());
        QApplication::processEvents();
    }
    /// What Tab reaches, as many times, from where the focus is.
    [[nodiscard]] static QStringList tabbedThrough(int stops)
    {
        QStringList names;
        for (int stop = 0; stop < stops; ++stop) {
            press(Qt::Key_Tab);
            names.append(QApplication::focusWidget()->objectName());
        }
        return names;
    }
    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        QApplication::processEvents();
    }

    TestLibrary library;
    QPushButton before{&m_window};
    std::unique_ptr<SheetPresenter> presenter;
};
