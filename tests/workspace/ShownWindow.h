#pragma once

#include "kit/theme/ThemedTest.h"
#include "support/Printing.h"
#include "support/TestLibrary.h"
#include "surface/CodingTextView.h"
#include "workspace/RootView.h"

#include <memory>

/// The real window over the real store, used by mouse and keys as a desktop sends them.
class ShownWindow : public ThemedTest {
protected:
    void open();
    [[nodiscard]] RootView &root() const { return *m_root; }
    /// In the window or in what lies over it.
    template <typename Widget = QWidget>
    [[nodiscard]] Widget &find(const QString &name = {}) const
    {
        return childOf<Widget>(m_root.get(), name);
    }
    [[nodiscard]] CodingTextView &text() const { return find<CodingTextView>(); }
    /// The window, sheet or menu that takes the input.
    [[nodiscard]] QWidget &top() const;
    /// The middle of the first row that shows `text`.
    [[nodiscard]] QPoint row(const QString &list, const QString &text) const;

    /// Lets events and deletions come to pass, and activates what takes the input.
    void settle() const;
    void click(const QWidget &widget, const QPoint &place, Qt::MouseButton button = Qt::LeftButton) const;
    void click(const QWidget &widget) const { click(widget, widget.rect().center()); }
    void click(const QString &name) const { click(find(name)); }
    void clickRow(const QString &list, const QString &text, Qt::MouseButton button = Qt::LeftButton) const;
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const;
    /// ASCII alone.
    void type(const QString &text) const;
    /// Takes an entry of a menu of the menu bar.
    void choose(const QString &menu, const QString &entry) const;
    /// Drags from the left edge of one character to the left edge of another.
    void drag(qint64 from, qint64 to) const;
    /// Drags over a passage of the document that is read.
    void select(const QString &passage) const;

    /// What the focus goes through by Tab until it comes back to where it is, and by Backtab the other way round: the
    /// names for tests or else those that are spoken, which all must have.
    [[nodiscard]] QStringList stops() const;

    TestLibrary library;

private:
    std::unique_ptr<RootView> m_root;
};
