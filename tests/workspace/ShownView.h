#pragma once

#include "support/Printing.h"
#include "support/TestLibrary.h"
#include "workspace/controls/Paragraph.h"
#include "workspace/lists/RowList.h"
#include "workspace/theme/ThemedTest.h"

#include <QPushButton>
#include <QScrollBar>
#include <QTest>

#include <stdexcept>

/// A view of the middle column over the real store, driven by mouse and keys.
template <typename View>
class ShownView : public ThemedTest {
protected:
    ~ShownView() override { delete view; } // before the store
    void open()
    {
        view = new View(library.store, &m_window);
        view->resize(285, 500);
        showWindow();
        QApplication::processEvents();
    }
    template <typename Widget>
    [[nodiscard]] Widget &find(const QString &name) const
    {
        return childOf<Widget>(&m_window, name);
    }
    [[nodiscard]] bool showsPage(const QString &name) const { return find<QWidget>(name).isVisible(); }
    /// The paragraphs of that page.
    [[nodiscard]] QStringList textsOf(const QString &page) const
    {
        QStringList texts;
        for (const auto *paragraph : find<QWidget>(page).template findChildren<Paragraph *>())
            texts.append(paragraph->accessibleName());
        return texts;
    }
    void pressButton(const QString &label) const
    {
        for (auto *button : m_window.findChildren<QPushButton *>()) {
            if (button->text() == label)
                return QTest::mouseClick(button, Qt::LeftButton);
        }
        throw std::runtime_error("no such button: " + label.toStdString());
    }
    [[nodiscard]] static QModelIndex row(const RowList &list, int number) { return list.model()->index(number, 0); }
    [[nodiscard]] static QStringList textsOf(const RowList &list)
    {
        QStringList texts;
        for (int number = 0; number < list.model()->rowCount(); ++number)
            texts.append(row(list, number).data().toString());
        return texts;
    }
    [[nodiscard]] static QString spoken(const RowList &list, int number)
    {
        return row(list, number).data(Qt::AccessibleTextRole).toString();
    }
    static void click(RowList &list, int number, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(list.viewport(), Qt::LeftButton, modifiers, list.visualRect(row(list, number)).center());
        QApplication::processEvents();
    }
    [[nodiscard]] std::optional<TextRange> revealedRange() const
    {
        const auto &request = library.store.revealRequest().get();
        return request ? std::optional(request->range) : std::nullopt;
    }

    TestLibrary library;
    View *view = nullptr;
};
