#include "workspace/lists/DocumentListView.h"

#include "ShownView.h"
#include "kit/controls/Alert.h"

#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace {

class DocumentList : public ShownView<DocumentListView> {
protected:
    [[nodiscard]] RowList &list() const { return find<RowList>(u"documentList"_s); }
    [[nodiscard]] QLineEdit &search() const { return find<QLineEdit>(u"documentSearch"_s); }
    [[nodiscard]] QStringList titles() const { return textsOf(list()); }
    [[nodiscard]] QString selectedTitle() const { return selectedIn(list()); }
    void chooseFromMenu(int number, const QString &label) const
    {
        const QPoint place = list().visualRect(row(list(), number)).center();
        QTest::mouseClick(list().viewport(), Qt::RightButton, {}, place);
        take(menuAt(list(), place), {label});
    }
    [[nodiscard]] QLineEdit &alertField() const { return *m_window.findChild<Alert *>()->findChild<QLineEdit *>(); }
    void pasteMany(int count)
    {
        for (int number = 0; number < count; ++number)
            library.paste(u"Document %1"_s.arg(number), u"text"_s);
    }
};

} // namespace

TEST_F(DocumentList, SearchesAsItIsTypedAndNamesWhatIsNotThere)
{
    library.store.searchText().set(u"needle"_s);
    open();
    EXPECT_TRUE(showsPage(u"noDocuments"_s)) << "whatever is searched";
    EXPECT_EQ(search().text(), u"needle"_s);
    pressButton(u"Import Documents…"_s);
    EXPECT_TRUE(library.fileDialogs.openRequest.has_value());
    search().clear();
    library.paste(u"Apples"_s, u"a tree"_s);
    library.paste(u"Pears"_s, u"another tree"_s);
    QTest::keyClicks(&search(), u"another"_s);
    EXPECT_EQ(titles(), QStringList{u"Pears"_s});
    QTest::keyClicks(&search(), u"%1"_s);
    EXPECT_TRUE(showsPage(u"noResults"_s));
    EXPECT_EQ(textsOf(u"noResults"_s).first(), u"No Results for “another%1”"_s);
    QTest::keyClick(&search(), Qt::Key_Escape);
    EXPECT_EQ(library.store.searchText().get(), QString());
    EXPECT_EQ(titles(), (QStringList{u"Pears"_s, u"Apples"_s}));
    library.store.searchText().set(u"apples"_s);
    EXPECT_EQ(search().text(), u"apples"_s);
    EXPECT_EQ(titles(), QStringList{u"Apples"_s});
}

TEST_F(DocumentList, SearchingNeverChangesWhichDocumentIsRead)
{
    library.paste(u"Apples"_s, u"text"_s);
    const Document pears = library.paste(u"Pears"_s, u"text"_s);
    open();
    ASSERT_EQ(selectedTitle(), u"Pears"_s);
    const ChangeCounter changes(library.store.selectedDocumentID());
    QTest::keyClicks(&search(), u"app"_s);
    EXPECT_EQ(selectedTitle(), QString());
    QTest::keyClicks(&search(), u"zzz"_s);
    search().clear();
    EXPECT_EQ(selectedTitle(), u"Pears"_s);
    EXPECT_EQ(library.store.selectedDocumentID().get(), pears.id);
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(DocumentList, SelectionIsTheStoresBothWaysAndThatOfAHiddenViewToo)
{
    open();
    m_window.hide();
    pasteMany(3);
    EXPECT_EQ(titles().size(), 0);
    m_window.show();
    EXPECT_EQ(titles().size(), 3);
    EXPECT_EQ(selectedTitle(), u"Document 2"_s);
    click(list(), 2);
    EXPECT_EQ(library.store.selectedDocumentID().get(), library.document(u"Document 0"_s).id);
    QTest::keyClick(&list(), Qt::Key_Up);
    EXPECT_EQ(library.store.selectedDocumentID().get(), library.document(u"Document 1"_s).id);
    library.store.selectedDocumentID().set(library.document(u"Document 2"_s).id);
    EXPECT_EQ(selectedTitle(), u"Document 2"_s);
    click(list(), 0, Qt::ControlModifier);
    EXPECT_EQ(selectedTitle(), u"Document 2"_s); // it can't be deselected
    library.store.selectedDocumentID().set({});
    EXPECT_EQ(selectedTitle(), QString());
}

TEST_F(DocumentList, RenamesAndDeletesThroughItsMenuWithoutSelecting)
{
    pasteMany(2);
    open();
    chooseFromMenu(1, u"Rename…"_s);
    EXPECT_EQ(selectedTitle(), u"Document 1"_s);
    EXPECT_EQ(alertField().text(), u"Document 0"_s);
    QTest::keyClicks(&alertField(), u"Anew"_s); // replaces what is selected
    QTest::keyClick(&alertField(), Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(titles(), (QStringList{u"Document 1"_s, u"Anew"_s}));

    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    list().setFocus();
    take(menuAt(list(), {}, QContextMenuEvent::Keyboard), {u"Rename…"_s});
    QTest::keyClicks(&alertField(), u"Never"_s);
    QTest::keyClick(&alertField(), Qt::Key_Escape);
    for (const QStringList &left : {QStringList{u"Anew"_s}, QStringList()}) {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        chooseFromMenu(0, u"Delete"_s);
        EXPECT_EQ(titles(), left);
        EXPECT_EQ(selectedTitle(), left.value(0));
    }
    EXPECT_TRUE(library.store.documents()->isEmpty());
    EXPECT_TRUE(showsPage(u"noDocuments"_s));
}

TEST_F(DocumentList, ChangesKeepTheScrollPosition)
{
    pasteMany(60);
    open();
    list().verticalScrollBar()->setValue(1000);
    library.store.setDocumentMemo(library.document(u"Document 3"_s), u"memo"_s);
    library.store.renameDocument(library.document(u"Document 30"_s), u"Anew"_s);
    library.store.deleteDocument(library.document(u"Document 1"_s));
    library.store.selectedDocumentID().set(library.document(u"Document 59"_s).id); // as it was before
    QApplication::processEvents();
    EXPECT_EQ(list().verticalScrollBar()->value(), 1000);
    library.store.selectedDocumentID().set(library.document(u"Document 0"_s).id);
    EXPECT_TRUE(
        list().viewport()->rect().contains(list().visualRect(row(list(), 58)))); // a reveal brings its row into view
}

TEST_F(DocumentList, RowsAreReadWithTheirFactsAndATitleOfAnyLengthTakesOneLine)
{
    library.paste(u"Short"_s, u"three short words"_s);
    library.paste(u"long title\n"_s.repeated(100'000), u"text"_s);
    open();
    EXPECT_EQ(list().visualRect(row(list(), 0)).height(), list().visualRect(row(list(), 1)).height());
    EXPECT_EQ(list().visualRect(row(list(), 0)).width(), list().viewport()->width());
    EXPECT_FALSE(m_window.grab().isNull());
    EXPECT_EQ(spoken(list(), 1), u"Short, 3 words · Mar 1"_s);
}
