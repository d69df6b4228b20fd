#pragma once

#include "kit/controls/Paragraph.h"
#include "kit/lists/RowList.h"
#include "kit/theme/ThemedTest.h"
#include "support/Printing.h"
#include "support/TestLibrary.h"

#include <QScrollBar>

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
    using ThemedTest::textsOf;
    /// The paragraphs of that page.
    [[nodiscard]] QStringList textsOf(const QString &page) const
    {
        QStringList texts;
        for (const auto *paragraph : find<QWidget>(page).template findChildren<Paragraph *>())
            texts.append(paragraph->accessibleName());
        return texts;
    }
    void pressButton(const QString &label) const { ThemedTest::pressButton(m_window, label); }
    [[nodiscard]] static QModelIndex row(const RowList &list, int number) { return list.model()->index(number, 0); }
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
