#include "ShownWindow.h"
#include "workspace/reader/SelectionBar.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QLineEdit>
#include <QListView>
#include <QTextEdit>

using namespace Qt::StringLiterals;

namespace {

class WindowKeyboard : public ShownWindow {
protected:
    /// What has the focus, as its name for tests or else as its name for the ear.
    static QString focused()
    {
        const QWidget *widget = QApplication::focusWidget();
        if (widget == nullptr)
            return u"nothing"_s;
        return widget->objectName().isEmpty() ? widget->accessibleName() : widget->objectName();
    }
    /// What the focus reaches by that key, until it comes to the place where it began.
    QStringList round(Qt::Key key) const
    {
        QStringList places;
        do {
            places.append(focused());
            QTest::keyClick(QApplication::focusWidget(), key);
        } while (focused() != places.first() && places.size() < 40);
        return places;
    }
};

} // namespace

TEST_F(WindowKeyboard, TabGoesThroughTheColumnsFromLeftToRight)
{
    const Code code = library.makeCodes({u"One"_s}).first();
    const Document document = library.paste(u"A"_s, u"some words"_s);
    library.store.setDocumentMemo(document, u"kept"_s);
    open();
    drag(0, 4);
    find<QListView>(u"sidebarList"_s).setFocus(Qt::TabFocusReason);
    const QStringList order{u"sidebarList"_s, u"documentSearch"_s, u"documentList"_s, u"memo"_s, u"Document text"_s,
        u"addCode"_s, u"closeTip"_s, u"import"_s};
    EXPECT_EQ(round(Qt::Key_Tab), order);

    library.store.sidebarSelection().set(SidebarSelection(CodeSelection{code.id}));
    QApplication::processEvents();
    find<QListView>(u"sidebarList"_s).setFocus(Qt::TabFocusReason);
    const QStringList places = round(Qt::Key_Tab);
    ASSERT_GE(places.size(), 3);
    EXPECT_EQ(places[1], u"allDocuments"_s);
    QStringList backwards = round(Qt::Key_Backtab).mid(1);
    std::ranges::reverse(backwards);
    EXPECT_EQ(backwards, places.mid(1));
}

TEST_F(WindowKeyboard, APassageIsCodedWithoutTheMouseWithTheFirstCodeOfAnExactName)
{
    library.makeCodes({u"Trusting"_s, u"trust"_s});
    library.paste(u"A"_s, u"some words to code"_s);
    open();
    text().setFocus(Qt::TabFocusReason);
    for (int each = 0; each < 4; ++each)
        QTest::keyClick(&text(), Qt::Key_Right, Qt::ShiftModifier);
    QTest::keyClick(&text(), Qt::Key_Tab);
    for (const Qt::Key ending : {Qt::Key_Escape, Qt::Key_Return}) {
        EXPECT_TRUE(find<SelectionBar>().isVisible()) << "the passage is still there to be coded";
        EXPECT_TRUE(library.storedCodings().isEmpty());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        auto &field = find<QLineEdit>(u"pickerField"_s);
        ASSERT_TRUE(field.hasFocus());
        QTest::keyClicks(&field, u"TRUST"_s);
        QTest::keyClick(&field, ending);
        QApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    ASSERT_EQ(library.storedCodings().size(), 1);
    EXPECT_EQ(library.storedCodings().first().range(), (TextRange{0, 4}));
    EXPECT_EQ(library.storedCodings().first().codeID, library.code(u"Trusting"_s).id);
    EXPECT_EQ(library.store.codes()->size(), 2);
    EXPECT_TRUE(text().hasFocus()); // where the gesture began
    const std::unique_ptr<QMenu> menu(text().createContextMenu(1)); // the text shows the passage
    EXPECT_EQ(menu->actions().first()->text(), u"Remove Code — Trusting"_s);
}

TEST_F(WindowKeyboard, EverythingThatTakesTheFocusHasANameAndARole)
{
    const Code code = library.makeCodes({u"One"_s}).first();
    const Document document = library.paste(u"A"_s, u"some words"_s);
    open();
    root().openFindBar();
    drag(0, 4);
    for (const bool showsCode : {false, true}) {
        if (showsCode)
            library.store.sidebarSelection().set(SidebarSelection(CodeSelection{code.id}));
        QApplication::processEvents();
        for (QWidget *widget : root().findChildren<QWidget *>()) {
            if (!widget->isVisible() || (widget->focusPolicy() & Qt::TabFocus) == 0)
                continue;
            QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(widget);
            ASSERT_NE(spoken, nullptr);
            EXPECT_FALSE(spoken->text(QAccessible::Name).isEmpty()) << widget->metaObject()->className();
            EXPECT_NE(spoken->role(), QAccessible::NoRole) << widget->metaObject()->className();
        }
    }
}
