#include "ShownWindow.h"
#include "kit/lists/ListMetrics.h"
#include "workspace/lists/DocumentListView.h"
#include "workspace/sidebar/SidebarView.h"

#include <QTextEdit>
#include <QTimer>

using namespace Qt::StringLiterals;

using Window = ShownWindow;

TEST_F(Window, ColumnsKeepTheirLimitsAtEverySizeAndWhateverTheNames)
{
    library.makeCodes({u"A name that goes on and on, "_s.repeated(11), u"\u05E9\u05DC\u05D5\u05DD"_s});
    library.paste(u"A"_s, u"some words"_s);
    open();
    for (const QString &title : {u"W"_s.repeated(300), u"long words "_s.repeated(2900), u"\u05E9"_s.repeated(32767)}) {
        library.store.renameDocument(library.store.documents()->first(), title);
        for (const QSize size : {QSize(900, 600), QSize(2560, 1440), QSize(500, 300), QSize(1180, 780)}) {
            root().resize(size);
            QApplication::processEvents();
            EXPECT_LE(root().width(), std::max(size.width(), 900));
            EXPECT_LE(root().height(), std::max(size.height(), 600));
            const int sidebar = find<SidebarView>().width();
            EXPECT_TRUE(sidebar >= 185 && sidebar <= 280) << sidebar;
            const int list = find<DocumentListView>().width();
            EXPECT_TRUE(list >= ListMetrics::minColumnWidth && list <= ListMetrics::maxColumnWidth) << list;
        }
        EXPECT_GE(text().height(), 200) << title.size();
    }
}

TEST_F(Window, AnotherProjectShowsItsOwnDocumentsAndMemos)
{
    library.paste(u"first"_s, u"some words"_s);
    library.store.setDocumentMemo(library.document(u"first"_s), u"of the first"_s);
    const QUuid firstProject = library.store.project()->value().id;
    library.store.createProject(u"Second"_s);
    library.paste(u"second"_s, u"other words"_s);
    open();
    library.store.sidebarSelection().set(SidebarSelection(ProjectSelection{firstProject}));
    QApplication::processEvents();
    EXPECT_EQ(text().text(), u"some words"_s);
    EXPECT_EQ(find<QTextEdit>(u"documentTitle"_s).toPlainText(), u"first"_s);
    EXPECT_EQ(find<QTextEdit>(u"memo"_s).toPlainText(), u"of the first"_s);
}

TEST_F(Window, AMemoGoesToTheDocumentThatItWasTypedFor)
{
    library.paste(u"first"_s, u"some words"_s);
    library.paste(u"second"_s, u"other words"_s);
    for (const QString &title : {u"first"_s, u"second"_s})
        library.store.setDocumentMemo(library.document(title), title);
    open();
    auto &memo = find<QTextEdit>(u"memo"_s);
    memo.moveCursor(QTextCursor::End);
    QTest::keyClicks(&memo, u"!"_s);
    EXPECT_EQ(library.document(u"second"_s).memo, u"second!"_s); // at the keystroke
    library.store.selectedDocumentID().set(library.document(u"first"_s).id);
    QApplication::processEvents();
    memo.moveCursor(QTextCursor::End);
    QTest::keyClicks(&memo, u"?"_s);
    library.store.deleteDocument(library.document(u"first"_s)); // goes on to the second with the focus in the memo
    QApplication::processEvents();
    memo.moveCursor(QTextCursor::End);
    QTest::keyClicks(&memo, u"."_s);
    EXPECT_EQ(library.document(u"second"_s).memo, u"second!."_s);
}

TEST_F(Window, ClosingItQuits)
{
    open();
    constexpr int stillRunning = 1;
    QTimer::singleShot(0, &root(), &QWidget::close);
    QTimer::singleShot(5000, &root(), [] { QApplication::exit(stillRunning); });
    EXPECT_EQ(QApplication::exec(), 0);
}
