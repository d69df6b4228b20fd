#include "kit/controls/Popover.h"
#include "platform/UnpairedSurrogates.h"
#include "records/database/DatabaseQueue.h"
#include "records/database/Request.h"
#include "records/database/Row.h"
#include "support/NastyText.h"
#include "workspace/ShownWindow.h"

#include <QAccessible>
#include <QClipboard>
#include <QDrag>
#include <QDragMoveEvent>
#include <QMimeData>
#include <QPointer>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <QUrl>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace {

constexpr int eventsUntilRest = 200;

int parameter(const char *name, int otherwise)
{
    const int given = qEnvironmentVariableIntValue(name);
    return given > 0 ? given : otherwise;
}

// Mouse, keys and drops as a desktop sends them: to a window, which finds out by itself which widget gets them. It may
// go away at each of these events.

using Window = QPointer<QWindow>;

void click(const Window &window, const QPoint &place, Qt::MouseButton button, Qt::KeyboardModifiers modifiers = {})
{
    QTest::mousePress(window, button, modifiers, place);
    if (window != nullptr)
        QTest::mouseRelease(window, button, modifiers, place);
}

void press(const Window &window, Qt::Key key, Qt::KeyboardModifiers modifiers = {})
{
    const char letter = QTest::keyToAscii(key);
    const QString text = letter != 0 ? QString(QLatin1Char(letter)) : QString();
    for (const bool isDown : {true, false}) {
        if (window != nullptr)
            QTest::simulateEvent(window, isDown, key, modifiers, text, false);
    }
}

/// Something comes in, moves over `place`, and is dropped or goes out again. Without an end, Qt would go on sending the
/// events of the next drag to this one's target, which may be gone by then.
void drop(QWindow &window, const QPoint &place, const QMimeData &data, bool isDropped = true)
{
    constexpr auto actions = Qt::CopyAction | Qt::MoveAction;
    QDragEnterEvent enter(place, actions, &data, Qt::LeftButton, {});
    QDragMoveEvent move(place, actions, &data, Qt::LeftButton, {});
    QDropEvent drop(place, actions, &data, Qt::LeftButton, {});
    QDragLeaveEvent leave;
    for (QEvent *event : {static_cast<QEvent *>(&enter), static_cast<QEvent *>(&move),
             isDropped ? static_cast<QEvent *>(&drop) : &leave})
        QApplication::sendEvent(&window, event);
}

/// Without a desktop a drag ends as soon as it has begun, but its object lives until the event loop runs again.
const QDrag *currentDrag()
{
    for (const QWidget *window : QApplication::topLevelWidgets()) {
        if (const auto drags = window->findChildren<QDrag *>(); !drags.isEmpty())
            return drags.last();
    }
    return nullptr;
}

void drag(const Window &window, const QPoint &from, const QPoint &to)
{
    QTest::mousePress(window, Qt::LeftButton, {}, from);
    for (const QPoint &place : {(from + to) / 2, to}) {
        if (window == nullptr)
            return;
        // Not by QTest, which runs the event loop: the drag would be gone.
        QMouseEvent move(QEvent::MouseMove, place, window->mapToGlobal(place), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(window, &move);
        if (const QDrag *dragged = currentDrag(); dragged != nullptr && window != nullptr)
            drop(*window, to, *dragged->mimeData());
    }
    if (window != nullptr)
        QTest::mouseRelease(window, Qt::LeftButton, {}, to);
}

/// What a screen reader would tell of the window, from its first widget to its last.
void collect(QAccessibleInterface &shown, QStringList &into)
{
    if (shown.state().invisible || shown.role() == QAccessible::ScrollBar)
        return;
    QStringList texts;
    for (const QAccessible::Text kind : {QAccessible::Name, QAccessible::Description, QAccessible::Value})
        texts.append(shown.text(kind));
    if (QAccessibleTextInterface *text = shown.textInterface()) {
        int end = 0;
        for (int start = 0; start < text->characterCount(); start = std::max(start + 1, end)) {
            const QString attributes = text->attributes(start, &start, &end); // where they change, coded passages do
            texts.append(attributes + text->text(start, end));
        }
    }
    texts.removeAll({});
    if (!texts.isEmpty()) // a half pair that was typed looks like what is stored for it
        into.append(replaceUnpairedSurrogates(texts.join(u" | "_s)));
    if (const auto *list = qobject_cast<const QAbstractItemView *>(shown.object())) {
        for (int row = 0; row < list->model()->rowCount(); ++row)
            into.append(list->model()->index(row, 0).data(Qt::AccessibleTextRole).toString());
        return;
    }
    for (int number = 0; number < shown.childCount(); ++number) {
        if (QAccessibleInterface *child = shown.child(number))
            collect(*child, into);
    }
}

QStringList shownBy(QWidget &window)
{
    QStringList lines;
    collect(*QAccessible::queryAccessibleInterface(&window), lines);
    return lines;
}

/// Clicks, drags, drops and types at random in the real window while the store changes under its hands, the same way
/// for the same seed.
class Monkey : public ShownWindow, public testing::WithParamInterface<unsigned> {
protected:
    Monkey()
    {
        LibraryStore &store = library.store;
        store.createProject(u"Second"_s);
        store.loadSampleContent();
        store.exportQdpx(m_folder.filePath(u"in.qdpx"_s));
        library.makeCodes({u"Two & more"_s, u"a name that goes on "_s.repeated(15)});
        open();
        // Menus of scroll bars and fields run an event loop of their own.
        QObject::connect(&m_rescue, &QTimer::timeout, [this] {
            if (QApplication::activePopupWidget() != nullptr && QThread::currentThread()->loopLevel() > 0)
                ::press(top().windowHandle(), Qt::Key_Escape);
        });
        m_rescue.start(5);
    }

    void act()
    {
        QApplication::setActiveWindow(&top());
        if (below(40) == 0)
            changeStore();
        else if (auto *menu = qobject_cast<QMenu *>(&top()); menu != nullptr && below(5) > 0)
            choose(*menu);
        else
            useWindow(top());
        if (!root().isVisible())
            root().show();
    }
    /// Nothing is open or under way any more, and there is enough to play with.
    void rest()
    {
        for (int each = 0; each < 50 && (&top() != &root() || root().findChild<Popover *>() != nullptr); ++each) {
            ::press(top().windowHandle(), Qt::Key_Escape);
            settle();
        }
        ASSERT_EQ(&top(), &root()) << top().metaObject()->className() << " doesn't close";
        ASSERT_EQ(root().findChild<Popover *>(), nullptr);
        library.store.searchText().set({});
        library.store.statusMessage().set({});
        keepPlayable();
        library.store.goToDocuments();
        for (QWidget *field : {&find(u"findField"_s), &find(u"newCodeField"_s), &find(u"renameField"_s),
                 static_cast<QWidget *>(&text())}) {
            if (field->isVisible()) {
                field->setFocus();
                ::press(root().windowHandle(), Qt::Key_Escape); // closes the field, or gives up the selection
            }
        }
        root().hide(); // closes memos that were opened and left empty
        root().show();
        settle();
    }
    /// The file is sound, what is shown is in it, and a new window shows the same.
    void check()
    {
        library.queue->read([](Database &database) {
            QHash<QUuid, qsizetype> lengths;
            for (const Document &document : Document::all().fetchAll(database))
                lengths.insert(document.id, document.text.size());
            for (const Coding &coding : Coding::all().fetchAll(database))
                EXPECT_TRUE(coding.start >= 0 && coding.length > 0
                    && coding.start + coding.length <= lengths.value(coding.documentID));
            EXPECT_TRUE(Row::fetchAll(database, "pragma foreign_key_check").empty());
            EXPECT_TRUE(Row::fetchAll(database,
                "WITH RECURSIVE tree(id) AS (SELECT id FROM code WHERE parentID IS NULL UNION "
                "SELECT code.id FROM code JOIN tree ON parentID = tree.id) "
                "SELECT id FROM code WHERE id NOT IN (SELECT id FROM tree)")
                            .empty())
                << "a cycle of codes";
        });
        const QStringList shown = shownBy(root());
        library.store.refresh();
        settle();
        expectSame(shownBy(root()), shown);
        RootView another(library.store);
        another.resize(root().size());
        another.show();
        settle();
        expectSame(shownBy(another), shown);
    }

private:
    static void expectSame(const QStringList &shown, const QStringList &expected)
    {
        const auto [one, other] = std::ranges::mismatch(shown, expected);
        if (one != shown.end() || other != expected.end())
            ADD_FAILURE() << shown.value(one - shown.begin()).toStdString() << "\n instead of\n"
                          << expected.value(other - expected.begin()).toStdString();
    }
    [[nodiscard]] int below(qsizetype end) { return m_random.number(0, int(end) - 1); }
    /// `list` mustn't be empty.
    template <typename List>
    [[nodiscard]] auto oneOf(const List &list)
    {
        return list.begin()[below(qsizetype(list.size()))];
    }
    [[nodiscard]] QPoint placeIn(const QRect &area)
    {
        return area.topLeft() + QPoint(below(std::max(1, area.width())), below(std::max(1, area.height())));
    }
    [[nodiscard]] QString someText()
    {
        const QStringList texts{u"One"_s, u"trust"_s, u"  "_s, u"<b>bold</b> & %1 %2"_s, u"NUL \0 here"_s,
            u"x"_s.repeated(4000), u"line\r\nline\n\u2028\n\t"_s.repeated(30)};
        return below(2) == 0 ? m_random.next(12) : oneOf(texts);
    }
    /// Anywhere, or more often on something that does something.
    [[nodiscard]] QPoint somewhere(const QWidget &window)
    {
        QList<QWidget *> targets = window.findChildren<QWidget *>();
        targets.removeIf([&](const QWidget *each) {
            return !each->isVisible() || !each->isEnabled() || each->focusPolicy() == Qt::NoFocus
                || each->window() != &window;
        });
        if (targets.isEmpty() || below(4) == 0)
            return placeIn(window.rect());
        QWidget *target = oneOf(targets);
        auto *list = qobject_cast<QAbstractItemView *>(target);
        if (list == nullptr || list->model()->rowCount() == 0)
            return target->mapTo(&window, placeIn(target->rect()));
        const QModelIndex row = list->model()->index(below(list->model()->rowCount()), 0);
        list->scrollTo(row);
        return list->viewport()->mapTo(&window, list->visualRect(row).center());
    }
    void useWindow(QWidget &widget)
    {
        static constexpr std::array keys{Qt::Key_Return, Qt::Key_Escape, Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Up,
            Qt::Key_Down, Qt::Key_Left, Qt::Key_Right, Qt::Key_Home, Qt::Key_End, Qt::Key_PageDown, Qt::Key_Space,
            Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_A, Qt::Key_Z, Qt::Key_X, Qt::Key_C, Qt::Key_F, Qt::Key_Menu};
        static constexpr std::array modifiers{Qt::NoModifier, Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier};
        QWindow *window = widget.windowHandle();
        const QPoint place = somewhere(widget);
        const int kind = below(23);
        if (kind == 0)
            QTest::mouseDClick(window, Qt::LeftButton, {}, place);
        else if (kind == 1)
            dropSomething(*window, place);
        else if (kind == 2)
            changeDesktop();
        else if (kind < 6)
            ::click(window, place, Qt::RightButton);
        else if (kind < 9)
            ::drag(window, place, somewhere(widget));
        else if (kind < 13)
            ::press(window, oneOf(keys), oneOf(modifiers));
        else if (kind < 15) {
            QApplication::clipboard()->setText(someText());
            ::press(window, Qt::Key_V, Qt::ControlModifier);
        } else
            ::click(window, place, Qt::LeftButton, oneOf(modifiers));
    }
    void choose(QMenu &menu)
    {
        QList<QAction *> entries = menu.actions();
        entries.removeIf([](const QAction *entry) {
            return entry->isSeparator() || !entry->isEnabled() || entry->text() == u"Quit";
        });
        if (!entries.isEmpty())
            menu.setActiveAction(oneOf(entries));
        ::press(menu.windowHandle(), entries.isEmpty() ? Qt::Key_Escape : Qt::Key_Return);
    }
    void dropSomething(QWindow &window, const QPoint &place)
    {
        QMimeData data;
        if (below(3) == 0)
            data.setUrls({QUrl::fromLocalFile(m_folder.filePath(u"in.qdpx"_s))});
        else if (below(2) == 0 && !library.store.codes()->isEmpty())
            data.setText(oneOf(library.store.codes().get()).id.toString(QUuid::WithoutBraces));
        else
            data.setHtml(u"<table><tr><td>"_s + someText());
        drop(window, place, data, below(4) > 0);
    }
    /// How it looks, how large the window is, and which files the user will choose.
    void changeDesktop()
    {
        m_settings.set(u"org.freedesktop.appearance/color-scheme"_s, uint(below(3)));
        m_settings.set(u"org.freedesktop.appearance/contrast"_s, uint(below(2)));
        root().resize(300 + below(1500), 200 + below(900));
        library.fileDialogs.pathsToOpen =
            QStringList(m_folder.filePath(below(3) == 0 ? u"missing.txt"_s : u"in.qdpx"_s));
        library.fileDialogs.pathToSave = m_folder.filePath(below(2) == 0 ? u"out"_s : u"no/such/folder"_s);
    }
    /// Everything that is shown may change or go away.
    void changeStore()
    {
        LibraryStore &store = library.store;
        const QList<Code> codes = store.codes().get();
        const int kind = below(6);
        if (kind == 0)
            store.selectProject(oneOf(store.projects().get()).id);
        else if (kind == 1)
            store.lastError().set(someText());
        else if (kind == 2)
            store.statusMessage().set(someText());
        else if (kind == 3 && !codes.isEmpty())
            store.deleteCode(oneOf(codes));
        else if (kind == 4 && !codes.isEmpty())
            store.mergeCodes(oneOf(codes), oneOf(codes));
        else if (!store.documents()->isEmpty())
            store.deleteDocument(Document(oneOf(store.documents().get())));
    }
    void keepPlayable()
    {
        LibraryStore &store = library.store;
        while (store.codes()->size() < 3)
            library.makeCodes({u"Code"_s});
        while (store.documents()->size() < 3)
            library.paste(u"Voices"_s, m_random.next(300));
        for (const qint64 start : {0, 20, 40})
            store.assignCode(oneOf(store.codes().get()), oneOf(store.documents().get()), {start, 15});
        if (!store.selectedDocumentID().get())
            store.selectedDocumentID().set(store.documents()->first().id);
    }

    QTemporaryDir m_folder;
    NastyText m_random{GetParam()};
    QTimer m_rescue;
};

} // namespace

/// VORN_MONKEY_EVENTS and VORN_SEED ask for more of them, and for others.
TEST_P(Monkey, LeavesTheLibrarySoundAndTheWindowTrue)
{
    const int events = parameter("VORN_MONKEY_EVENTS", 600);
    for (int number = 1; number <= events && !HasFailure(); ++number) {
        SCOPED_TRACE(testing::Message() << "seed " << GetParam() << ", event " << number);
        act();
        if (number % 10 == 0)
            QApplication::processEvents();
        if (number % eventsUntilRest == 0 || number == events) {
            rest();
            check();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, Monkey, testing::Values(unsigned(parameter("VORN_SEED", 1))));
