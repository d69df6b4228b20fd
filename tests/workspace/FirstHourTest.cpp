#include "ShownWindow.h"
#include "records/database/Request.h"
#include "workspace/reader/SelectionBar.h"

#include <QClipboard>
#include <QListView>
#include <QMenuBar>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

/// Does with mouse and keys alone what a researcher does.
class FirstHour : public ShownWindow {
protected:
    /// What takes the input now, as the window system would have it.
    [[nodiscard]] QWidget &top() const
    {
        QApplication::processEvents();
        QWidget *sheet = QApplication::activeModalWidget();
        QWidget &result = sheet != nullptr ? *sheet : root();
        QApplication::setActiveWindow(&result);
        return result;
    }
    void press(int key, Qt::KeyboardModifiers modifiers = {}) const
    {
        (void)top();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key(key), modifiers);
        (void)top();
    }
    void type(const QString &text) const
    {
        (void)top();
        QTest::keyClicks(QApplication::focusWidget(), text);
    }
    void paste(const QString &text) const
    {
        QApplication::clipboard()->setText(text);
        press(Qt::Key_V, Qt::ControlModifier);
    }
    void click(const QString &widget) const
    {
        auto *found = top().findChild<QWidget *>(widget);
        ASSERT_NE(found, nullptr) << widget.toStdString();
        QTest::mouseClick(found, Qt::LeftButton);
        (void)top();
    }
    void clickButton(const QString &label) const
    {
        pressButton(top(), label);
        (void)top();
    }
    [[nodiscard]] QListView &list(const QString &name) const { return *top().findChild<QListView *>(name); }
    /// The middle of the first row whose text begins so.
    [[nodiscard]] QPoint place(QListView &list, const QString &row) const
    {
        const QModelIndexList found = list.model()->match(list.model()->index(0, 0), Qt::DisplayRole, row);
        if (found.isEmpty())
            throw std::runtime_error("no such row: " + row.toStdString());
        list.scrollTo(found.first());
        return list.visualRect(found.first()).center();
    }
    void clickRow(const QString &name, const QString &row) const
    {
        QListView &rows = list(name);
        QTest::mouseClick(rows.viewport(), Qt::LeftButton, {}, place(rows, row));
        (void)top();
    }
    void chooseInMenuBar(const QString &title, const QString &entry) const
    {
        QMenuBar &bar = *root().menuBar();
        for (QAction *action : bar.actions()) {
            if (action->text() != u'&' + title)
                continue;
            QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.actionGeometry(action).center());
            take(*action->menu(), {entry});
            (void)top();
            return;
        }
        FAIL() << "no such menu: " << title.toStdString();
    }
    void chooseForRow(const QString &name, const QString &row, const QStringList &path) const
    {
        QListView &rows = list(name);
        take(menuAt(rows, place(rows, row)), path);
        (void)top();
    }
    void read(const QString &title) const
    {
        clickRow(u"documentList"_s, title);
        ASSERT_EQ(text().text(), library.document(title).text);
    }
    void code(const QString &title, const QString &phrase, const QString &codeName) const
    {
        read(title);
        const qint64 start = text().text().indexOf(phrase);
        drag(start, start + phrase.size());
        QTest::mouseClick(&find<SelectionBar>().addButton(), Qt::LeftButton);
        type(codeName);
        press(Qt::Key_Return);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    /// "project / document | code | text" of every coding in the database, sorted.
    [[nodiscard]] QStringList stored() const
    {
        return library.queue->read([](Database &database) {
            QStringList lines;
            const auto projects = Project::all().fetchAll(database);
            const auto documents = Document::all().fetchAll(database);
            const auto codes = Code::all().fetchAll(database);
            for (const Coding &coding : Coding::all().fetchAll(database)) {
                const auto document = std::ranges::find(documents, coding.documentID, &Document::id);
                const auto code = std::ranges::find(codes, coding.codeID, &Code::id);
                const auto project = std::ranges::find(projects, document->projectID, &Project::id);
                lines.append(u"%1 / %2 | %3 | %4"_s.arg(
                    project->name, document->title, code->name, document->text.mid(coding.start, coding.length)));
            }
            lines.sort();
            return lines;
        });
    }
};

} // namespace

TEST_F(FirstHour, EverythingThatWasDoneIsInTheDatabase)
{
    const QTemporaryDir folder;
    const QString voices = u"Dr. Alex 👩‍🔬 said: “trust 😀 grows”.\nSecond line, trust."_s;
    open();
    clickButton(u"Load Sample Content"_s);
    chooseInMenuBar(u"Documents"_s, u"Paste New Document…"_s);
    click(u"pasteTitle"_s);
    type(u"Voices"_s);
    click(u"pasteText"_s);
    paste(voices);
    click(u"add"_s);
    ASSERT_EQ(library.document(u"Voices"_s).text, voices);

    code(u"Field notes — week 1"_s, u"Forty seconds later"_s, u"Time"_s);
    code(u"Voices"_s, u"👩‍🔬 said: “trust 😀"_s, u"Said"_s);
    code(u"访谈记录"_s + u" · 受访者 B（节选）"_s, u"注意力已经用完了"_s, u"attention HABITS"_s);
    chooseForRow(u"sidebarList"_s, u"Said"_s, {u"Nest Under"_s, u"Attention habits"_s});
    chooseForRow(u"sidebarList"_s, u"Said"_s, {u"Color"_s, u"Pink"_s});
    EXPECT_EQ(library.code(u"Said"_s).parentID, library.code(u"Attention habits"_s).id);

    read(u"Voices"_s);
    clickButton(u"Document memo…"_s);
    type(u"who speaks?"_s);
    clickRow(u"sidebarList"_s, u"Said"_s);
    clickButton(u"Code memo…"_s);
    type(u"what was said"_s);

    chooseInMenuBar(u"Analyze"_s, u"Compound Query…"_s);
    clickRow(u"codeChoices"_s, u"Said"_s);
    clickRow(u"codeChoices"_s, u"Time"_s);
    click(u"textFilter"_s);
    type(u"LATER"_s);
    press(Qt::Key_Return);
    ASSERT_EQ(library.store.queryResults()->size(), 1);
    clickRow(u"resultList"_s, u"Forty"_s);
    EXPECT_EQ(text().text(), library.document(u"Field notes — week 1"_s).text);

    chooseInMenuBar(u"Analyze"_s, u"Word Frequency…"_s);
    press(Qt::Key_Return);
    clickRow(u"termList"_s, u"trust"_s);
    EXPECT_EQ(library.store.wordFreqOccurrences()->size(), 2);
    clickRow(u"occurrenceList"_s, u""_s);
    EXPECT_EQ(text().text(), voices);

    const QString archive = folder.filePath(u"study.qdpx"_s);
    library.fileDialogs.pathToSave = archive;
    chooseInMenuBar(u"Documents"_s, u"Export REFI-QDA Project…"_s);

    clickRow(u"sidebarList"_s, u"New Project…"_s);
    type(u"Second"_s);
    press(Qt::Key_Return);
    ASSERT_EQ(library.store.documents()->size(), 0);
    library.fileDialogs.pathsToOpen = {archive};
    chooseInMenuBar(u"Documents"_s, u"Import REFI-QDA Project…"_s);
    ASSERT_EQ(library.store.documents()->size(), 5);

    clickRow(u"sidebarList"_s, u"Second"_s);
    click(u"documentSearch"_s);
    type(u"TRUST"_s);
    EXPECT_EQ(list(u"documentList"_s).model()->rowCount(), 1);
    chooseForRow(u"documentList"_s, u"Voices"_s, {u"Rename…"_s});
    press(Qt::Key_A, Qt::ControlModifier);
    type(u"Voices, again"_s);
    press(Qt::Key_Return);
    click(u"documentSearch"_s);
    press(Qt::Key_Escape);
    chooseForRow(u"documentList"_s, u"Field notes"_s, {u"Delete"_s});
    EXPECT_EQ(library.store.documents()->size(), 4);

    const QStringList passages = stored();
    const QString first = library.store.projects()->first().name == u"Second" ? library.store.projects()->last().name
                                                                              : library.store.projects()->first().name;
    const QStringList ofFirst = passages.filter(first + u" / "_s);
    EXPECT_EQ(ofFirst.size(), 8 + 3);
    EXPECT_EQ(passages.size(), 11 + 11 - ofFirst.filter(u"/ Field notes"_s).size());
    for (const QString &project : {first, u"Second"_s})
        EXPECT_TRUE(
            passages.contains(project + u" / 访谈记录 · 受访者 B（节选） | Attention habits | 注意力已经用完了"_s));
    EXPECT_TRUE(passages.contains(first + u" / Field notes — week 1 | Time | Forty seconds later"_s));
    EXPECT_TRUE(passages.contains(first + u" / Voices | Said | 👩‍🔬 said: “trust 😀"_s));
    EXPECT_TRUE(passages.contains(u"Second / Voices, again | Said | 👩‍🔬 said: “trust 😀"_s));
    EXPECT_EQ(library.document(u"Voices, again"_s).memo, u"who speaks?"_s);
    EXPECT_EQ(library.code(u"Said"_s).memo, u"what was said"_s);
    EXPECT_EQ(library.code(u"Said"_s).colorHex, u"#FF2D55"_s);
    EXPECT_EQ(library.code(u"Said"_s).parentID, library.code(u"Attention habits"_s).id);
    EXPECT_EQ(library.store.lastError().get(), std::nullopt);
}
