#include "kit/controls/Alert.h"
#include "kit/lists/RowList.h"
#include "kit/theme/FocusRing.h"
#include "kit/theme/ThemedTest.h"
#include "support/Printing.h"
#include "support/TestLibrary.h"
#include "workspace/lists/DocumentListView.h"
#include "workspace/lists/ExcerptListView.h"
#include "workspace/results/WordFreqResultsView.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// The lists of the middle column over the real store: 60 documents, 60 terms, and two codes with 60 passages each.
class Lists : public ThemedTest {
protected:
    Lists()
    {
        library.makeCodes({u"Trust"_s, u"Doubt"_s});
        for (int number = 0; number < 60; ++number) {
            const QString term = u"word%1 "_s.arg(number + 100);
            const Document document = library.paste(u"Document %1"_s.arg(number), term.repeated(200 - number));
            for (const QString &code : {u"Trust"_s, u"Doubt"_s})
                store.assignCode(library.code(code), document, {0, 7 + 8 * (number * 7 % 40)});
        }
        store.selectedDocumentID().set({});
    }
    template <typename View>
    View &open(const QString &listName)
    {
        auto made = std::make_unique<View>(store, &m_window);
        View &opened = *made;
        view = std::move(made);
        view->resize(285, 500);
        list = &find<RowList>(listName);
        showWindow();
        m_window.setFocus(Qt::OtherFocusReason);
        return opened;
    }
    template <typename Widget = QWidget>
    [[nodiscard]] Widget &find(const QString &name) const
    {
        return childOf<Widget>(view.get(), name);
    }
    void countWords(int limit) { store.runWordFrequency(WordFrequency::AllDocuments{}, 3, true, limit); }
    [[nodiscard]] QPoint middleOf(int row) const { return list->visualRect(list->model()->index(row, 0)).center(); }
    [[nodiscard]] bool isInView(int row) const { return list->viewport()->rect().contains(middleOf(row)); }
    static void press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }

    TestLibrary library;
    LibraryStore &store = library.store;
    std::unique_ptr<QWidget> view; // goes before the store
    RowList *list = nullptr;
};

} // namespace

TEST_F(Lists, DocumentsAreSearchedAsItIsTypedWhichNeverChangesWhatIsRead)
{
    store.searchText().set(u"needle"_s);
    open<DocumentListView>(u"documentList"_s);
    auto &search = find<QLineEdit>(u"documentSearch"_s);
    EXPECT_EQ(search.text(), u"needle"_s);
    EXPECT_TRUE(find(u"noResults"_s).isVisible());
    QTest::mouseClick(search.findChildren<QAbstractButton *>().last(), Qt::LeftButton);
    EXPECT_EQ(store.searchText().get(), QString());
    store.selectedDocumentID().set(library.document(u"Document 2"_s).id);
    const ChangeCounter changes(store.selectedDocumentID());
    QTest::keyClicks(&search, u"ment 17"_s);
    EXPECT_EQ(textsOf(*list), QStringList{u"Document 17"_s});
    EXPECT_EQ(selectedIn(*list), QString());
    QTest::keyClick(&search, Qt::Key_Escape);
    EXPECT_EQ(store.searchText().get(), QString());
    EXPECT_EQ(selectedIn(*list), u"Document 2"_s);
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(Lists, DocumentsAreRenamedAndDeletedThroughTheirMenuWithoutBeingSelected)
{
    open<DocumentListView>(u"documentList"_s);
    store.selectedDocumentID().set(library.document(u"Document 50"_s).id);
    for (const auto &[row, key, title] : {std::tuple(1, Qt::Key_Escape, u"Document 58"_s),
             {1, Qt::Key_Return, u"Anew"_s}, {0, Qt::Key_Return, u"Anew"_s}}) {
        list->setCurrentInPlace(list->model()->index(0, 0), QItemSelectionModel::NoUpdate);
        const auto reason = row == 0 ? QContextMenuEvent::Keyboard : QContextMenuEvent::Mouse;
        QMenu &menu = menuAt(*list, row == 0 ? QPoint() : middleOf(row), reason);
        EXPECT_TRUE(list->isHighlighted(list->model()->index(row, 0)));
        take(menu, {u"Rename…"_s});
        EXPECT_FALSE(list->isHighlighted(list->model()->index(row, 0)));
        auto &field = childOf<QLineEdit>(m_window.findChild<Alert *>(), {});
        QTest::keyClicks(&field, u"Anew"_s); // over what is selected
        QTest::keyClick(&field, key);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(textsOf(*list)[row], title);
    }
    take(menuAt(*list, middleOf(2)), {u"Delete"_s});
    EXPECT_EQ(textsOf(*list).first(3), (QStringList{u"Anew"_s, u"Anew"_s, u"Document 56"_s}));
    EXPECT_EQ(selectedIn(*list), u"Document 50"_s);
}

TEST_F(Lists, DocumentsFollowTheStoresSelectionAndElseKeepTheirPlace)
{
    open<DocumentListView>(u"documentList"_s);
    list->setFocus(Qt::TabFocusReason);
    press(Qt::Key_Down);
    EXPECT_EQ(store.selectedDocumentID().get(), library.document(u"Document 58"_s).id);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::ControlModifier, middleOf(1));
    EXPECT_EQ(selectedIn(*list), u"Document 58"_s) << "the selection can't be taken away";
    list->verticalScrollBar()->setValue(1000);
    store.setDocumentMemo(library.document(u"Document 3"_s), u"memo"_s);
    store.renameDocument(library.document(u"Document 30"_s), u"long title\n"_s.repeated(100'000));
    store.deleteDocument(library.document(u"Document 1"_s));
    EXPECT_EQ(list->verticalScrollBar()->value(), 1000);
    store.selectedDocumentID().set(library.document(u"Document 0"_s).id);
    EXPECT_EQ(selectedIn(*list), u"Document 0"_s);
    EXPECT_TRUE(isInView(58));
    store.searchText().set(u"document"_s);
    EXPECT_TRUE(isInView(57)) << "the one that is read";
    store.selectedDocumentID().set({});
    EXPECT_EQ(selectedIn(*list), QString());
    list->verticalScrollBar()->setValue(1000);
    store.searchText().set(u"word"_s);
    EXPECT_EQ(list->verticalScrollBar()->value(), 0);
}

TEST_F(Lists, ExcerptsFollowTheStoreButNotWhatTheyDoNotShow)
{
    auto &opened = open<ExcerptListView>(u"excerptList"_s);
    opened.setCodeID(library.code(u"Trust"_s).id);
    list->scrollToBottom();
    const QPoint last = middleOf(59);
    const QSignalSpy resets(list->model(), &QAbstractItemModel::modelReset);
    store.setDocumentMemo(library.document(u"Document 0"_s), u"memo"_s);
    EXPECT_EQ(resets.size(), 0);
    const Code trust = library.code(u"Trust"_s);
    store.assignCode(trust, library.document(u"Document 59"_s), {800, 7});
    EXPECT_EQ(list->model()->rowCount(), 61);
    EXPECT_EQ(middleOf(59), last) << "one more at the end leaves in place what is in view";
    opened.setCodeID(library.code(u"Doubt"_s).id);
    EXPECT_EQ(list->verticalScrollBar()->value(), 0);
    pressButton(opened, u"All Documents"_s);
    EXPECT_TRUE(std::holds_alternative<ProjectSelection>(store.sidebarSelection()->value()));
}

TEST_F(Lists, TheKeyboardGoesFromTermsToOccurrencesAndBackToItsPlace)
{
    countWords(100);
    open<WordFreqResultsView>(u"termList"_s);
    list->setCurrentIndex(list->model()->index(59, 0));
    EXPECT_TRUE(isInView(59));
    countWords(50);
    EXPECT_EQ(list->verticalScrollBar()->value(), 0) << "other terms are shown from the first one on";
    auto &topTerms = find<QPushButton>(u"topTerms"_s);
    auto &occurrences = find<RowList>(u"occurrenceList"_s);
    list->setFocus(Qt::TabFocusReason);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_TRUE(occurrences.hasFocus());
    press(Qt::Key_Down);
    EXPECT_FALSE(store.revealRequest()->has_value()) << "moving isn't acting";
    press(Qt::Key_Return);
    EXPECT_EQ(store.revealRequest()->value().range, (TextRange{8, 7}));
    press(Qt::Key_Backtab);
    EXPECT_TRUE(topTerms.hasFocus());
    press(Qt::Key_Space);
    EXPECT_TRUE(FocusRing::isDueTo(*list));
    EXPECT_EQ(list->currentIndex().row(), 1);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, middleOf(1));
    QTest::mouseClick(&topTerms, Qt::LeftButton);
    EXPECT_TRUE(list->hasFocus());
    EXPECT_FALSE(FocusRing::isDueTo(*list)) << "the mouse has gone there";
    while (!store.documents()->isEmpty())
        store.deleteDocument(store.documents()->first());
    press(Qt::Key_Return);
    EXPECT_TRUE(find(u"noOccurrences"_s).isVisible());
    EXPECT_TRUE(topTerms.hasFocus());
    countWords(100);
    EXPECT_TRUE(find(u"noTerms"_s).isVisible()) << "a new run returns to the terms";
}
