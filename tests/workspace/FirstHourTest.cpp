#include "ShownWindow.h"
#include "exchange/ExcerptExporter.h"
#include "workspace/reader/SelectionBar.h"

#include <QClipboard>
#include <QListView>
#include <QMenuBar>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

constexpr int documentsMenu = 2;
constexpr int analyzeMenu = 3;

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
    }
    void type(const QString &text) const
    {
        (void)top();
        QTest::keyClicks(QApplication::focusWidget(), text);
    }
    void click(const QString &widget) const
    {
        auto *found = top().findChild<QWidget *>(widget);
        ASSERT_NE(found, nullptr) << widget.toStdString();
        QTest::mouseClick(found, Qt::LeftButton);
    }
    void clickButton(const QString &label) const { pressButton(top(), label); }
    [[nodiscard]] QListView &list(const QString &name) const { return *top().findChild<QListView *>(name); }
    /// The middle of the first row whose text begins so.
    [[nodiscard]] QPoint place(const QString &name, const QString &row) const
    {
        QListView &rows = list(name);
        const QModelIndexList found = rows.model()->match(rows.model()->index(0, 0), Qt::DisplayRole, row);
        if (found.isEmpty())
            throw std::runtime_error("no such row: " + row.toStdString());
        rows.scrollTo(found.first());
        return rows.visualRect(found.first()).center();
    }
    void clickRow(const QString &name, const QString &row) const
    {
        QTest::mouseClick(list(name).viewport(), Qt::LeftButton, {}, place(name, row));
    }
    void chooseInMenuBar(int menu, const QString &entry) const
    {
        QMenuBar &bar = *root().menuBar();
        QAction *action = bar.actions().at(menu);
        QTest::mouseClick(&bar, Qt::LeftButton, {}, bar.actionGeometry(action).center());
        take(*action->menu(), {entry});
    }
    void chooseForRow(const QString &name, const QString &row, const QStringList &path) const
    {
        take(menuAt(list(name), place(name, row)), path);
    }
    void code(const QString &title, const QString &phrase, const QString &codeName) const
    {
        clickRow(u"documentList"_s, title);
        const qint64 start = text().text().indexOf(phrase);
        drag(start, start + phrase.size());
        QTest::mouseClick(&find<SelectionBar>().addButton(), Qt::LeftButton);
        type(codeName);
        press(Qt::Key_Return);
        settle();
    }
    /// "code | document | text" of every passage of the project, as a report would have it.
    [[nodiscard]] QStringList passages() const
    {
        QStringList lines;
        for (const ExportCodeGroup &group : library.store.exportGroups({})) {
            for (const ExcerptHit &hit : group.hits)
                lines.append(u"%1 | %2 | %3"_s.arg(group.code.name, hit.documentTitle, hit.snippet.toString()));
        }
        lines.sort();
        return lines;
    }
};

} // namespace

TEST_F(FirstHour, EverythingThatWasDoneIsThereAlsoAfterAnExchange)
{
    const QTemporaryDir folder;
    const QString voices = u"Dr. Alex 👩‍🔬 said: “trust 😀 grows”.\nSecond line, trust."_s;
    open();
    clickButton(u"Load Sample Content"_s);
    chooseInMenuBar(documentsMenu, u"Paste New Document…"_s);
    click(u"pasteTitle"_s);
    type(u"Voices"_s);
    click(u"pasteText"_s);
    QApplication::clipboard()->setText(voices);
    press(Qt::Key_V, Qt::ControlModifier);
    click(u"add"_s);
    ASSERT_EQ(library.document(u"Voices"_s).text, voices);

    code(u"Field notes — week 1"_s, u"Forty seconds later"_s, u"Time"_s);
    code(u"Voices"_s, u"👩‍🔬 said: “trust 😀"_s, u"Said"_s);
    code(u"访谈记录"_s + u" · 受访者 B（节选）"_s, u"注意力已经用完了"_s, u"attention HABITS"_s);
    chooseForRow(u"sidebarList"_s, u"Said"_s, {u"Nest Under"_s, u"Attention habits"_s});
    chooseForRow(u"sidebarList"_s, u"Said"_s, {u"Color"_s, u"Pink"_s});
    EXPECT_EQ(library.code(u"Said"_s).parentID, library.code(u"Attention habits"_s).id);

    clickRow(u"documentList"_s, u"Voices"_s);
    clickButton(u"Document memo…"_s);
    type(u"who speaks?"_s);
    clickRow(u"sidebarList"_s, u"Said"_s);
    clickButton(u"Code memo…"_s);
    type(u"what was said"_s);

    chooseInMenuBar(analyzeMenu, u"Compound Query…"_s);
    clickRow(u"codeChoices"_s, u"Said"_s);
    clickRow(u"codeChoices"_s, u"Time"_s);
    click(u"textFilter"_s);
    type(u"LATER"_s);
    press(Qt::Key_Return);
    ASSERT_EQ(library.store.queryResults()->size(), 1);
    clickRow(u"resultList"_s, u"Forty"_s);
    EXPECT_EQ(text().text(), library.document(u"Field notes — week 1"_s).text);

    chooseInMenuBar(analyzeMenu, u"Word Frequency…"_s);
    press(Qt::Key_Return);
    clickRow(u"termList"_s, u"trust"_s);
    EXPECT_EQ(library.store.wordFreqOccurrences()->size(), 2);
    clickRow(u"occurrenceList"_s, u""_s);
    EXPECT_EQ(text().text(), voices);

    const QStringList made = passages();
    EXPECT_EQ(made.size(), 8 + 3);
    EXPECT_TRUE(made.contains(u"Attention habits | 访谈记录 · 受访者 B（节选） | 注意力已经用完了"_s));
    EXPECT_TRUE(made.contains(u"Time | Field notes — week 1 | Forty seconds later"_s));
    EXPECT_TRUE(made.contains(u"Said | Voices | 👩‍🔬 said: “trust 😀"_s));
    const QString archive = folder.filePath(u"study.qdpx"_s);
    library.fileDialogs.pathToSave = archive;
    chooseInMenuBar(documentsMenu, u"Export REFI-QDA Project…"_s);

    clickRow(u"sidebarList"_s, u"New Project…"_s);
    type(u"Second"_s);
    press(Qt::Key_Return);
    ASSERT_EQ(library.store.documents()->size(), 0);
    library.fileDialogs.pathsToOpen = {archive};
    chooseInMenuBar(documentsMenu, u"Import REFI-QDA Project…"_s);
    EXPECT_EQ(passages(), made);
    EXPECT_EQ(library.document(u"Voices"_s).memo, u"who speaks?"_s);
    EXPECT_EQ(library.code(u"Said"_s).memo, u"what was said"_s);
    EXPECT_EQ(library.code(u"Said"_s).colorHex, u"#FF2D55"_s);
    EXPECT_EQ(library.code(u"Said"_s).parentID, library.code(u"Attention habits"_s).id);
    EXPECT_EQ(library.store.lastError().get(), std::nullopt);
}
