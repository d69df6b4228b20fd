#include "ShownWindow.h"
#include "records/database/Request.h"

#include <QAbstractItemView>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMenuBar>
#include <QTemporaryDir>
#include <QTimer>
#include <QWindow>

#include <gtest/gtest.h>

#include <random>

using namespace Qt::StringLiterals;

namespace {

/// Clicks, drags and types anywhere in the real window, the same way for the same seed.
class Monkey : public ShownWindow, public testing::WithParamInterface<unsigned> {
protected:
    void prepare()
    {
        library.store.loadSampleContent();
        library.store.createProject(u"Second"_s);
        library.paste(u"Voices"_s,
            u"Dr. Alex 👩‍🔬 said:\r\n“trust 😀 grows”\u2028and e\u0301 \u05E9\u05DC\u05D5\u05DD\n"_s
                .repeated(40));
        library.makeCodes({u"One"_s, u"Two & more"_s, u"a name that goes on "_s.repeated(15)});
        library.store.exportQdpx(m_folder.filePath(u"in.qdpx"_s)); // what is imported mustn't grow with each round
        library.panels.pathToSave = m_folder.filePath(u"out.qdpx"_s);
        library.panels.pathsToOpen = {m_folder.filePath(u"in.qdpx"_s)};
        open();
    }
    int below(int end) { return int(m_random() % unsigned(std::max(1, end))); }
    /// Whoever would get the user's next event.
    [[nodiscard]] QWidget &top() const
    {
        for (QWidget *candidate : {QApplication::activePopupWidget(), QApplication::activeModalWidget()}) {
            if (candidate != nullptr)
                return *candidate;
        }
        return root();
    }
    void act()
    {
        QTimer rescue; // a drag, or a menu of the toolkit's own, runs its own loop until somebody ends it
        QObject::connect(&rescue, &QTimer::timeout, &root(), [this] {
            QWidget *popup = QApplication::activePopupWidget();
            QTest::keyClick(popup != nullptr ? popup->windowHandle() : root().windowHandle(), Qt::Key_Escape);
        });
        rescue.start(5);
        QWidget &window = top();
        QApplication::setActiveWindow(window.window());
        const QPoint place(below(window.width()), below(window.height()));
        QWidget *under = window.childAt(place);
        QWidget &target = under != nullptr ? *under : window;
        const QPoint inTarget = target.mapFrom(&window, place);
        switch (below(12)) {
        case 0:
        case 1:
        case 2:
            QTest::mouseClick(&target, Qt::LeftButton, m_modifiers[size_t(below(4))], inTarget);
            break;
        case 3:
            QTest::mouseDClick(&target, Qt::LeftButton, {}, inTarget);
            break;
        case 4: {
            QContextMenuEvent event(QContextMenuEvent::Mouse, inTarget, target.mapToGlobal(inTarget));
            QApplication::sendEvent(&target, &event);
            break;
        }
        case 5:
            dragIn(target, inTarget);
            break;
        case 6:
            root().resize(300 + below(1500), 200 + below(900));
            break;
        case 7:
            m_settings.set(u"org.freedesktop.appearance/color-scheme"_s, uint(below(3)));
            m_settings.set(u"org.freedesktop.appearance/contrast"_s, uint(below(2)));
            break;
        case 8:
            chooseInMenuBar();
            break;
        default:
            pressAKey(window);
        }
    }
    void dragIn(QWidget &target, const QPoint &from)
    {
        const QPoint to(below(target.width()), below(target.height()));
        QTest::mousePress(&target, Qt::LeftButton, {}, from);
        QTest::mouseMove(&target, (from + to) / 2);
        QTest::mouseMove(&target, to);
        QTest::mouseRelease(&target, Qt::LeftButton, {}, to);
    }
    void chooseInMenuBar()
    {
        if (&top() != &root())
            return;
        const QList<QAction *> menus = root().menuBar()->actions().mid(1); // not the one that quits
        const QList<QAction *> entries = menus[below(int(menus.size()))]->menu()->actions();
        entries[below(int(entries.size()))]->trigger();
    }
    void pressAKey(QWidget &window)
    {
        static constexpr std::array keys{Qt::Key_Return, Qt::Key_Escape, Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Up,
            Qt::Key_Down, Qt::Key_Left, Qt::Key_Right, Qt::Key_Home, Qt::Key_End, Qt::Key_PageDown, Qt::Key_Space,
            Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_A, Qt::Key_E, Qt::Key_Z, Qt::Key_C, Qt::Key_V, Qt::Key_F};
        QWidget *focus = QApplication::focusWidget();
        QWidget &target = focus != nullptr && !QApplication::activePopupWidget() ? *focus : window;
        const Qt::KeyboardModifiers modifiers = m_modifiers[size_t(below(4))];
        QTest::keyClick(&target, keys[size_t(below(int(keys.size())))], modifiers);
    }

    void checkTheFile() const
    {
        library.queue->read([](Database &database) {
            QHash<QUuid, qsizetype> lengths;
            for (const Document &document : Document::all().fetchAll(database))
                lengths.insert(document.id, document.text.size());
            QHash<QUuid, std::optional<QUuid>> parents;
            for (const Code &code : Code::all().fetchAll(database))
                parents.insert(code.id, code.parentID);
            for (const Coding &coding : Coding::all().fetchAll(database)) {
                EXPECT_TRUE(parents.contains(coding.codeID));
                EXPECT_GT(coding.length, 0);
                EXPECT_GE(coding.start, 0);
                EXPECT_LE(coding.start + coding.length, lengths.value(coding.documentID));
            }
            for (auto code = parents.cbegin(); code != parents.cend(); ++code) {
                std::optional<QUuid> above = code.value();
                for (qsizetype level = 0; above && level <= parents.size(); ++level) {
                    ASSERT_TRUE(parents.contains(*above));
                    above = parents.value(*above);
                }
                EXPECT_FALSE(above.has_value()) << "a cycle of codes";
            }
        });
    }
    /// What the lists and the reader show, row by row.
    static QStringList shownBy(const RootView &window)
    {
        QStringList rows;
        for (const QString &name : {u"sidebarList"_s, u"documentList"_s}) {
            const auto *list = window.findChild<QAbstractItemView *>(name);
            for (int row = 0; list->isVisible() && row < list->model()->rowCount(); ++row)
                rows.append(list->model()->index(row, 0).data(Qt::AccessibleTextRole).toString());
        }
        const auto *text = window.findChild<CodingTextView *>();
        rows.append(text->isVisible() ? text->text() : QString());
        return rows;
    }

private:
    QTemporaryDir m_folder;
    std::mt19937 m_random{GetParam()};
    static constexpr std::array<Qt::KeyboardModifiers, 4> m_modifiers{
        Qt::NoModifier, Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier};
};

} // namespace

TEST_P(Monkey, LeavesTheLibrarySoundAndTheWindowTrue)
{
    const int events = std::max(1'000, qEnvironmentVariableIntValue("VORN_MONKEY_EVENTS"));
    prepare();
    for (int number = 0; number < events && !HasFatalFailure(); ++number) {
        act();
        if (number % 10 == 0)
            QApplication::processEvents();
        if (!root().isVisible())
            root().show();
        if (number % 250 == 0)
            checkTheFile();
    }
    for (int each = 0; each < 20; ++each) // closes what is open
        QTest::keyClick(&top(), Qt::Key_Escape);
    QApplication::processEvents();
    checkTheFile();
    RootView anew(library.store);
    anew.show();
    QApplication::processEvents();
    EXPECT_EQ(shownBy(root()), shownBy(anew));
}

INSTANTIATE_TEST_SUITE_P(Seeds, Monkey, testing::Values(1U, 2U, 3U, 4U));
