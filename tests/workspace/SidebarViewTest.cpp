#include "ShownSidebar.h"

#include <QDrag>
#include <QDragMoveEvent>
#include <QMimeData>
#include <QScrollBar>

using namespace Qt::StringLiterals;

using Sidebar = ShownSidebar;

TEST_F(Sidebar, ListsProjectsAndTheCodeTreeWithTheirButtons)
{
    open({u"Trust"_s, u"Doubt"_s, u"Calm"_s});
    library.store.nestCode(library.code(u"Calm"_s).id, library.code(u"Trust"_s).id);
    EXPECT_EQ(rows(),
        (QStringList{u"Projects"_s, u"Untitled Study"_s, u"New Project…"_s, u"Codes"_s, u"Trust"_s, u"Calm"_s,
            u"Doubt"_s, u"New Code…"_s}));
    EXPECT_EQ(SidebarModel::rowAt(row(u"Calm"_s)).depth, 1);
}

TEST_F(Sidebar, ShowsTheHintOnlyWhileThereIsNothingToList)
{
    open();
    const QString hint = u"Select text in a document to code it"_s;
    EXPECT_TRUE(rows().contains(hint));
    click(u"New Code…"_s);
    EXPECT_FALSE(rows().contains(hint));
    QTest::keyClick(&newCodeField(), Qt::Key_Escape);
    EXPECT_TRUE(rows().contains(hint));
    library.makeCodes({u"Trust"_s});
    EXPECT_FALSE(rows().contains(hint));
}

TEST_F(Sidebar, ReadsCountsWithTheirUnit)
{
    open({u"Tools & friction"_s, u"100% %2"_s});
    const Document document = library.paste(u"Notes"_s, u"one two three"_s);
    library.store.assignCode(library.code(u"Tools & friction"_s), document, {0, 3});
    const auto spoken = [&](const QString &text) { return row(text).data(Qt::AccessibleTextRole).toString(); };
    EXPECT_EQ(spoken(u"Tools & friction"_s), u"Tools & friction, 1 coded passage"_s);
    library.store.assignCode(library.code(u"Tools & friction"_s), document, {4, 3});
    EXPECT_EQ(spoken(u"Tools & friction"_s), u"Tools & friction, 2 coded passages"_s);
    EXPECT_EQ(spoken(u"100% %2"_s), u"100% %2, 0 coded passages"_s);
    EXPECT_EQ(spoken(u"Untitled Study"_s), u"Untitled Study, 1 document"_s);
    EXPECT_EQ(spoken(u"New Code…"_s), u"New Code…"_s);
}

TEST_F(Sidebar, AClickSelectsThroughTheStore)
{
    open({u"Trust"_s});
    EXPECT_EQ(selectedRow(), u"Untitled Study"_s);
    click(u"Trust"_s);
    EXPECT_EQ(library.store.selectedCodeID(), library.code(u"Trust"_s).id);
    EXPECT_EQ(selectedRow(), u"Trust"_s);
    const QString first = u"Untitled Study"_s;
    library.store.createProject(u"Second"_s);
    EXPECT_EQ(selectedRow(), u"Second"_s);
    click(first);
    EXPECT_EQ(library.store.project()->value().name, first);
    EXPECT_EQ(selectedRow(), first);
}

TEST_F(Sidebar, WhatSelectsNothingLeavesTheSelection)
{
    open({u"Trust"_s});
    click(u"Trust"_s);
    for (const QString &text : {u"Projects"_s, u"Codes"_s, u"New Code…"_s}) {
        click(text);
        EXPECT_EQ(selectedRow(), u"Trust"_s) << text.toStdString();
    }
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, list().viewport()->rect().bottomRight() - QPoint(9, 9));
    EXPECT_EQ(selectedRow(), u"Trust"_s);
    library.store.sidebarSelection().set(QuerySelection{});
    EXPECT_EQ(selectedRow(), QString());
}

TEST_F(Sidebar, ArrowsMoveFromRowToRowAndReturnOrSpaceAct)
{
    open({u"Trust"_s, u"Doubt"_s});
    moveTo(u"Untitled Study"_s);
    QStringList visited;
    for (int step = 0; step < 5; ++step) {
        QTest::keyClick(&list(), Qt::Key_Down);
        visited.append(list().currentIndex().data().toString());
    }
    EXPECT_EQ(visited, (QStringList{u"New Project…"_s, u"Trust"_s, u"Doubt"_s, u"New Code…"_s, u"New Code…"_s}));
    EXPECT_EQ(selectedRow(), u"Untitled Study"_s) << "passing by selects nothing";
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
    const auto expectSelected = [this](const QString &text) {
        EXPECT_EQ(selectedRow(), text);
        EXPECT_EQ(list().currentIndex().data().toString(), text);
    };
    click(u"Selected"_s);
    store.renameCode(library.code(u"Selected"_s), u"New"_s);
    expectSelected(u"New"_s);
    store.nestCode(library.code(u"New"_s).id, library.code(u"Third"_s).id);
    expectSelected(u"New"_s);
    store.deleteCode(library.code(u"Other"_s)); // above it
    expectSelected(u"New"_s);
    store.mergeCodes(library.code(u"New"_s), library.code(u"Third"_s));
    expectSelected(u"Third"_s);
    store.deleteCode(library.code(u"Third"_s));
    expectSelected(u"Untitled Study"_s);
}

TEST_F(Sidebar, ARefreshNeitherScrollsNorMovesTheKeyboard)
{
    openMany(200);
    moveTo(u"Code 5"_s);
    list().verticalScrollBar()->setValue(2000);
    const QString topmost = list().indexAt({50, 5}).data().toString();
    library.store.nestCode(library.code(u"Code 5"_s).id, library.code(u"Code 190"_s).id);
    library.store.nestCode(library.code(u"Code 199"_s).id, library.code(u"Code 198"_s).id);
    EXPECT_EQ(list().verticalScrollBar()->value(), 2000);
    EXPECT_NE(topmost, QString());
    EXPECT_EQ(list().currentIndex().data().toString(), u"Code 5"_s);
    EXPECT_EQ(selectedRow(), u"Untitled Study"_s);
}

TEST_F(Sidebar, IsNeverPaintedEmptyAfterAChange)
{
    openMany(200);
    list().verticalScrollBar()->setValue(1000);
    library.makeCodes({u"New"_s}); // and nothing else: the next thing is painting
    constexpr int behindDot = 31;
    const QImage image = list().viewport()->grab(QRect(behindDot, 0, 60, 100)).toImage();
    QImage blank(image.size(), image.format());
    blank.fill(image.pixelColor(0, 0));
    EXPECT_NE(image, blank);
}

TEST_F(Sidebar, ANameReadFromTheRightStandsAtTheRight)
{
    const QString name = u"שלום"_s;
    open({name});
    constexpr int behindDot = 31;
    const int width = list().viewport()->width();
    EXPECT_GT(leftmostInk(name, behindDot), width / 2);
    EXPECT_LT(leftmostInk(name, behindDot), width - 30) << "there must be more than the count";
}

struct DropCase {
    const char *name;
    QString text; ///< "%1" is the identifier of "Trust"
    QString target;
    bool isAccepted;
    bool isNested;
};
class SidebarDrop : public ShownSidebar, public testing::WithParamInterface<DropCase> { };

TEST_P(SidebarDrop, NestsCodesAndRefusesTheRest)
{
    open({u"Trust"_s, u"Doubt"_s});
    const QUuid trust = library.code(u"Trust"_s).id;
    QMimeData data;
    data.setText(QString(GetParam().text).replace(u"%1"_s, trust.toString(QUuid::WithoutBraces)));
    const QPoint place = middleOf(GetParam().target);
    QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(list().viewport(), &enter);
    QDragMoveEvent move(place, Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(list().viewport(), &move);
    EXPECT_EQ(move.isAccepted(), GetParam().isAccepted);
    EXPECT_EQ(list().dropTarget(), GetParam().isAccepted ? row(GetParam().target) : QModelIndex());
    QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, {});
    drop.ignore();
    QApplication::sendEvent(list().viewport(), &drop);
    EXPECT_EQ(drop.isAccepted(), GetParam().isAccepted);
    EXPECT_EQ(library.code(u"Trust"_s).parentID.has_value(), GetParam().isNested);
    EXPECT_FALSE(list().dropTarget().isValid());
}

INSTANTIATE_TEST_SUITE_P(Texts, SidebarDrop,
    testing::Values(DropCase{"a_code_on_another", u"%1"_s, u"Doubt"_s, true, true},
        DropCase{"on_itself_is_left_to_the_store", u"%1"_s, u"Trust"_s, true, false},
        DropCase{"of_no_code_is_left_to_the_store", u"6F9619FF-8B86-D011-B42D-00C04FC964FF"_s, u"Doubt"_s, true, false},
        DropCase{"identifier_within_words", u"see %1"_s, u"Doubt"_s, false, false},
        DropCase{"identifier_in_braces", u"{%1}"_s, u"Doubt"_s, false, false},
        DropCase{"on_a_project", u"%1"_s, u"Untitled Study"_s, false, false},
        DropCase{"on_a_button", u"%1"_s, u"New Code…"_s, false, false}),
    rowName);

struct DragCase {
    const char *name;
    QString row;
    int distance;
    bool isDragged;
};
class SidebarDrag : public ShownSidebar, public testing::WithParamInterface<DragCase> { };

/// Without a desktop a drag ends as soon as it has begun, and lives until the next round of the event loop.
TEST_P(SidebarDrag, BeginsWithoutSelecting)
{
    open({u"Trust"_s});
    const QPoint start = middleOf(GetParam().row);
    QTest::mousePress(list().viewport(), Qt::LeftButton, {}, start);
    QMouseEvent move(QEvent::MouseMove, start + QPoint(0, GetParam().distance), {}, {}, Qt::LeftButton, {});
    QApplication::sendEvent(list().viewport(), &move);
    const auto *drag = list().findChild<QDrag *>();
    ASSERT_EQ(drag != nullptr, GetParam().isDragged);
    EXPECT_EQ(selectedRow(), u"Untitled Study"_s);
    if (drag == nullptr)
        return;
    EXPECT_EQ(drag->mimeData()->text(), library.code(u"Trust"_s).id.toString(QUuid::WithoutBraces).toUpper());
    EXPECT_FALSE(drag->pixmap().isNull());
    QLineEdit elsewhere(&m_window); // takes any other text
    for (QWidget *place : {static_cast<QWidget *>(&elsewhere), list().viewport()}) {
        QDragEnterEvent enter({1, 1}, Qt::CopyAction, drag->mimeData(), Qt::LeftButton, {});
        QApplication::sendEvent(place, &enter);
        EXPECT_EQ(enter.isAccepted(), place == list().viewport()) << place->metaObject()->className();
    }
}

INSTANTIATE_TEST_SUITE_P(Presses, SidebarDrag,
    testing::Values(DragCase{"code", u"Trust"_s, 30, true}, DragCase{"trembling_hand", u"Trust"_s, 2, false},
        DragCase{"button", u"New Code…"_s, 30, false}),
    rowName);
