#include "workspace/lists/DocumentListView.h"

#include "support/TestLibrary.h"
#include "workspace/controls/Alert.h"
#include "workspace/controls/Paragraph.h"
#include "workspace/lists/DocumentListModel.h"
#include "workspace/lists/RowList.h"
#include "workspace/theme/ThemedTest.h"

#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// The real view over the real store, driven by mouse and keys.
class DocumentList : public ThemedTest {
protected:
    ~DocumentList() override { delete m_view; } // before the store
    void open()
    {
        m_view = new DocumentListView(library.store, &m_window);
        m_view->resize(285, 400);
        showWindow();
        QApplication::processEvents();
    }
    template <typename Widget>
    [[nodiscard]] Widget &find(const QString &name) const
    {
        auto *found = m_window.findChild<Widget *>(name);
        if (found == nullptr)
            throw std::runtime_error("no such widget: " + name.toStdString());
        return *found;
    }
    [[nodiscard]] RowList &list() const { return find<RowList>(u"documentList"_s); }
    [[nodiscard]] QLineEdit &search() const { return find<QLineEdit>(u"documentSearch"_s); }
    [[nodiscard]] bool showsPage(const QString &name) const { return find<QWidget>(name).isVisible(); }
    [[nodiscard]] QModelIndex row(int number) const { return list().model()->index(number, 0); }
    [[nodiscard]] QStringList titles() const
    {
        QStringList titles;
        for (int number = 0; number < list().model()->rowCount(); ++number)
            titles.append(row(number).data().toString());
        return titles;
    }
    /// Of the selected row; empty without one.
    [[nodiscard]] QString selectedTitle() const
    {
        const QModelIndexList selected = list().selectionModel()->selectedIndexes();
        return selected.isEmpty() ? QString() : selected.first().data().toString();
    }
    void click(int number) const
    {
        QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, list().visualRect(row(number)).center());
    }
    void pressButton(const QString &label) const
    {
        for (auto *button : m_window.findChildren<QPushButton *>()) {
            if (button->text() == label)
                return QTest::mouseClick(button, Qt::LeftButton);
        }
        throw std::runtime_error("no such button: " + label.toStdString());
    }
    /// Asks for the row's menu with the right button and takes the entry with that label by the keyboard.
    void chooseFromMenu(int number, const QString &label) const
    {
        const QPoint place = list().visualRect(row(number)).center();
        QTest::mouseClick(list().viewport(), Qt::RightButton, {}, place);
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, list().viewport()->mapToGlobal(place));
        QApplication::sendEvent(list().viewport(), &event);
        chooseFromOpenMenu(label);
    }
    void chooseFromOpenMenu(const QString &label) const
    {
        auto &menu = find<QMenu>(u"documentMenu"_s);
        for (QAction *action : menu.actions()) {
            if (action->text() == label)
                menu.setActiveAction(action);
        }
        QTest::keyClick(&menu, Qt::Key_Return);
        QApplication::processEvents();
    }
    [[nodiscard]] QLineEdit &alertField() const { return *m_window.findChild<Alert *>()->findChild<QLineEdit *>(); }
    void pasteMany(int count)
    {
        for (int number = 0; number < count; ++number)
            library.paste(u"Document %1"_s.arg(number), u"text"_s);
    }

    TestLibrary library;

private:
    DocumentListView *m_view = nullptr;
};

} // namespace

TEST_F(DocumentList, WelcomesAnEmptyProjectWhateverIsSearched)
{
    library.store.searchText().set(u"needle"_s);
    open();
    EXPECT_TRUE(showsPage(u"noDocuments"_s));
    EXPECT_FALSE(list().isVisible());
    EXPECT_EQ(search().text(), u"needle"_s);
    EXPECT_EQ(search().placeholderText(), u"Search documents"_s);
    pressButton(u"Import Documents…"_s);
    EXPECT_TRUE(library.panels.openRequest.has_value());
}

TEST_F(DocumentList, LoadSampleContentFillsTheListAndSaysSo)
{
    open();
    pressButton(u"Load Sample Content"_s);
    EXPECT_TRUE(list().isVisible());
    EXPECT_EQ(titles().size(), library.store.documents()->size());
    EXPECT_GT(titles().size(), 1);
    EXPECT_FALSE(library.store.codes()->isEmpty());
    EXPECT_EQ(library.store.statusMessage().get(),
        u"Sample content loaded — click a code in the sidebar, or select text in the document to try coding."_s);
}

TEST_F(DocumentList, SearchesAsItIsTypedAndNamesWhatIsNotThere)
{
    library.paste(u"Apples"_s, u"a tree"_s);
    library.paste(u"Pears"_s, u"another tree"_s);
    open();
    QTest::keyClicks(&search(), u"another"_s);
    EXPECT_EQ(titles(), QStringList{u"Pears"_s});
    QTest::keyClicks(&search(), u"%1"_s);
    EXPECT_TRUE(showsPage(u"noResults"_s));
    EXPECT_FALSE(showsPage(u"noDocuments"_s));
    QStringList texts;
    for (const auto *paragraph : find<QWidget>(u"noResults"_s).findChildren<Paragraph *>())
        texts.append(paragraph->text());
    EXPECT_EQ(texts, (QStringList{u"No Results for “another%1”"_s, u"Check the spelling or try a new search."_s}));
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

TEST_F(DocumentList, SelectionIsTheStoresBothWays)
{
    pasteMany(3);
    open();
    EXPECT_EQ(selectedTitle(), u"Document 2"_s);
    click(2);
    EXPECT_EQ(library.store.selectedDocumentID().get(), library.document(u"Document 0"_s).id);
    QTest::keyClick(&list(), Qt::Key_Up);
    EXPECT_EQ(library.store.selectedDocumentID().get(), library.document(u"Document 1"_s).id);
    library.store.selectedDocumentID().set(library.document(u"Document 2"_s).id);
    EXPECT_EQ(selectedTitle(), u"Document 2"_s);
    QTest::mouseClick(list().viewport(), Qt::LeftButton, Qt::ControlModifier, list().visualRect(row(0)).center());
    EXPECT_EQ(selectedTitle(), u"Document 2"_s); // it can't be deselected
    library.store.selectedDocumentID().set({});
    EXPECT_EQ(selectedTitle(), QString());
}

TEST_F(DocumentList, RenamesThroughItsMenuWithoutSelecting)
{
    pasteMany(2);
    open();
    chooseFromMenu(1, u"Rename…"_s);
    EXPECT_EQ(selectedTitle(), u"Document 1"_s);
    EXPECT_EQ(alertField().text(), u"Document 0"_s);
    EXPECT_EQ(alertField().placeholderText(), u"Title"_s);
    QTest::keyClicks(&alertField(), u"Anew"_s); // replaces what is selected
    QTest::keyClick(&alertField(), Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(titles(), (QStringList{u"Document 1"_s, u"Anew"_s}));
}

TEST_F(DocumentList, CancellingTheRenameLeavesTheTitle)
{
    pasteMany(1);
    open();
    list().setFocus();
    QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, {}, {});
    QApplication::sendEvent(list().viewport(), &menuKey);
    chooseFromOpenMenu(u"Rename…"_s);
    QTest::keyClicks(&alertField(), u"Anew"_s);
    QTest::keyClick(&alertField(), Qt::Key_Escape);
    QApplication::processEvents();
    EXPECT_EQ(titles(), QStringList{u"Document 0"_s});
}

TEST_F(DocumentList, DeletesAtOnceAndWelcomesWhenTheLastIsGone)
{
    pasteMany(2);
    open();
    chooseFromMenu(0, u"Delete"_s);
    EXPECT_EQ(titles(), QStringList{u"Document 0"_s});
    EXPECT_EQ(library.store.documents()->size(), 1);
    EXPECT_EQ(selectedTitle(), u"Document 0"_s);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    chooseFromMenu(0, u"Delete"_s);
    EXPECT_TRUE(showsPage(u"noDocuments"_s));
}

TEST_F(DocumentList, ChangesKeepTheScrollPosition)
{
    pasteMany(60);
    open();
    list().verticalScrollBar()->setValue(1000);
    ASSERT_EQ(list().verticalScrollBar()->value(), 1000);
    library.store.setDocumentMemo(library.document(u"Document 3"_s), u"memo"_s);
    library.store.renameDocument(library.document(u"Document 30"_s), u"Anew"_s);
    library.store.deleteDocument(library.document(u"Document 1"_s));
    QApplication::processEvents();
    EXPECT_EQ(list().verticalScrollBar()->value(), 1000);
    library.store.selectedDocumentID().set(library.document(u"Document 59"_s).id);
    QApplication::processEvents();
    EXPECT_EQ(list().verticalScrollBar()->value(), 1000); // it was selected before
    library.store.selectedDocumentID().set(library.document(u"Document 0"_s).id);
    EXPECT_TRUE(list().viewport()->rect().contains(list().visualRect(row(58)))); // a reveal brings its row into view
}

TEST_F(DocumentList, AViewThatIsHiddenCatchesUpWhenItIsShown)
{
    open();
    m_window.hide();
    pasteMany(2);
    EXPECT_EQ(titles().size(), 0);
    m_window.show();
    EXPECT_EQ(titles().size(), 2);
    EXPECT_EQ(selectedTitle(), u"Document 1"_s);
}

TEST_F(DocumentList, RowsAreReadWithTheirFactsAndTabGoesFromSearchToList)
{
    library.paste(u"Notes"_s, u"three short words"_s);
    open();
    EXPECT_EQ(row(0).data(Qt::AccessibleTextRole).toString(), u"Notes, 3 words · Mar 1"_s);
    EXPECT_EQ(list().accessibleName(), u"Documents"_s);
    EXPECT_EQ(search().accessibleName(), u"Search documents"_s);
    search().setFocus();
    QTest::keyClick(&search(), Qt::Key_Tab);
    EXPECT_TRUE(list().hasFocus());
}

TEST_F(DocumentList, ATitleOfAnyLengthTakesOneLine)
{
    library.paste(u"Short"_s, u"text"_s);
    library.paste(u"long title\n"_s.repeated(100'000), u"text"_s);
    open();
    EXPECT_EQ(list().visualRect(row(0)).height(), list().visualRect(row(1)).height());
    EXPECT_EQ(list().visualRect(row(0)).width(), list().viewport()->width());
    EXPECT_FALSE(m_window.grab().isNull());
}

namespace {

struct KindCase {
    const char *name;
    QString sourceKind;
    QString symbol;
};
class DocumentSymbol : public testing::TestWithParam<KindCase> { };

} // namespace

TEST_P(DocumentSymbol, FollowsTheKindOfSource)
{
    Document document;
    document.id = QUuid::createUuid();
    document.sourceKind = GetParam().sourceKind;
    DocumentListModel model;
    model.setDocuments({document});
    EXPECT_EQ(model.index(0).data(DocumentListModel::symbolRole).toString(), GetParam().symbol);
}

INSTANTIATE_TEST_SUITE_P(Kinds, DocumentSymbol,
    testing::Values(KindCase{"docx", u"docx"_s, u"doc.richtext"_s}, KindCase{"pdf", u"pdf"_s, u"doc.richtext"_s},
        KindCase{"rtf", u"rtf"_s, u"doc.richtext"_s}, KindCase{"md", u"md"_s, u"text.alignleft"_s},
        KindCase{"markdown", u"markdown"_s, u"text.alignleft"_s}, KindCase{"txt", u"txt"_s, u"doc.text"_s},
        KindCase{"pasted_text_has_no_kind_of_file", u"paste"_s, u"doc.text"_s},
        KindCase{"exchanged", u"qdpx"_s, u"doc.text"_s}, KindCase{"none", {}, u"doc.text"_s}),
    rowName);
