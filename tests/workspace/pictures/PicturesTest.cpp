#include "Picture.h"
#include "kit/theme/Roles.h"
#include "kit/theme/ScrollActivity.h"
#include "kit/theme/Symbols.h"
#include "workspace/ImportProgress.h"
#include "workspace/ShownWindow.h"
#include "workspace/StatusBanner.h"

#include <QDragMoveEvent>
#include <QFile>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QScrollBar>
#include <QSplitter>
#include <QWindow>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

class Pictures;

/// What a user sees, and how it comes about.
struct State {
    const char *name;
    void (Pictures::*show)();
};

const QString sidebar = u"sidebarList"_s;
const QString documents = u"documentList"_s;
const QString toolsCode = u"Tools & friction"_s;

/// The window over the sample content, used by mouse and keys and drawn in both looks.
/// VORN_PICTURES=anew replaces the pictures to compare with; VORN_SCREENSHOTS names a folder for pictures of full size.
class Pictures : public ShownWindow, public testing::WithParamInterface<State> {
public:
    void firstStart()
    {
        open();
        draw();
    }

    void document()
    {
        clickRow(documents, u"Field notes"_s);
        hoverRow(documents, u"Interview"_s);
        draw();
    }

    /// The caret and the ring in the text's own column, too.
    void highContrast()
    {
        m_settings.set(u"org.freedesktop.appearance/contrast"_s, 1U);
        hoverRow(sidebar, toolsCode);
        draw(&column(0));
        draw(&column(1));
        select(u"unwritten rule"_s);
        find(u"addCode"_s).setFocus(Qt::TabFocusReason);
        draw(&column(2));
    }

    /// And the hint for those who haven't coded anything yet.
    void banner()
    {
        library.store.codingHintDismissed().set(false);
        for (const Coding &coding : library.storedCodings())
            library.store.removeCoding(coding);
        clickRow(documents, u"访谈记录"_s);
        library.store.statusMessage().set(u"Sample content loaded — click a code in the sidebar."_s);
        settle();
        draw();
    }

    /// The picture in the README.
    void codePicker()
    {
        clickRow(documents, u"Interview"_s);
        select(u"what changed things was deciding *why* I wanted the time back"_s);
        click(u"addCode"_s);
        type(u"at"_s);
        draw();
    }

    void excerpts()
    {
        clickRow(sidebar, toolsCode);
        clickRow(u"excerptList"_s, u"the long table is for silence"_s);
        hoverRow(u"excerptList"_s, u"最烦的"_s);
        draw();
    }

    void runQuery(QuerySpec::Mode mode, const QStringList &codes, const QString &filter = {})
    {
        QuerySpec spec{.codeIDs = {}, .mode = mode, .textFilter = filter};
        for (const QString &name : codes)
            spec.codeIDs.append(library.code(name).id);
        library.store.runQuery(spec);
        settle();
    }

    void analysis()
    {
        runQuery(QuerySpec::Mode::any, {toolsCode, u"Environment matters"_s});
        clickRow(u"resultList"_s, u"What they need is a plan."_s);
        draw(&column(1));
        library.store.runWordFrequency(WordFrequency::AllDocuments{}, 3, true, 50);
        hoverRow(u"termList"_s, u"phone"_s);
        draw(&column(1));
        clickRow(u"termList"_s, u"phone"_s);
        clickRow(u"occurrenceList"_s, u"Interview"_s);
        draw(&column(1));
        draw(&column(2));
    }

    void findBar()
    {
        press(Qt::Key_F, Qt::ControlModifier);
        type(u"the long table"_s);
        press(Qt::Key_Return);
        draw(&column(2));
    }

    void querySheet()
    {
        library.store.showQuerySheet().set(true);
        draw(&top());
        clickRow(u"codeChoices"_s, toolsCode);
        clickRow(u"codeChoices"_s, u"Attention habits"_s);
        hoverRow(u"codeChoices"_s, u"Environment matters"_s);
        draw(&top());
    }

    void exportSheet()
    {
        clickRow(sidebar, toolsCode);
        library.store.showExportSheet().set(true);
        draw(&top());
        press(Qt::Key_Tab);
        press(Qt::Key_Right);
        hover(find(u"export"_s));
        draw(&top());
    }

    void pasteSheet()
    {
        library.store.showPasteSheet().set(true);
        draw(&top());
        click(u"pasteText"_s);
        type(u"Day 4 - Rain. The sofa stayed empty until noon; everyone who had a call took it standing."_s);
        draw(&top());
    }

    /// Each stop of the keyboard, with its ring.
    void wordFrequencySheet()
    {
        library.store.showWordFreqSheet().set(true);
        draw(&top());
        find(u"scopeKind"_s).setFocus(Qt::TabFocusReason);
        press(Qt::Key_Right);
        press(Qt::Key_Tab);
        press(Qt::Key_Space);
        draw(&top());
        press(Qt::Key_Escape);
        for (int stop = 0; stop < 4; ++stop) {
            draw(&top());
            press(Qt::Key_Tab);
        }
        click(u"ignoreStopwords"_s);
        draw(&top());
    }

    void dialogs()
    {
        const auto drawAfter = [&](const QString &row, const QStringList &path) {
            clickRow(sidebar, row, Qt::RightButton);
            goTo(path);
            press(Qt::Key_Return);
            draw(&top());
            press(Qt::Key_Escape);
        };
        drawAfter(toolsCode, {u"Delete…"_s});
        drawAfter(toolsCode, {u"Merge Into"_s, u"Attention habits"_s});
        drawAfter(u"Untitled Study"_s, {u"Rename Project…"_s});
        clickRow(sidebar, u"New Project…"_s);
        draw(&top());
    }

    void errorOverSheet()
    {
        library.store.showExportSheet().set(true);
        library.store.lastError().set(u"Export failed: Permission denied"_s);
        draw();
    }

    void codeMenu()
    {
        clickRow(sidebar, toolsCode, Qt::RightButton);
        goTo({u"Color"_s, u"Pink"_s});
        draw();
    }

    void menus()
    {
        clickRow(documents, u"Field notes"_s, Qt::RightButton);
        draw(&top());
        press(Qt::Key_Escape);
        select(u"There's an unwritten rule here: the corner sofa"_s);
        const QPoint place = text().characterRectangle(text().text().indexOf(u"corner"_s)).center();
        click(*text().viewport(), place, Qt::RightButton);
        draw(&top());
        press(Qt::Key_Escape);
        QMenuBar &bar = *root().menuBar();
        for (QAction *entry : bar.actions()) {
            click(bar, bar.actionGeometry(entry).center());
            press(Qt::Key_Down);
            draw(&top());
            press(Qt::Key_Escape);
        }
    }

    void emptyStates()
    {
        LibraryStore &store = library.store;
        const auto drawMiddle = [this] {
            settle();
            draw(&column(1));
        };
        store.searchText().set(u"codebook"_s);
        drawMiddle();
        const Code empty = library.makeCodes({u"Silence"_s}).first();
        store.sidebarSelection().set(CodeSelection{empty.id});
        drawMiddle();
        store.deleteCode(empty);
        store.sidebarSelection().set(CodeSelection{empty.id});
        drawMiddle();
        runQuery(QuerySpec::Mode::all, {toolsCode, u"Attention habits"_s}, u"nowhere"_s);
        drawMiddle();
        store.runWordFrequency(WordFrequency::InCode{empty.id}, 3, true, 50);
        drawMiddle();
        store.selectWordFreqTerm(u"nowhere"_s);
        drawMiddle();
        while (!store.codes()->isEmpty())
            store.deleteCode(Code(store.codes()->first()));
        draw(&column(0));
        select(u"Three regulars"_s);
        click(u"addCode"_s);
        draw(&find(u"codePicker"_s));
        press(Qt::Key_Escape);
        store.selectedDocumentID().set({});
        settle();
        draw(&column(2));
    }

    /// Of the sidebar and the memos: what is written in place, dragged, and nested.
    void editing()
    {
        clickRow(sidebar, u"New Code…"_s);
        draw(&column(0));
        type(u"Rhythm"_s);
        press(Qt::Key_Return);
        clickRow(sidebar, u"Attention habits"_s, Qt::RightButton);
        goTo({u"Rename"_s});
        press(Qt::Key_Return);
        draw(&column(0));
        press(Qt::Key_Escape);
        library.store.nestCode(library.code(u"Rhythm"_s).id, library.code(toolsCode).id);
        settle();
        QMimeData data;
        data.setText(library.code(u"Rhythm"_s).id.toString(QUuid::WithoutBraces));
        const QPoint place = row(sidebar, u"Environment matters"_s);
        QWidget *viewport = find<QAbstractItemView>(sidebar).viewport();
        QDragEnterEvent enter(place, Qt::MoveAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(viewport, &enter);
        QDragMoveEvent move(place, Qt::MoveAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(viewport, &move);
        draw(&column(0));
        QDragLeaveEvent leave; // without it Qt would go on sending drags to this list when it is gone
        QApplication::sendEvent(viewport, &leave);
        clickRow(sidebar, u"Attention habits"_s);
        draw(&column(1));
        press(Qt::Key_Tab);
        press(Qt::Key_Tab);
        press(Qt::Key_Space);
        type(u"What keeps it."_s);
        draw(&column(1));
    }

    /// A small window, long names, more codes and text than it shows; then an import.
    void crowded()
    {
        Code parent = library.code(u"Environment matters"_s);
        for (int number = 0; number < 30; ++number) {
            const Code code = library.makeCodes({u"Code number %1 has a long name"_s.arg(number)}).first();
            if (number < 6)
                library.store.nestCode(code.id, parent.id);
            parent = code;
        }
        library.paste(
            u"A title that is longer than any column is wide "_s.repeated(3), u"A long line. "_s.repeated(900));
        root().resize(900, 600);
        library.store.selectedDocumentID().set(library.store.documents()->first().id);
        click(*text().viewport());
        press(Qt::Key_PageDown);
        hover(*text().viewport()); // its scroll bar stays
        draw();
        ImportProgress progress(root(), std::chrono::milliseconds(0));
        EXPECT_TRUE(progress.mayImport({.number = 3, .count = 7, .name = u"interview-03.docx"_s}));
        draw();
    }

    /// Buttons and fields in states that the window shows only for moments.
    void controls()
    {
        constexpr std::array roles{
            ButtonRole::prominent, ButtonRole::bordered, ButtonRole::destructive, ButtonRole::plain};
        for (const ButtonRole role : roles) {
            QWidget page(&root());
            auto *row = new QHBoxLayout(&page);
            for (const QString &state : {u"down"_s, u"disabled"_s, u"focus"_s, u"hover"_s}) {
                auto *button = new QPushButton(Symbols::icon(u"plus"_s), state, &page);
                button->setObjectName(state);
                setRole(*button, role, state == u"focus" ? ButtonSize::small : ButtonSize::regular);
                row->addWidget(button);
            }
            auto *field = new QLineEdit(u"Written"_s, &page);
            field->setEnabled(false);
            row->addWidget(field);
            page.setAutoFillBackground(true);
            page.resize(560, 60);
            page.show();
            page.findChild<QPushButton *>(u"down"_s)->setDown(true);
            page.findChild<QPushButton *>(u"disabled"_s)->setEnabled(false);
            page.findChild<QPushButton *>(u"focus"_s)->setFocus(Qt::TabFocusReason);
            hover(*page.findChild<QPushButton *>(u"hover"_s));
            draw(&page);
        }
    }

protected:
    void openSample()
    {
        library.store.loadSampleContent();
        open();
        const auto never = [](std::chrono::milliseconds, const std::function<void()> &) {};
        root().banner().setRunLater(never); // flashes and banners stay
        text().setRunLater(never);
        library.store.statusMessage().set({});
        library.store.codingHintDismissed().set(true);
        library.store.selectedDocumentID().set(library.document(u"Field notes — week 1"_s).id);
        settle();
    }
    /// Of the scroll bars, which fade some time after scrolling, a picture shows those alone that lie under the mouse.
    void waitForScrollBars() const
    {
        const QList<QScrollBar *> bars = root().findChildren<QScrollBar *>();
        EXPECT_TRUE(QTest::qWaitFor([&bars] {
            return std::ranges::none_of(bars, [](const QScrollBar *bar) {
                return ScrollActivity::isActive(*bar) && bar->isVisible()
                    && !bar->parentWidget()->parentWidget()->underMouse();
            });
        }));
    }
    /// Draws all that is to be seen, or one part of the window, beside what was drawn before.
    void draw(const QWidget *part = nullptr)
    {
        waitForScrollBars();
        for (const uint scheme : {1U, 2U}) {
            m_settings.set(u"org.freedesktop.appearance/color-scheme"_s, scheme);
            for (int round = 0; round < 3; ++round) // one layout asks the one around it
                QApplication::processEvents();
            (scheme == 1 ? m_dark : m_light).append(Picture::of(root(), part));
        }
    }
    /// The sidebar, the middle one or the reader's.
    [[nodiscard]] const QWidget &column(int number) const { return *find<QSplitter>().widget(number); }
    static void hover(const QWidget &widget, const QPoint &place)
    {
        QTest::mouseMove(widget.window()->windowHandle(), widget.mapTo(widget.window(), place));
        QApplication::processEvents();
    }
    static void hover(const QWidget &widget) { hover(widget, widget.rect().center()); }
    void hoverRow(const QString &list, const QString &text) const
    {
        hover(*find<QAbstractItemView>(list).viewport(), row(list, text));
    }
    /// Follows the titles through the menu that is open, and stays on the last one.
    void goTo(const QStringList &path) const
    {
        for (const QString &title : path) {
            auto &menu = static_cast<QMenu &>(top());
            menu.setActiveAction(&entry(menu, title));
            if (title != path.last())
                press(Qt::Key_Right);
        }
    }
    static void compare(const QString &look, const QList<QImage> &drawn)
    {
        const QImage seen = Picture::joined(drawn);
        const QString name = QString::fromLatin1(GetParam().name) + u'-' + look;
        if (qEnvironmentVariableIsSet("VORN_SCREENSHOTS")) {
            EXPECT_TRUE(seen.save(qEnvironmentVariable("VORN_SCREENSHOTS") + u'/' + name + u".png"_s));
        }
        const QString path = QStringLiteral(VORN_FIXTURES "/pictures/") + name;
        if (qEnvironmentVariable("VORN_PICTURES") == u"anew") {
            EXPECT_TRUE(Picture::quarter(seen).save(path + u".png"_s, "PNG", 0));
        }
        const QList<QRect> differences = Picture::differences(seen, QImage(path + u".png"_s));
        QFile::remove(path + u"-seen.png"_s);
        if (differences.isEmpty())
            return;
        EXPECT_TRUE(Picture::marked(seen, differences).save(path + u"-seen.png"_s));
        ADD_FAILURE() << differences.size() << " parts don't look as in " << path.toStdString()
                      << ".png: see -seen.png. If they are to look so, run tools/screenshots.";
    }

    QList<QImage> m_light;
    QList<QImage> m_dark;
};

} // namespace

TEST_P(Pictures, LookAsBefore)
{
    QApplication::setCursorFlashTime(0); // the caret is always seen
    if (GetParam().show != &Pictures::firstStart)
        openSample();
    (this->*GetParam().show)();
    ASSERT_FALSE(m_light.isEmpty());
    compare(u"light"_s, m_light);
    compare(u"dark"_s, m_dark);
}

INSTANTIATE_TEST_SUITE_P(States, Pictures,
    testing::Values(State{"first_start", &Pictures::firstStart}, State{"document", &Pictures::document},
        State{"high_contrast", &Pictures::highContrast}, State{"banner", &Pictures::banner},
        State{"code_picker", &Pictures::codePicker}, State{"excerpts", &Pictures::excerpts},
        State{"analysis", &Pictures::analysis}, State{"find_bar", &Pictures::findBar},
        State{"query_sheet", &Pictures::querySheet}, State{"export_sheet", &Pictures::exportSheet},
        State{"paste_sheet", &Pictures::pasteSheet}, State{"word_frequency_sheet", &Pictures::wordFrequencySheet},
        State{"dialogs", &Pictures::dialogs}, State{"error_over_sheet", &Pictures::errorOverSheet},
        State{"code_menu", &Pictures::codeMenu}, State{"menus", &Pictures::menus},
        State{"empty_states", &Pictures::emptyStates}, State{"editing", &Pictures::editing},
        State{"crowded", &Pictures::crowded}, State{"controls", &Pictures::controls}),
    rowName);
