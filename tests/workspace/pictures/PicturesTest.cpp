#include "Scene.h"

#include "kit/theme/Roles.h"
#include "kit/theme/Symbols.h"
#include "workspace/ImportProgress.h"

#include <QDragMoveEvent>
#include <QFile>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>

using namespace Qt::StringLiterals;

namespace {

const QString sidebar = u"sidebarList"_s;
const QString documents = u"documentList"_s;
const QString toolsCode = u"Tools & friction"_s;

// What a user sees, and how it comes about.

void firstStart(Scene &scene)
{
    scene.open();
    scene.draw();
}

void document(Scene &scene)
{
    scene.clickRow(documents, u"Field notes"_s);
    scene.hoverRow(documents, u"Interview"_s);
    scene.draw();
}

/// The caret and the ring in the text's own column, too.
void highContrast(Scene &scene)
{
    scene.setContrast(true);
    scene.hoverRow(sidebar, toolsCode);
    scene.draw(&scene.column(0));
    scene.draw(&scene.column(1));
    scene.select(u"unwritten rule"_s);
    scene.widget(u"addCode"_s).setFocus(Qt::TabFocusReason);
    scene.draw(&scene.column(2));
}

/// And the hint for those who haven't coded anything yet.
void banner(Scene &scene)
{
    scene.library.store.codingHintDismissed().set(false);
    for (const Coding &coding : scene.library.storedCodings())
        scene.library.store.removeCoding(coding);
    scene.clickRow(documents, u"访谈记录"_s);
    scene.library.store.statusMessage().set(u"Sample content loaded — click a code in the sidebar."_s);
    QApplication::processEvents();
    scene.draw();
}

/// The picture in the README.
void codePicker(Scene &scene)
{
    scene.clickRow(documents, u"Interview"_s);
    scene.select(u"what changed things was deciding *why* I wanted the time back"_s);
    scene.click(scene.widget(u"addCode"_s));
    scene.type(u"at"_s);
    scene.draw();
}

void excerpts(Scene &scene)
{
    scene.clickRow(sidebar, toolsCode);
    scene.clickRow(u"excerptList"_s, u"the long table is for silence"_s);
    scene.hoverRow(u"excerptList"_s, u"最烦的"_s);
    scene.draw();
}

void runQuery(Scene &scene, QuerySpec::Mode mode, const QStringList &codes, const QString &filter = {})
{
    QuerySpec spec{.codeIDs = {}, .mode = mode, .textFilter = filter};
    for (const QString &name : codes)
        spec.codeIDs.append(scene.library.code(name).id);
    scene.library.store.runQuery(spec);
    QApplication::processEvents();
}

void analysis(Scene &scene)
{
    runQuery(scene, QuerySpec::Mode::any, {toolsCode, u"Environment matters"_s});
    scene.clickRow(u"resultList"_s, u"What they need is a plan."_s);
    scene.draw(&scene.column(1));
    scene.library.store.runWordFrequency(WordFrequency::AllDocuments{}, 3, true, 50);
    scene.hoverRow(u"termList"_s, u"phone"_s);
    scene.draw(&scene.column(1));
    scene.clickRow(u"termList"_s, u"phone"_s);
    scene.clickRow(u"occurrenceList"_s, u"Interview"_s);
    scene.draw(&scene.column(1));
    scene.draw(&scene.column(2));
}

void findBar(Scene &scene)
{
    scene.press(Qt::Key_F, Qt::ControlModifier);
    scene.type(u"the long table"_s);
    scene.press(Qt::Key_Return);
    scene.draw(&scene.column(2));
}

void querySheet(Scene &scene)
{
    scene.library.store.showQuerySheet().set(true);
    scene.draw(&scene.top());
    scene.clickRow(u"codeChoices"_s, toolsCode);
    scene.clickRow(u"codeChoices"_s, u"Attention habits"_s);
    scene.hoverRow(u"codeChoices"_s, u"Environment matters"_s);
    scene.draw(&scene.top());
}

void exportSheet(Scene &scene)
{
    scene.clickRow(sidebar, toolsCode);
    scene.library.store.showExportSheet().set(true);
    scene.draw(&scene.top());
    scene.press(Qt::Key_Tab);
    scene.press(Qt::Key_Right);
    scene.hover(scene.widget(u"export"_s));
    scene.draw(&scene.top());
}

void pasteSheet(Scene &scene)
{
    scene.library.store.showPasteSheet().set(true);
    scene.draw(&scene.top());
    scene.click(scene.widget(u"pasteText"_s));
    scene.type(u"Day 4 - Rain. The sofa stayed empty until noon; everyone who had a call took it standing."_s);
    scene.draw(&scene.top());
}

/// Each stop of the keyboard, with its ring.
void wordFrequencySheet(Scene &scene)
{
    scene.library.store.showWordFreqSheet().set(true);
    scene.draw(&scene.top());
    scene.widget(u"scopeKind"_s).setFocus(Qt::TabFocusReason);
    scene.press(Qt::Key_Right);
    scene.press(Qt::Key_Tab);
    scene.press(Qt::Key_Space);
    scene.draw(&scene.top());
    scene.press(Qt::Key_Escape);
    for (int stop = 0; stop < 4; ++stop) {
        scene.draw(&scene.top());
        scene.press(Qt::Key_Tab);
    }
    scene.click(scene.widget(u"ignoreStopwords"_s));
    scene.draw(&scene.top());
}

void dialogs(Scene &scene)
{
    const auto drawAfter = [&](const QString &row, const QStringList &path) {
        scene.clickRow(sidebar, row, Qt::RightButton);
        scene.goTo(path);
        scene.press(Qt::Key_Return);
        scene.draw(&scene.top());
        scene.press(Qt::Key_Escape);
    };
    drawAfter(toolsCode, {u"Delete…"_s});
    drawAfter(toolsCode, {u"Merge Into"_s, u"Attention habits"_s});
    drawAfter(u"Untitled Study"_s, {u"Rename Project…"_s});
    scene.clickRow(sidebar, u"New Project…"_s);
    scene.draw(&scene.top());
}

void errorOverSheet(Scene &scene)
{
    scene.library.store.showExportSheet().set(true);
    scene.library.store.lastError().set(u"Export failed: Permission denied"_s);
    scene.draw();
}

void codeMenu(Scene &scene)
{
    scene.clickRow(sidebar, toolsCode, Qt::RightButton);
    scene.goTo({u"Color"_s, u"Pink"_s});
    scene.draw();
}

void menus(Scene &scene)
{
    scene.clickRow(documents, u"Field notes"_s, Qt::RightButton);
    scene.draw(&scene.top());
    scene.press(Qt::Key_Escape);
    scene.select(u"There's an unwritten rule here: the corner sofa"_s);
    const QPoint place = scene.text().characterRectangle(scene.text().text().indexOf(u"corner"_s)).center();
    scene.click(*scene.text().viewport(), place, Qt::RightButton);
    scene.draw(&scene.top());
    scene.press(Qt::Key_Escape);
    QMenuBar &bar = *scene.root().menuBar();
    for (QAction *entry : bar.actions()) {
        scene.click(bar, bar.actionGeometry(entry).center());
        scene.press(Qt::Key_Down);
        scene.draw(&scene.top());
        scene.press(Qt::Key_Escape);
    }
}

void emptyStates(Scene &scene)
{
    LibraryStore &store = scene.library.store;
    const auto drawMiddle = [&] {
        QApplication::processEvents();
        scene.draw(&scene.column(1));
    };
    store.searchText().set(u"codebook"_s);
    drawMiddle();
    const Code empty = scene.library.makeCodes({u"Silence"_s}).first();
    store.sidebarSelection().set(CodeSelection{empty.id});
    drawMiddle();
    store.deleteCode(empty);
    store.sidebarSelection().set(CodeSelection{empty.id});
    drawMiddle();
    runQuery(scene, QuerySpec::Mode::all, {toolsCode, u"Attention habits"_s}, u"nowhere"_s);
    drawMiddle();
    store.runWordFrequency(WordFrequency::InCode{empty.id}, 3, true, 50);
    drawMiddle();
    store.selectWordFreqTerm(u"nowhere"_s);
    drawMiddle();
    while (!store.codes()->isEmpty())
        store.deleteCode(Code(store.codes()->first()));
    scene.draw(&scene.column(0));
    scene.select(u"Three regulars"_s);
    scene.click(scene.widget(u"addCode"_s));
    scene.draw(&scene.widget(u"codePicker"_s));
    scene.press(Qt::Key_Escape);
    store.selectedDocumentID().set({});
    QApplication::processEvents();
    scene.draw(&scene.column(2));
}

/// Of the sidebar and the memos: what is written in place, dragged, and nested.
void editing(Scene &scene)
{
    scene.clickRow(sidebar, u"New Code…"_s);
    scene.draw(&scene.column(0));
    scene.type(u"Rhythm"_s);
    scene.press(Qt::Key_Return);
    scene.clickRow(sidebar, u"Attention habits"_s, Qt::RightButton);
    scene.goTo({u"Rename"_s});
    scene.press(Qt::Key_Return);
    scene.draw(&scene.column(0));
    scene.press(Qt::Key_Escape);
    scene.library.store.nestCode(scene.library.code(u"Rhythm"_s).id, scene.library.code(toolsCode).id);
    QApplication::processEvents();
    QMimeData data;
    data.setText(scene.library.code(u"Rhythm"_s).id.toString(QUuid::WithoutBraces));
    const QPoint place = scene.row(sidebar, u"Environment matters"_s);
    const auto &list = scene.widget(sidebar);
    QWidget *viewport = list.findChild<QWidget *>(u"qt_scrollarea_viewport"_s);
    QDragEnterEvent enter(place, Qt::MoveAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(viewport, &enter);
    QDragMoveEvent move(place, Qt::MoveAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(viewport, &move);
    scene.draw(&scene.column(0));
    scene.clickRow(sidebar, u"Attention habits"_s);
    scene.draw(&scene.column(1));
    scene.press(Qt::Key_Tab);
    scene.press(Qt::Key_Tab);
    scene.press(Qt::Key_Space);
    scene.type(u"What keeps it."_s);
    scene.draw(&scene.column(1));
}

/// A small window, long names, more codes and text than it shows; then an import.
void crowded(Scene &scene)
{
    Code parent = scene.library.code(u"Environment matters"_s);
    for (int number = 0; number < 30; ++number) {
        const Code code = scene.library.makeCodes({u"Code number %1 has a long name"_s.arg(number)}).first();
        if (number < 6)
            scene.library.store.nestCode(code.id, parent.id);
        parent = code;
    }
    scene.library.paste(
        u"A title that is longer than any column is wide "_s.repeated(3), u"A long line. "_s.repeated(900));
    scene.root().resize(900, 600);
    scene.library.store.selectedDocumentID().set(scene.library.store.documents()->first().id);
    scene.click(*scene.text().viewport());
    scene.press(Qt::Key_PageDown);
    scene.hover(*scene.text().viewport()); // its scroll bar stays
    scene.draw();
    ImportProgress progress(scene.root(), std::chrono::milliseconds(0));
    EXPECT_TRUE(progress.mayImport({.number = 3, .count = 7, .name = u"interview-03.docx"_s}));
    scene.draw();
}

/// Buttons and fields in states that the window shows only for moments.
void controls(Scene &scene)
{
    constexpr std::array roles{ButtonRole::prominent, ButtonRole::bordered, ButtonRole::destructive, ButtonRole::plain};
    for (const ButtonRole role : roles) {
        QWidget page(&scene.root());
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
        scene.hover(*page.findChild<QPushButton *>(u"hover"_s));
        scene.draw(&page);
    }
}

struct State {
    const char *name;
    void (*show)(Scene &);
};

const QString folder = QStringLiteral(VORN_FIXTURES "/pictures/");

/// VORN_PICTURES=anew replaces the pictures to compare with; VORN_SCREENSHOTS names a folder for pictures of full size.
class Pictures : public testing::TestWithParam<State> {
protected:
    static void compare(const QString &look, const QImage &seen)
    {
        const QString name = QString::fromLatin1(GetParam().name) + u'-' + look;
        if (qEnvironmentVariableIsSet("VORN_SCREENSHOTS")) {
            EXPECT_TRUE(seen.save(qEnvironmentVariable("VORN_SCREENSHOTS") + u'/' + name + u".png"_s));
        }
        const QString path = folder + name + u".png"_s;
        if (qEnvironmentVariable("VORN_PICTURES") == u"anew") {
            EXPECT_TRUE(Picture::quarter(seen).save(path, "PNG", 0));
        }
        const QString seenPath = folder + name + u"-seen.png"_s;
        QFile::remove(seenPath);
        const QList<QRect> differences = Picture::differences(seen, QImage(path));
        if (differences.isEmpty())
            return;
        EXPECT_TRUE(Picture::marked(seen, differences).save(seenPath));
        ADD_FAILURE() << differences.size() << " parts don't look as in " << path.toStdString() << ": see "
                      << seenPath.toStdString() << ". If they are to look so, run tools/screenshots.";
    }
};

} // namespace

TEST_P(Pictures, LookAsBefore)
{
    Scene scene;
    if (GetParam().show != firstStart)
        scene.openSample();
    GetParam().show(scene);
    ASSERT_FALSE(scene.light().isEmpty());
    compare(u"light"_s, Picture::joined(scene.light()));
    compare(u"dark"_s, Picture::joined(scene.dark()));
}

INSTANTIATE_TEST_SUITE_P(States, Pictures,
    testing::Values(State{"first_start", firstStart}, State{"document", document}, State{"high_contrast", highContrast},
        State{"banner", banner}, State{"code_picker", codePicker}, State{"excerpts", excerpts},
        State{"analysis", analysis}, State{"find_bar", findBar}, State{"query_sheet", querySheet},
        State{"export_sheet", exportSheet}, State{"paste_sheet", pasteSheet},
        State{"word_frequency_sheet", wordFrequencySheet}, State{"dialogs", dialogs},
        State{"error_over_sheet", errorOverSheet}, State{"code_menu", codeMenu}, State{"menus", menus},
        State{"empty_states", emptyStates}, State{"editing", editing}, State{"crowded", crowded},
        State{"controls", controls}),
    rowName);
