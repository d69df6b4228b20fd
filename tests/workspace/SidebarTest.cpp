#include "kit/controls/Alert.h"
#include "kit/theme/ThemedTest.h"
#include "support/Printing.h"
#include "support/TestLibrary.h"
#include "workspace/sidebar/SidebarList.h"
#include "workspace/sidebar/SidebarView.h"

#include <QDrag>
#include <QDragMoveEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QScrollBar>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// The real sidebar over the real store, driven by mouse and keys.
class Sidebar : public ThemedTest {
protected:
    /// With codes of these names in the project "Untitled Study".
    void open(const QStringList &codes)
    {
        library.makeCodes(codes);
        view = std::make_unique<SidebarView>(store, &m_window);
        view->resize(210, 500);
        list = &childOf<SidebarList>(view.get(), {});
        newCode = &childOf<QLineEdit>(view.get(), u"newCodeField"_s);
        rename = &childOf<QLineEdit>(view.get(), u"renameField"_s);
        showWindow();
        QApplication::processEvents();
    }
    /// "Code 0" and so on.
    void openMany(int count)
    {
        QStringList codes(count);
        std::ranges::generate(codes, [number = 0]() mutable { return u"Code %1"_s.arg(number++); });
        open(codes);
    }
    [[nodiscard]] QModelIndex row(const QString &text) const
    {
        const QModelIndex index = list->model()->index(int(textsOf(*list).indexOf(text)), 0);
        return index.isValid() ? index : throw std::runtime_error("no such row: " + text.toStdString());
    }
    [[nodiscard]] QPoint middleOf(const QString &text) const { return list->visualRect(row(text)).center(); }
    [[nodiscard]] bool isInView(const QPoint &place) const { return list->viewport()->rect().contains(place); }
    [[nodiscard]] QString selected() const { return selectedIn(*list); }
    [[nodiscard]] QString current() const { return list->currentIndex().data().toString(); }
    void click(const QString &text) const { QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, middleOf(text)); }
    static void press(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }
    void moveTo(const QString &text) const
    {
        list->setFocus(Qt::TabFocusReason);
        list->selectionModel()->setCurrentIndex(row(text), QItemSelectionModel::NoUpdate);
    }
    void choose(const QString &text, const QStringList &path)
    {
        take(menuAt(*list, middleOf(text)), path);
        QWidget *alert = m_window.findChild<Alert *>();
        QApplication::setActiveWindow(alert != nullptr ? alert : &m_window); // as the window system does
    }

    TestLibrary library;
    LibraryStore &store = library.store;
    std::unique_ptr<SidebarView> view; // goes before the store
    SidebarList *list = nullptr;
    QLineEdit *newCode = nullptr;
    QLineEdit *rename = nullptr;
};

} // namespace

TEST_F(Sidebar, ClicksReturnAndSpaceActOnWhatIsNoHeadingAndArrowsOnlyMove)
{
    open({u"Trust"_s, u"Doubt"_s});
    for (const QString &text : {u"Trust"_s, u"Codes"_s}) {
        click(text);
        EXPECT_EQ(store.selectedCodeID(), library.code(u"Trust"_s).id);
        EXPECT_EQ(selected(), u"Trust"_s);
    }
    press(Qt::Key_Home);
    for (const QString &next : {u"New Project…"_s, u"Trust"_s, u"Doubt"_s, u"New Code…"_s, u"New Code…"_s}) {
        press(Qt::Key_Down);
        EXPECT_EQ(current(), next);
        EXPECT_EQ(selected(), u"Trust"_s) << "passing by selects nothing";
    }
    press(Qt::Key_Space);
    EXPECT_TRUE(newCode->hasFocus());
    moveTo(u"Untitled Study"_s);
    press(Qt::Key_Return);
    EXPECT_EQ(selected(), u"Untitled Study"_s);
    store.sidebarSelection().set(QuerySelection{});
    EXPECT_EQ(selected(), QString());
}

TEST_F(Sidebar, TheSelectionFollowsItsCode)
{
    open({u"Selected"_s, u"Other"_s, u"Third"_s});
    click(u"Selected"_s);
    const std::pair<QString, std::function<void()>> changes[]{
        {u"New"_s, [&] { store.renameCode(library.code(u"Selected"_s), u"New"_s); }},
        {u"New"_s, [&] { store.nestCode(library.code(u"New"_s).id, library.code(u"Third"_s).id); }},
        {u"New"_s, [&] { store.deleteCode(library.code(u"Other"_s)); }}, // above it
        {u"Third"_s, [&] { store.mergeCodes(library.code(u"New"_s), library.code(u"Third"_s)); }},
        {u"Untitled Study"_s, [&] { store.deleteCode(library.code(u"Third"_s)); }}};
    for (const auto &[expected, change] : changes) {
        change();
        EXPECT_EQ(selected(), expected);
        EXPECT_EQ(current(), expected);
    }
}

TEST_F(Sidebar, AChangeNeitherScrollsNorMovesTheKeyboardButANewCodeComesIntoView)
{
    openMany(200);
    moveTo(u"Code 5"_s);
    list->verticalScrollBar()->setValue(2000);
    store.nestCode(library.code(u"Code 5"_s).id, library.code(u"Code 190"_s).id);
    store.nestCode(library.code(u"Code 199"_s).id, library.code(u"Code 198"_s).id);
    EXPECT_EQ(list->verticalScrollBar()->value(), 2000);
    EXPECT_EQ(current(), u"Code 5"_s);
    moveTo(u"New Code…"_s);
    list->scrollToTop();
    press(Qt::Key_Return);
    EXPECT_TRUE(isInView(newCode->geometry().center()));
    list->scrollToTop();
    EXPECT_EQ(newCode->y(), list->visualRect(row(u"New Code…"_s)).y());
    newCode->setText(u"Last"_s);
    press(Qt::Key_Return);
    EXPECT_TRUE(isInView(middleOf(u"Last"_s)));
}

/// Without a desktop a drag ends as soon as it has begun, and lives until the next round of the event loop.
TEST_F(Sidebar, CodesAreDraggedOntoCodesAndOtherTextsAreRefused)
{
    openMany(50);
    const auto drag = [this](const QString &text, int distance) {
        const QPoint start = middleOf(text);
        QTest::mousePress(list->viewport(), Qt::LeftButton, {}, start);
        QMouseEvent move(QEvent::MouseMove, start + QPoint(0, distance), {}, {}, Qt::LeftButton, {});
        QApplication::sendEvent(list->viewport(), &move);
        return list->findChild<QDrag *>();
    };
    EXPECT_EQ(drag(u"Code 0"_s, 2), nullptr) << "a trembling hand";
    EXPECT_EQ(drag(u"New Project…"_s, 30), nullptr);
    const QDrag *begun = drag(u"Code 0"_s, 30);
    ASSERT_NE(begun, nullptr);
    EXPECT_EQ(selected(), u"Untitled Study"_s);
    const QString code = begun->mimeData()->text();
    EXPECT_EQ(code, library.code(u"Code 0"_s).id.toString(QUuid::WithoutBraces).toUpper());
    QLineEdit elsewhere(&m_window);
    QDragEnterEvent away({1, 1}, Qt::CopyAction, begun->mimeData(), Qt::LeftButton, {});
    QApplication::sendEvent(&elsewhere, &away);
    EXPECT_FALSE(away.isAccepted()) << "a field would take it as text";

    QMimeData data;
    const auto takesAt = [&](const QPoint &place) {
        QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(list->viewport(), &enter);
        QDragMoveEvent move(place, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(list->viewport(), &move);
        return move.isAccepted();
    };
    enum Outcome { refused, leftToTheStore, nested };
    const std::tuple<QString, QString, Outcome> drops[]{{code, u"Code 0"_s, leftToTheStore},
        {QUuid::createUuid().toString(QUuid::WithoutBraces), u"Code 1"_s, leftToTheStore},
        {u"see "_s + code, u"Code 1"_s, refused}, {u'{' + code + u'}', u"Code 1"_s, refused},
        {code, u"Untitled Study"_s, refused}, {code, u"New Project…"_s, refused},
        {code.toLower(), u"Code 1"_s, nested}};
    for (const auto &[text, target, outcome] : drops) {
        data.setText(text);
        EXPECT_EQ(takesAt(middleOf(target)), outcome != refused) << text.toStdString();
        EXPECT_EQ(list->dropTarget(), outcome != refused ? row(target) : QModelIndex());
        QDropEvent drop(middleOf(target), Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(list->viewport(), &drop);
        EXPECT_EQ(library.code(u"Code 0"_s).parentID.has_value(), outcome == nested) << text.toStdString();
        EXPECT_FALSE(list->dropTarget().isValid());
    }
    EXPECT_TRUE(takesAt({40, 300}));
    list->verticalScrollBar()->setValue(200);
    EXPECT_EQ(list->dropTarget(), list->indexAt({40, 300})) << "the mouse is over another row";
    QDragLeaveEvent leave; // without it Qt would go on sending drags to this list when it is gone
    QApplication::sendEvent(list->viewport(), &leave);
    EXPECT_FALSE(list->dropTarget().isValid());
}

TEST_F(Sidebar, FieldsTakeANameForANewCodeOrForOneThatIsThere)
{
    open({u"Calm"_s});
    for (const auto &[typed, key, name] : {std::tuple(u"   "_s, Qt::Key_Return, u"Calm"_s),
             {u"Trust"_s, Qt::Key_Escape, u"Calm"_s}, {u" Trust\t"_s, Qt::Key_Return, u"Trust"_s}}) {
        choose(u"Calm"_s, {u"Rename"_s});
        EXPECT_EQ(rename->selectedText(), u"Calm"_s);
        rename->setText(typed);
        press(key);
        EXPECT_EQ(store.codes()->first().name, name);
        EXPECT_TRUE(list->hasFocus()) << "the keyboard goes on from the list";
        click(u"New Code…"_s);
        EXPECT_EQ(newCode->text(), QString()) << "no draft comes back";
        newCode->setText(typed);
        press(key);
        EXPECT_EQ(store.codes()->value(1).name, name == u"Trust"_s ? name : QString());
        EXPECT_FALSE(newCode->isVisible() || rename->isVisible());
    }
}

TEST_F(Sidebar, DraftsOutliveClicksAndChangesAndFollowTheirRowsUntilTheseAreGone)
{
    open({u"Trust"_s, u"Doubt"_s});
    click(u"New Code…"_s);
    newCode->setText(u"First draft"_s);
    for (const QString &code : {u"Trust"_s, u"Doubt"_s}) {
        choose(code, {u"Rename"_s});
        EXPECT_EQ(rename->text(), code);
        rename->setText(u"Second draft"_s);
    }
    press(Qt::Key_Up);
    EXPECT_EQ(current(), u"New Code…"_s) << "keys in the field aren't the list's";
    library.makeCodes({u"Calm"_s});
    store.nestCode(library.code(u"Doubt"_s).id, library.code(u"Calm"_s).id);
    EXPECT_TRUE(rename->hasFocus());
    EXPECT_EQ(rename->y(), list->visualRect(row(u"Doubt"_s)).y());
    EXPECT_EQ(newCode->y(), list->visualRect(row(u"New Code…"_s)).y());
    click(u"Trust"_s);
    press(Qt::Key_Escape);
    EXPECT_EQ(selected(), u"Trust"_s);
    EXPECT_EQ(rename->text(), u"Second draft"_s) << "only the field itself takes the key";
    store.deleteCode(library.code(u"Doubt"_s));
    EXPECT_FALSE(rename->isVisible());
    EXPECT_EQ(newCode->text(), u"First draft"_s);
}

TEST_F(Sidebar, MenusOfferWhatCanBeDoneWithoutSelecting)
{
    open({u"Zeal"_s, u"Trust"_s, u"Tools\t& friction"_s});
    choose(u"Trust"_s, {u"Color"_s, u"Gray"_s});
    EXPECT_EQ(library.code(u"Trust"_s).colorHex, u"#8E8E93"_s);
    moveTo(u"Trust"_s);
    QMenu &menu = menuAt(*list, {}, QContextMenuEvent::Keyboard);
    for (const QAction *color : entry(menu, u"Color"_s).menu()->actions())
        EXPECT_EQ(color->isChecked(), color->text() == u"Gray"_s) << color->text().toStdString();
    for (const QString &submenu : {u"Nest Under"_s, u"Merge Into"_s, u"Merge Into"_s}) {
        QMenu &codes = *entry(menu, submenu).menu();
        Q_EMIT codes.aboutToShow();
        ASSERT_EQ(codes.actions().size(), 2);
        EXPECT_EQ(codes.actions().first()->text(), u"Zeal"_s) << "oldest first";
        EXPECT_EQ(codes.actions().last()->text(), u"Tools && friction"_s) << "without shortcuts";
    }
    take(menu, {u"Nest Under"_s, u"Zeal"_s});
    EXPECT_EQ(library.code(u"Trust"_s).parentID, library.code(u"Zeal"_s).id);
    choose(u"Trust"_s, {u"Move to Top Level"_s});
    EXPECT_FALSE(library.code(u"Trust"_s).parentID.has_value());
    choose(u"Untitled Study"_s, {u"Rename Project…"_s});
    QTest::keyClicks(QApplication::focusWidget(), u"Offices"_s);
    press(Qt::Key_Return);
    EXPECT_EQ(selected(), u"Offices"_s);
}

TEST_F(Sidebar, AsksBeforeItMergesOrDeletesAndReturnDeletesOnlyFromTheButton)
{
    const QString endless = u"100% %2"_s + u"\U0001F600"_s.repeated(4000);
    open({endless, u"Doubt"_s});
    const Document document = library.paste(u"Notes"_s, u"one two three"_s);
    for (const auto &[code, start] : {std::pair(endless, 0), {endless, 4}, {u"Doubt"_s, 8}})
        store.assignCode(library.code(code), document, {start, 3});
    EXPECT_EQ(row(u"Doubt"_s).data(Qt::AccessibleTextRole), u"Doubt, 1 coded passage"_s);
    EXPECT_EQ(row(endless).data(Qt::AccessibleTextRole), endless + u", 2 coded passages"_s);
    const QString merging = u"into “Doubt”: 2 coded excerpts move over, then “100% %2"_s;
    const std::tuple<QString, QString, QList<Qt::Key>, int> questions[]{{endless, merging, {Qt::Key_Escape}, 2},
        {endless, merging, {Qt::Key_Return}, 1}, {u"Doubt"_s, u"Delete “Doubt”?"_s, {Qt::Key_Return}, 1},
        {u"Doubt"_s, u"Delete “Doubt”?"_s, {Qt::Key_Tab, Qt::Key_Return}, 0}};
    for (const auto &[code, asked, keys, remaining] : questions) {
        choose(code, code == endless ? QStringList{u"Merge Into"_s, u"Doubt"_s} : QStringList{u"Delete…"_s});
        const auto &alert = childOf<Alert>(&m_window, {});
        EXPECT_LE(alert.height(), 700);
        EXPECT_TRUE((alert.windowTitle() + alert.accessibleDescription()).contains(asked));
        std::ranges::for_each(keys, press);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(store.codes()->size(), remaining);
        EXPECT_EQ(store.codeCounts()->value(store.codes()->value(0).id), remaining == 1 ? 3 : remaining);
    }
}
