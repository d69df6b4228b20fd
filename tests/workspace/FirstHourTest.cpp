#include "ShownWindow.h"
#include "exchange/ExcerptExporter.h"

#include <QClipboard>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

/// Does with mouse and keys alone what a researcher does.
class FirstHour : public ShownWindow {
protected:
    void chooseForRow(const QString &row, const QStringList &path) const
    {
        clickRow(u"sidebarList"_s, row, Qt::RightButton);
        take(static_cast<QMenu &>(top()), path);
        settle();
    }
    void code(const QString &title, const QString &phrase, const QString &codeName) const
    {
        clickRow(u"documentList"_s, title);
        select(phrase);
        click(u"addCode"_s);
        type(codeName);
        press(Qt::Key_Return);
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
    pressButton(root(), u"Load Sample Content"_s);
    choose(u"&Documents"_s, u"Paste New Document…"_s);
    click(u"pasteTitle"_s);
    type(u"Voices"_s);
    click(u"pasteText"_s);
    QApplication::clipboard()->setText(voices);
    press(Qt::Key_V, Qt::ControlModifier);
    click(u"add"_s);
    ASSERT_EQ(library.document(u"Voices"_s).text, voices);

    code(u"Field notes — week 1"_s, u"Forty seconds later"_s, u"Time"_s);
    code(u"Voices"_s, u"👩‍🔬 said: “trust 😀"_s, u"Said"_s);
    code(u"访谈记录"_s, u"注意力已经用完了"_s, u"attention HABITS"_s);
    chooseForRow(u"Said"_s, {u"Nest Under"_s, u"Attention habits"_s});
    chooseForRow(u"Said"_s, {u"Color"_s, u"Pink"_s});
    choose(u"&Analyze"_s, u"Compound Query…"_s);
    clickRow(u"codeChoices"_s, u"Said"_s);
    clickRow(u"codeChoices"_s, u"Time"_s);
    click(u"textFilter"_s);
    type(u"LATER"_s);
    press(Qt::Key_Return);
    ASSERT_EQ(library.store.queryResults()->size(), 1);
    clickRow(u"resultList"_s, u"Forty"_s);
    EXPECT_EQ(text().text(), library.document(u"Field notes — week 1"_s).text);
    choose(u"&Analyze"_s, u"Word Frequency…"_s);
    press(Qt::Key_Return);
    clickRow(u"termList"_s, u"trust"_s);
    EXPECT_EQ(library.store.wordFreqOccurrences()->size(), 2);
    clickRow(u"occurrenceList"_s, u"Voices"_s);
    EXPECT_EQ(text().text(), voices);

    const QStringList made = passages();
    EXPECT_EQ(made.size(), 8 + 3);
    for (const QString &passage : {u"Attention habits | 访谈记录 · 受访者 B（节选） | 注意力已经用完了"_s,
             u"Time | Field notes — week 1 | Forty seconds later"_s,
             u"Said | Voices | 👩‍🔬 said: “trust 😀"_s})
        EXPECT_TRUE(made.contains(passage)) << passage.toStdString();
    library.fileDialogs.pathToSave = folder.filePath(u"study.qdpx"_s);
    choose(u"&Documents"_s, u"Export REFI-QDA Project…"_s);
    clickRow(u"sidebarList"_s, u"New Project…"_s);
    type(u"Second"_s);
    press(Qt::Key_Return);
    ASSERT_EQ(library.store.documents()->size(), 0);
    library.fileDialogs.pathsToOpen = {folder.filePath(u"study.qdpx"_s)};
    choose(u"&Documents"_s, u"Import REFI-QDA Project…"_s);
    EXPECT_EQ(passages(), made);
    const Code said = library.code(u"Said"_s);
    EXPECT_EQ(said.colorHex, u"#FF2D55"_s);
    EXPECT_EQ(said.parentID, library.code(u"Attention habits"_s).id);
    EXPECT_EQ(library.store.lastError().get(), std::nullopt);
}
