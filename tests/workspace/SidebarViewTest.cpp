#include "ShownSidebar.h"

#include <QDrag>
#include <QDragMoveEvent>
#include <QMimeData>
#include <QScrollBar>

using namespace Qt::StringLiterals;

using Sidebar = ShownSidebar;

TEST_F(Sidebar, ListsProjectsAndTheCodeTreeOrAHintWithoutCodes)
{
    open();
    const QString hint = u"Select text in a document to code it"_s;
    EXPECT_TRUE(rows().contains(hint));
    click(u"New Code…"_s);
    EXPECT_FALSE(rows().contains(hint));
    QTest::keyClick(&newCodeField(), Qt::Key_Escape);
    EXPECT_TRUE(rows().contains(hint));
    library.makeCodes({u"Trust"_s, u"Doubt"_s, u"Calm"_s});
    library.store.nestCode(library.code(u"Calm"_s).id, library.code(u"Trust"_s).id);
    EXPECT_EQ(rows(),
        (QStringList{u"Projects"_s, u"Untitled Study"_s, u"New Project…"_s, u"Codes"_s, u"Trust"_s, u"Calm"_s,
            u"Doubt"_s, u"New Code…"_s}));
    EXPECT_EQ(SidebarModel::rowAt(row(u"Calm"_s)).depth, 1);
}

TEST_F(Sidebar, ReadsCountsWithTheirUnit)
{
    open({u"Tools & friction"_s, u"100% %2"_s});
    const Document document = library.paste(u"Notes"_s, u"one two three"_s);
    const auto spoken = [&](const QString &text) { return row(text).data(Qt::AccessibleTextRole).toString(); };
    for (const auto &[start, count] : {std::pair(0, u"1 coded passage"_s), {4, u"2 coded passages"_s}}) {
        library.store.assignCode(library.code(u"Tools & friction"_s), document, {start, 3});
        EXPECT_EQ(spoken(u"Tools & friction"_s), u"Tools & friction, "_s + count);
    }
    EXPECT_EQ(spoken(u"100% %2"_s), u"100% %2, 0 coded passages"_s);
    EXPECT_EQ(spoken(u"Untitled Study"_s), u"Untitled Study, 1 document"_s);
}

TEST_F(Sidebar, AClickSelectsThroughTheStoreWhatCanBeSelected)
{
    open({u"Trust"_s});
    const QString first = u"Untitled Study"_s;
    EXPECT_EQ(selectedRow(), first);
    click(u"Trust"_s);
    EXPECT_EQ(library.store.selectedCodeID(), library.code(u"Trust"_s).id);
    for (const QString &text : {u"Projects"_s, u"Codes"_s, u"New Code…"_s}) {
        click(text);
        EXPECT_EQ(selectedRow(), u"Trust"_s) << text.toStdString();
    }
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, list().viewport()->rect().bottomRight() - QPoint(9, 9));
    EXPECT_EQ(selectedRow(), u"Trust"_s);
    library.store.createProject(u"Second"_s);
    EXPECT_EQ(selectedRow(), u"Second"_s);
    click(first);
    EXPECT_EQ(library.store.project()->value().name, first);
    EXPECT_EQ(selectedRow(), first);
    library.store.sidebarSelection().set(QuerySelection{});
    EXPECT_EQ(selectedRow(), QString());
}

TEST_F(Sidebar, ArrowsMoveFromRowToRowAndReturnOrSpaceAct)
{
    open({u"Trust"_s, u"Doubt"_s});
    moveTo(u"Untitled Study"_s);
    for (const QString &next : {u"New Project…"_s, u"Trust"_s, u"Doubt"_s, u"New Code…"_s, u"New Code…"_s}) {
        QTest::keyClick(&list(), Qt::Key_Down);
        EXPECT_EQ(list().currentIndex().data().toString(), next);
        EXPECT_EQ(selectedRow(), u"Untitled Study"_s) << "passing by selects nothing";
    }
    QTest::keyClick(&list(), Qt::Key_Up);
    QTest::keyClick(&list(), Qt::Key_Return);
    EXPECT_EQ(selectedRow(), u"Doubt"_s);
    moveTo(u"Trust"_s);
    QTest::keyClick(&list(), Qt::Key_Space);
    EXPECT_EQ(selectedRow(), u"Trust"_s);
    moveTo(u"New Code…"_s);
    QTest::keyClick(&list(), Qt::Key_Space);
    EXPECT_TRUE(newCodeField().hasFocus());
    moveTo(u"New Project…"_s);
    QTest::keyClick(&list(), Qt::Key_Return);
    EXPECT_EQ(alert().windowTitle(), u"New Project"_s);
}

TEST_F(Sidebar, TheSelectionFollowsItsCode)
{
    open({u"Selected"_s, u"Other"_s, u"Third"_s});
    LibraryStore &store = library.store;
    click(u"Selected"_s);
    const std::pair<QString, std::function<void()>> changes[]{
        {u"New"_s, [&] { store.renameCode(library.code(u"Selected"_s), u"New"_s); }},
        {u"New"_s, [&] { store.nestCode(library.code(u"New"_s).id, library.code(u"Third"_s).id); }},
        {u"New"_s, [&] { store.deleteCode(library.code(u"Other"_s)); }}, // above it
        {u"Third"_s, [&] { store.mergeCodes(library.code(u"New"_s), library.code(u"Third"_s)); }},
        {u"Untitled Study"_s, [&] { store.deleteCode(library.code(u"Third"_s)); }}};
    for (const auto &[selected, change] : changes) {
        change();
        EXPECT_EQ(selectedRow(), selected);
        EXPECT_EQ(list().currentIndex().data().toString(), selected);
    }
}

TEST_F(Sidebar, AChangeNeitherScrollsNorMovesTheKeyboardAndIsPaintedAtOnce)
{
    openMany(200);
    moveTo(u"Code 5"_s);
    list().verticalScrollBar()->setValue(2000);
    library.store.nestCode(library.code(u"Code 5"_s).id, library.code(u"Code 190"_s).id);
    library.store.nestCode(library.code(u"Code 199"_s).id, library.code(u"Code 198"_s).id);
    EXPECT_EQ(list().verticalScrollBar()->value(), 2000);
    EXPECT_EQ(list().currentIndex().data().toString(), u"Code 5"_s);
    EXPECT_EQ(selectedRow(), u"Untitled Study"_s);
    library.makeCodes({u"New"_s}); // and nothing else: the next thing is painting
    constexpr int behindDot = 31;
    const QImage image = list().viewport()->grab(QRect(behindDot, 0, 60, 100)).toImage();
    QImage blank(image.size(), image.format());
    blank.fill(image.pixelColor(0, 0));
    EXPECT_NE(image, blank);
}

TEST_F(Sidebar, ADropNestsCodesAndRefusesTheRest)
{
    open({u"Trust"_s, u"Doubt"_s});
    const QString trust = library.code(u"Trust"_s).id.toString(QUuid::WithoutBraces);
    enum Outcome { refused, leftToTheStore, nested };
    const std::tuple<QString, QString, Outcome> cases[]{{trust, u"Trust"_s, leftToTheStore},
        {u"6F9619FF-8B86-D011-B42D-00C04FC964FF"_s, u"Doubt"_s, leftToTheStore},
        {u"see "_s + trust, u"Doubt"_s, refused}, {u'{' + trust + u'}', u"Doubt"_s, refused},
        {trust, u"Untitled Study"_s, refused}, {trust, u"New Code…"_s, refused}, {trust, u"Doubt"_s, nested}};
    for (const auto &[text, target, outcome] : cases) {
        QMimeData data;
        data.setText(text);
        const QPoint place = middleOf(target);
        QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(list().viewport(), &enter);
        QDragMoveEvent move(place, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(list().viewport(), &move);
        EXPECT_EQ(move.isAccepted(), outcome != refused) << text.toStdString();
        EXPECT_EQ(list().dropTarget(), outcome != refused ? row(target) : QModelIndex());
        QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(list().viewport(), &drop);
        EXPECT_EQ(library.code(u"Trust"_s).parentID.has_value(), outcome == nested) << text.toStdString();
        EXPECT_FALSE(list().dropTarget().isValid());
    }
}

/// Without a desktop a drag ends as soon as it has begun, and lives until the next round of the event loop.
TEST_F(Sidebar, DragsACodeWithoutSelectingIt)
{
    open({u"Trust"_s});
    const auto drag = [this](const QString &text, int distance) {
        const QPoint start = middleOf(text);
        QTest::mousePress(list().viewport(), Qt::LeftButton, {}, start);
        QMouseEvent move(QEvent::MouseMove, start + QPoint(0, distance), {}, {}, Qt::LeftButton, {});
        QApplication::sendEvent(list().viewport(), &move);
        return list().findChild<QDrag *>();
    };
    EXPECT_EQ(drag(u"Trust"_s, 2), nullptr) << "a trembling hand";
    EXPECT_EQ(drag(u"New Project…"_s, 30), nullptr);
    const QDrag *begun = drag(u"Trust"_s, 30);
    ASSERT_NE(begun, nullptr);
    EXPECT_EQ(selectedRow(), u"Untitled Study"_s);
    EXPECT_EQ(begun->mimeData()->text(), library.code(u"Trust"_s).id.toString(QUuid::WithoutBraces).toUpper());
    QLineEdit elsewhere(&m_window); // takes any other text
    for (QWidget *place : {static_cast<QWidget *>(&elsewhere), list().viewport()}) {
        QDragEnterEvent enter({1, 1}, Qt::CopyAction, begun->mimeData(), Qt::LeftButton, {});
        QApplication::sendEvent(place, &enter);
        EXPECT_EQ(enter.isAccepted(), place == list().viewport()) << place->metaObject()->className();
    }
    QDragLeaveEvent leave; // without it Qt would go on sending drags to this list when it is gone
    QApplication::sendEvent(list().viewport(), &leave);
}
