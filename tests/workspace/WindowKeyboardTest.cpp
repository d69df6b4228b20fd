#include "ShownWindow.h"
#include "workspace/reader/SelectionBar.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QLineEdit>
#include <QListView>

using namespace Qt::StringLiterals;

namespace {

class WindowKeyboard : public ShownWindow {
protected:
    /// What has the focus, as its name for tests or else as its name for the ear, which each must have.
    static QString focused()
    {
        QWidget *widget = QApplication::focusWidget();
        QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(widget);
        if (spoken == nullptr)
            return u"nothing"_s;
        EXPECT_FALSE(spoken->text(QAccessible::Name).isEmpty()) << widget->metaObject()->className();
        EXPECT_NE(spoken->role(), QAccessible::NoRole) << widget->metaObject()->className();
        return widget->objectName().isEmpty() ? widget->accessibleName() : widget->objectName();
    }
    /// What the focus reaches by that key from the sidebar, until it comes back there.
    QStringList round(Qt::Key key) const
    {
        find<QListView>(u"sidebarList"_s).setFocus(Qt::TabFocusReason);
        QStringList places;
        do {
            places.append(focused());
            QTest::keyClick(QApplication::focusWidget(), key);
        } while (focused() != places.first() && places.size() < 40);
        return places;
    }
};

} // namespace

TEST_F(WindowKeyboard, TabGoesThroughTheColumnsFromLeftToRightAndBack)
{
    const Code code = library.makeCodes({u"One"_s}).first();
    library.store.setDocumentMemo(library.paste(u"A"_s, u"some words"_s), u"kept"_s);
    open();
    drag(0, 4);
    EXPECT_EQ(round(Qt::Key_Tab),
        (QStringList{u"sidebarList"_s, u"documentSearch"_s, u"documentList"_s, u"memo"_s, u"Document text"_s,
            u"addCode"_s, u"closeTip"_s, u"import"_s}));
    root().openFindBar();
    library.store.sidebarSelection().set(SidebarSelection(CodeSelection{code.id}));
    QApplication::processEvents();
    const QStringList places = round(Qt::Key_Tab);
    EXPECT_EQ(places.value(1), u"allDocuments"_s);
    EXPECT_TRUE(places.contains(u"findField"_s));
    QStringList backwards = round(Qt::Key_Backtab);
    std::reverse(backwards.begin() + 1, backwards.end());
    EXPECT_EQ(backwards, places);
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
        QTest::keyClicks(&find<QLineEdit>(u"pickerField"_s), u"TRUST"_s);
        QTest::keyClick(QApplication::focusWidget(), ending);
        settle();
    }
    ASSERT_EQ(library.storedCodings().size(), 1);
    EXPECT_EQ(library.storedCodings().first().range(), (TextRange{0, 4}));
    EXPECT_EQ(library.storedCodings().first().codeID, library.code(u"Trusting"_s).id);
    EXPECT_EQ(library.store.codes()->size(), 2);
    EXPECT_TRUE(text().hasFocus()); // where the gesture began
}
