#include "Hand.h"
#include "kit/controls/Popover.h"
#include "platform/UnpairedSurrogates.h"
#include "records/database/DatabaseQueue.h"
#include "records/database/Request.h"
#include "records/database/Row.h"
#include "support/NastyText.h"
#include "workspace/ShownWindow.h"

#include <QAbstractAnimation>
#include <QAccessible>
#include <QMimeData>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

constexpr int eventsUntilRest = 200;

int parameter(const char *name, int otherwise)
{
    const int given = qEnvironmentVariableIntValue(name);
    return given > 0 ? given : otherwise;
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

/// Where two lists begin to differ; empty if they don't.
std::string difference(const QStringList &one, const QStringList &other)
{
    for (qsizetype line = 0; line < std::max(one.size(), other.size()); ++line) {
        if (one.value(line) != other.value(line))
            return (one.value(line) + u"\n instead of\n"_s + other.value(line)).toStdString();
    }
    return {};
}

/// Clicks, drags, drops and types at random in the real window while the store changes under its hands, the same way
/// for the same seed.
class Monkey : public ShownWindow, public testing::WithParamInterface<unsigned> {
protected:
    Monkey()
    {
        LibraryStore &store = library.store;
        store.loadSampleContent();
        store.exportQdpx(m_folder.filePath(u"in.qdpx"_s));
        QFile file(m_folder.filePath(u"in.txt"_s));
        EXPECT_TRUE(file.open(QFile::WriteOnly) && file.write(nastyText().toUtf8()) > 0);
        const QUuid first = store.project()->value().id;
        store.createProject(u"Second"_s);
        store.selectProject(first);
        library.makeCodes({u"Two & more"_s, u"a name that goes on "_s.repeated(15)});
        open();
        // Menus of scroll bars and fields run an event loop of their own.
        QObject::connect(&m_rescue, &QTimer::timeout, [] {
            if (QWidget *popup = QApplication::activePopupWidget();
                popup != nullptr && QThread::currentThread()->loopLevel() > 0)
                Hand::press(*popup, Qt::Key_Escape);
        });
        m_rescue.start(5);
    }

    void act()
    {
        QApplication::setActiveWindow(&top());
        if (below(40) == 0)
            changeStore();
        else if (auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget()); menu != nullptr && below(5) > 0)
            choose(*menu);
        else
            useWindow(top());
        if (!root().isVisible())
            root().show();
    }
    /// Nothing is open or under way any more, and there is enough to play with, but not ever more.
    void rest()
    {
        animate(false);
        for (int each = 0; each < 50 && (&top() != &root() || popover() != nullptr); ++each) {
            QApplication::setActiveWindow(&top());
            Hand::press(top(), Qt::Key_Escape);
            QApplication::processEvents();
        }
        ASSERT_EQ(&top(), &root()) << top().metaObject()->className() << " doesn't close";
        ASSERT_EQ(popover(), nullptr);
        library.store.searchText().set({});
        library.store.statusMessage().set({});
        keepPlayable();
        library.store.goToDocuments();
        for (QWidget *field : {&find<QWidget>(u"findField"_s), &find<QWidget>(u"newCodeField"_s),
                 &find<QWidget>(u"renameField"_s), static_cast<QWidget *>(&text())}) {
            if (field->isVisible()) {
                field->setFocus();
                Hand::press(root(), Qt::Key_Escape); // closes the field, or gives up the selection
            }
        }
        root().hide(); // closes memos that were opened and left empty
        root().show();
        EXPECT_TRUE(QTest::qWaitFor([this] { return !isMoving(); }));
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
        EXPECT_EQ(difference(shownBy(root()), shown), "") << "what was shown isn't what is in the file";
        RootView another(library.store);
        another.resize(root().size());
        another.show();
        settle();
        EXPECT_EQ(difference(shownBy(another), shown), "");
    }

private:
    static QString nastyText()
    {
        return u"Dr. Alex 👩‍🔬 said:\r\n“trust 😀 grows”\u2028and e\u0301 \u05E9\u05DC\u05D5\u05DD\n"_s
            .repeated(40);
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
        const int x = area.left() + below(std::max(1, area.width()));
        return {x, area.top() + below(std::max(1, area.height()))};
    }
    [[nodiscard]] QString someText()
    {
        const QStringList texts{u"One"_s, u"trust"_s, u"  "_s, u"<b>bold</b> & %1 %2"_s, u"NUL \0 here"_s,
            u"x"_s.repeated(4000), u"line\r\nline\n\u2028\n\t"_s.repeated(30)};
        return below(2) == 0 ? m_random.next(12) : oneOf(texts);
    }
    [[nodiscard]] QWidget &top() const
    {
        QWidget *popup = QApplication::activePopupWidget();
        QWidget *modal = QApplication::activeModalWidget();
        return popup != nullptr ? *popup : modal != nullptr ? *modal : root();
    }
    [[nodiscard]] const Popover *popover() const
    {
        const auto all = root().findChildren<Popover *>();
        const auto open = std::ranges::find_if(all, &QWidget::isVisible);
        return open == all.end() ? nullptr : *open;
    }
    [[nodiscard]] bool isMoving() const
    {
        const auto all = root().findChildren<QAbstractAnimation *>();
        return std::ranges::any_of(all, [](const auto *each) { return each->state() == QAbstractAnimation::Running; });
    }
    static void settle()
    {
        QApplication::processEvents();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::processEvents();
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
    void useWindow(QWidget &window)
    {
        static constexpr std::array keys{Qt::Key_Return, Qt::Key_Escape, Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Up,
            Qt::Key_Down, Qt::Key_Left, Qt::Key_Right, Qt::Key_Home, Qt::Key_End, Qt::Key_PageDown, Qt::Key_Space,
            Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_A, Qt::Key_Z, Qt::Key_X, Qt::Key_C, Qt::Key_F, Qt::Key_Menu};
        static constexpr std::array modifiers{Qt::NoModifier, Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier};
        const QPoint place = somewhere(window);
        const int kind = below(24);
        if (kind == 0)
            Hand::turnWheel(window, place, below(60) - 30);
        else if (kind == 1)
            Hand::doubleClick(window, place);
        else if (kind == 2)
            drop(window, place);
        else if (kind == 3)
            changeDesktop();
        else if (kind < 7)
            Hand::click(window, place, Qt::RightButton);
        else if (kind < 10)
            Hand::drag(window, place, somewhere(window));
        else if (kind < 14)
            Hand::press(window, oneOf(keys), oneOf(modifiers));
        else if (kind < 16)
            Hand::paste(window, someText());
        else
            Hand::click(window, place, Qt::LeftButton, oneOf(modifiers));
    }
    void choose(QMenu &menu)
    {
        QList<QAction *> entries = menu.actions();
        entries.removeIf([](const QAction *entry) {
            return entry->isSeparator() || !entry->isEnabled() || entry->text() == u"Quit";
        });
        if (entries.isEmpty())
            return Hand::press(menu, Qt::Key_Escape);
        menu.setActiveAction(oneOf(entries));
        Hand::press(menu, Qt::Key_Return);
    }
    void drop(QWidget &window, const QPoint &place)
    {
        QMimeData data;
        if (below(3) == 0)
            data.setUrls({QUrl::fromLocalFile(m_folder.filePath(u"in.qdpx"_s))});
        else if (below(2) == 0 && !library.store.codes()->isEmpty())
            data.setText(oneOf(library.store.codes().get()).id.toString(QUuid::WithoutBraces));
        else
            data.setHtml(u"<table><tr><td>"_s + someText());
        Hand::drop(window, place, data, below(4) > 0);
    }
    /// How it looks, how large the window is, and which files the user will choose.
    void changeDesktop()
    {
        m_settings.set(u"org.freedesktop.appearance/color-scheme"_s, uint(below(3)));
        m_settings.set(u"org.freedesktop.appearance/contrast"_s, uint(below(2)));
        animate(below(2) == 0);
        root().resize(300 + below(1500), 200 + below(900));
        const QStringList files{u"in.qdpx"_s, u"in.txt"_s, u"missing.txt"_s};
        library.fileDialogs.pathsToOpen = QStringList(m_folder.filePath(oneOf(files)));
        const QStringList places{u"out"_s, u"no/such/folder"_s};
        library.fileDialogs.pathToSave = m_folder.filePath(oneOf(places));
    }
    /// Everything that is shown may change or go away.
    void changeStore()
    {
        LibraryStore &store = library.store;
        const QList<Document> documents = store.documents().get();
        const QList<Code> codes = store.codes().get();
        switch (below(6)) {
        case 0:
            return store.selectProject(oneOf(store.projects().get()).id);
        case 1:
            return store.lastError().set(someText());
        case 2:
            return store.statusMessage().set(someText());
        case 3:
            return codes.isEmpty() ? void() : store.deleteCode(oneOf(codes));
        case 4:
            return codes.isEmpty() ? void() : store.mergeCodes(oneOf(codes), oneOf(codes));
        default: // mostly the one that is read
            const auto read =
                std::ranges::find(documents, store.selectedDocumentID()->value_or(QUuid()), &Document::id);
            if (!documents.isEmpty())
                store.deleteDocument(read != documents.end() ? *read : oneOf(documents));
        }
    }
    void keepPlayable()
    {
        LibraryStore &store = library.store;
        while (store.documents()->size() > 10)
            store.deleteDocument(Document(oneOf(store.documents().get())));
        while (store.codes()->size() > 30)
            store.deleteCode(Code(oneOf(store.codes().get())));
        while (store.codes()->size() < 3)
            library.makeCodes({u"Code"_s});
        while (store.documents()->size() < 3)
            library.paste(u"Voices"_s, nastyText());
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
