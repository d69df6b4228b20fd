#include "kit/controls/Alert.h"
#include "kit/controls/ElidedLabel.h"
#include "kit/controls/Paragraph.h"
#include "kit/controls/SegmentedControl.h"
#include "kit/lists/RowList.h"
#include "kit/theme/ThemedTest.h"
#include "support/TestLibrary.h"
#include "workspace/ErrorAlert.h"
#include "workspace/sheets/PopUpList.h"
#include "workspace/sheets/SheetPresenter.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QFile>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QWindow>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// A window in which sheets open as the store asks, with a button that has the focus before. The library has two
/// documents and three codes, one of them without passages.
class Sheets : public ThemedTest {
protected:
    Sheets()
    {
        library.makeCodes({u"Trust"_s, u"Doubt"_s, u"Unused"_s});
        other = library.paste(u"Other"_s, u"some other words"_s);
        notes = library.paste(u"Notes"_s, u"the phone and the table, a phone so ab"_s);
        assign(u"Trust"_s, 0, 3);
        assign(u"Trust"_s, 4, 5);
        assign(u"Doubt"_s, 18, 5);
        showWindow();
        before.setFocus(Qt::OtherFocusReason);
        presenter = std::make_unique<SheetPresenter>(library.store, m_window);
    }
    ~Sheets() override
    {
        presenter.reset();
        delete sheet(); // before the store
    }
    void assign(const QString &code, qint64 start, qint64 length)
    {
        library.store.assignCode(library.code(code), notes, {start, length});
    }
    void select(const QString &code) { library.store.sidebarSelection().set(CodeSelection{library.code(code).id}); }

    /// The sheet that can be seen, if any.
    [[nodiscard]] Sheet *sheet() const
    {
        for (Sheet *found : m_window.findChildren<Sheet *>()) {
            if (found->isVisible())
                return found;
        }
        return nullptr;
    }
    /// Sets the flag, and activates the sheet as the window system would.
    void open(Observable<bool> &flag)
    {
        flag.set(true);
        ASSERT_NE(sheet(), nullptr);
        QApplication::setActiveWindow(sheet());
        QApplication::processEvents();
    }
    template <typename Widget = QWidget>
    [[nodiscard]] Widget &find(const QString &name) const
    {
        return childOf<Widget>(sheet(), name);
    }
    [[nodiscard]] QString textOf(const QString &name) const { return find<Paragraph>(name).text(); }
    static void press(Qt::Key key)
    {
        QTest::keyClick(QApplication::focusWidget(), key);
        QApplication::processEvents();
    }
    void click(const QString &name) const
    {
        QTest::mouseClick(&find(name), Qt::LeftButton);
        QApplication::processEvents();
    }
    [[nodiscard]] int chosen(const QString &control) const { return find<SegmentedControl>(control).currentIndex(); }
    void choose(const QString &control, int index) const
    {
        auto &segments = find<SegmentedControl>(control);
        QTest::mouseClick(&segments, Qt::LeftButton, {}, segments.tabRect(index).center());
        QApplication::processEvents();
    }
    [[nodiscard]] QString contentOf(const QString &name) const
    {
        QFile file(folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : u"(no file)"_s;
    }
    [[nodiscard]] QStringList terms() const
    {
        QStringList terms;
        for (const WordFrequency::Item &item : library.store.wordFreqItems().get())
            terms.append(item.term);
        return terms;
    }
    /// Chooses from the opened list, as the keyboard does.
    void chooseEntry(const QString &name, int row) const
    {
        auto &list = find<PopUpList>(name);
        list.showPopup();
        QTest::keyClick(list.view(), Qt::Key_Home);
        for (int step = 0; step < row; ++step)
            QTest::keyClick(list.view(), Qt::Key_Down);
        QTest::keyClick(list.view(), Qt::Key_Return);
        QApplication::processEvents();
    }
    void clickCode(int row) const
    {
        auto &list = find<RowList>(u"codeChoices"_s);
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(list.model()->index(row, 0)).center());
    }
    /// Gives what a sheet can't do without.
    void answer() const
    {
        if (auto *text = sheet()->findChild<QPlainTextEdit *>())
            text->setPlainText(u"words"_s);
        if (sheet()->findChild<RowList *>() != nullptr)
            clickCode(0);
    }

    TestLibrary library;
    const QTemporaryDir folder;
    Document notes;
    Document other;
    QPushButton before{&m_window};
    std::unique_ptr<SheetPresenter> presenter;
};

struct SheetCase {
    const char *name;
    Observable<bool> &(*flag)(LibraryStore &store);
    QStringList stops; ///< of Tab, from the first focus on
    QString takesReturn = {}; ///< the stop that has a use of its own for Return
};

class EachSheet : public Sheets, public testing::WithParamInterface<SheetCase> {
protected:
    void open() { Sheets::open(GetParam().flag(library.store)); }
    /// Changes with everything that a sheet does.
    [[nodiscard]] std::array<qsizetype, 3> outcome()
    {
        const std::optional<SidebarSelection> selection = library.store.sidebarSelection().get();
        return {library.store.documents()->size(), library.fileViewer.revealed.size(),
            selection ? qsizetype(selection->index()) : -1};
    }
};

} // namespace

INSTANTIATE_TEST_SUITE_P(, EachSheet,
    testing::Values(SheetCase{"paste", [](LibraryStore &store) -> auto & { return store.showPasteSheet();
}
, {u"pasteText"_s, u"cancel"_s, u"add"_s, u"pasteTitle"_s}, u"pasteText"_s
}
, SheetCase{"export", [](LibraryStore &store) -> auto &{return store.showExportSheet();
}
,
{
    u"exportScope"_s, u"exportFormat"_s, u"cancel"_s, u"export"_s
}
}
, SheetCase{"query", [](LibraryStore &store) -> auto &{return store.showQuerySheet();
}
,
{
    u"queryMode"_s, u"textFilter"_s, u"codeChoices"_s, u"cancel"_s, u"runQuery"_s
}
}
, SheetCase{"word_frequency", [](LibraryStore &store) -> auto &{return store.showWordFreqSheet();
}
,
{
    u"scopeKind"_s, u"minLength"_s, u"ignoreStopwords"_s, u"limit"_s, u"cancel"_s, u"count"_s
}
}),
    rowName);

TEST_P(EachSheet, IsAModalDialogThatTabGoesRoundIn)
{
    open();
    answer();
    const auto spokenFor = [](QWidget * widget) -> auto &
    {
        return *QAccessible::queryAccessibleInterface(widget);
    };
    EXPECT_EQ(spokenFor(sheet()).role(), QAccessible::Dialog);
    EXPECT_TRUE(spokenFor(sheet()).state().modal);
    find(GetParam().stops.first()).setFocus();
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Backtab}) {
        QStringList stops;
        for (qsizetype stop = 0; stop < GetParam().stops.size(); ++stop) {
            stops.append(QApplication::focusWidget()->objectName());
            EXPECT_FALSE(spokenFor(QApplication::focusWidget()).text(QAccessible::Name).isEmpty()) << stop;
            press(key);
        }
        if (key == Qt::Key_Backtab)
            std::reverse(stops.begin() + 1, stops.end());
        EXPECT_EQ(stops, GetParam().stops);
    }
}

TEST_P(EachSheet, EscapeAndCancelDoNothingAndGiveTheFocusBack)
{
    const auto untouched = outcome();
    for (const bool isByKey : {true, false}) {
        open();
        EXPECT_EQ(QApplication::focusWidget()->objectName(), GetParam().stops.first());
        answer();
        if (isByKey)
            press(Qt::Key_Escape);
        else
            click(u"cancel"_s);
        EXPECT_EQ(sheet(), nullptr);
        EXPECT_FALSE(GetParam().flag(library.store).get());
        EXPECT_TRUE(before.hasFocus());
        EXPECT_EQ(outcome(), untouched);
    }
}

TEST_P(EachSheet, ReturnActsFromEveryStopButTheOneThatTakesIt)
{
    library.fileDialogs.pathToSave = folder.filePath(u"report"_s);
    for (const QString &stop : GetParam().stops) {
        library.store.goToDocuments();
        const auto untouched = outcome();
        open();
        answer();
        find(stop).setFocus(Qt::TabFocusReason);
        press(Qt::Key_Return);
        const bool acts = stop != GetParam().takesReturn;
        EXPECT_EQ(sheet() == nullptr, acts) << stop.toStdString();
        EXPECT_EQ(outcome() != untouched, acts) << stop.toStdString();
        EXPECT_EQ(before.hasFocus(), acts) << stop.toStdString();
        GetParam().flag(library.store).set(false);
    }
}

TEST_F(Sheets, TheKeyboardComesBackFromAClickBesideThem)
{
    open(library.store.showPasteSheet());
    m_window.windowHandle()->requestActivate();
    EXPECT_TRUE(QTest::qWaitFor([this] { return sheet()->isActiveWindow(); }));
}

TEST_F(Sheets, OpenOneAfterTheOtherAsTheirFlagsSayAlsoBeforeTheWindowCame)
{
    presenter.reset();
    library.store.showQuerySheet().set(true);
    presenter = std::make_unique<SheetPresenter>(library.store, m_window);
    library.store.showPasteSheet().set(true);
    EXPECT_EQ(sheet()->windowTitle(), u"Compound Query"_s);
    library.store.showExportSheet().set(false);
    library.store.showQuerySheet().set(false);
    EXPECT_EQ(sheet()->windowTitle(), u"Paste a Document"_s);
}

TEST_F(Sheets, ExportWritesTheCodesAndTheFormatThatWereChosen)
{
    const std::tuple<QString, QString, QString> formats[]{{u"md"_s, u"# "_s, u"2 codes · 3 excerpts"_s},
        {u"csv"_s, u"Code,"_s, u"1 codes · 1 excerpts"_s},
        {u"html"_s, u"<!doctype html>"_s, u"2 codes · 3 excerpts"_s}};
    select(u"Doubt"_s);
    for (int format = 0; format < 3; ++format) {
        const auto &[extension, beginning, summary] = formats[format];
        open(library.store.showExportSheet());
        EXPECT_EQ(chosen(u"exportScope"_s), 1) << "the selected code";
        choose(u"exportScope"_s, format % 2);
        choose(u"exportFormat"_s, format);
        EXPECT_EQ(textOf(u"exportSummary"_s), summary) << "a code without passages doesn't count";
        click(u"export"_s); // and the panel is cancelled
        ASSERT_NE(sheet(), nullptr);
        library.fileDialogs.pathToSave = folder.filePath(extension);
        click(u"export"_s);
        EXPECT_EQ(library.fileDialogs.saveRequest->proposedName, u"Vorn-Excerpts."_s + extension);
        EXPECT_EQ(library.fileDialogs.saveRequest->extension, extension);
        EXPECT_TRUE(contentOf(extension).startsWith(beginning));
        EXPECT_EQ(contentOf(extension).contains(u"phone"_s), format != 1);
        EXPECT_EQ(library.fileViewer.revealed.last(), folder.filePath(extension));
        library.fileDialogs.pathToSave.reset();
    }
}

TEST_F(Sheets, ExportFollowsWhatHappensBehindIt)
{
    select(u"Trust"_s);
    open(library.store.showExportSheet());
    assign(u"Trust"_s, 14, 3);
    EXPECT_EQ(textOf(u"exportSummary"_s), u"1 codes · 3 excerpts"_s);
    library.store.goToDocuments(); // so that no code is selected
    EXPECT_EQ(find<SegmentedControl>(u"exportScope"_s).labels(), QStringList{u"All codes"_s});
    EXPECT_EQ(textOf(u"exportSummary"_s), u"2 codes · 4 excerpts"_s);
    library.store.deleteCode(library.code(u"Doubt"_s));
    EXPECT_EQ(textOf(u"exportSummary"_s), u"1 codes · 3 excerpts"_s);
    library.store.deleteDocument(notes);
    EXPECT_EQ(textOf(u"exportSummary"_s), u"0 codes · 0 excerpts"_s);
}

TEST_F(Sheets, WhatFailsIsToldOverTheSheetWhichStaysWithItsAnswers)
{
    const ErrorAlert errors(library.store, m_window);
    const auto expectError = [this](const QString &button, const QString &beginning) {
        const QPointer<Sheet> opened = sheet();
        click(button);
        auto *alert = m_window.findChild<Alert *>();
        ASSERT_NE(alert, nullptr);
        EXPECT_EQ(alert->parentWidget(), opened);
        EXPECT_TRUE(library.store.lastError()->value_or(QString()).startsWith(beginning));
        QTest::keyClick(alert, Qt::Key_Return);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_TRUE(opened != nullptr && opened->isVisible());
    };
    open(library.store.showExportSheet());
    library.fileDialogs.pathToSave = folder.filePath(u"missing/a.md"_s);
    expectError(u"export"_s, u"Export failed: "_s);
    library.store.showExportSheet().set(false);
    open(library.store.showPasteSheet());
    answer();
    library.queue->writeWithoutTransaction([](Database &database) { database.execute("DROP TABLE document"); });
    expectError(u"add"_s, u"The document couldn't be added: "_s);
    EXPECT_EQ(find<QPlainTextEdit>(u"pasteText"_s).toPlainText(), u"words"_s);
}

TEST_F(Sheets, ATextIsPastedAsItStandsUnlessItIsBlank)
{
    const Case<QString> texts[]{{"nothing", u""_s, {}}, {"blanks", u"\n\u00A0\u2003\u3000\u2028\u0085"_s, {}},
        {"around", u"\n  a \n\n"_s, u"\n  a \n\n"_s}, {"separators", u"10\u00A0km\u2028b"_s, u"10\u00A0km\u2028b"_s},
        {"foreign line ends", u"a\r\nb\rc"_s, u"a\nb\nc"_s}};
    const QString title = u" A title "_s + u"and what came of it "_s.repeated(2'000);
    for (const auto &[name, pasted, stored] : texts) {
        open(library.store.showPasteSheet());
        find<QLineEdit>(u"pasteTitle"_s).insert(title);
        find<QPlainTextEdit>(u"pasteText"_s).insertPlainText(pasted);
        ASSERT_EQ(find(u"add"_s).isEnabled(), !stored.isNull()) << name;
        click(stored.isNull() ? u"cancel"_s : u"add"_s);
        EXPECT_EQ(library.store.documents()->first().text, stored.isNull() ? notes.text : stored) << name;
    }
    EXPECT_EQ(library.store.documents()->first().title, title);
    EXPECT_EQ(library.store.selectedDocumentID().get(), library.store.documents()->first().id);
}

TEST_F(Sheets, AQuerySaysHowManyCodesAreMissingAndRunsWithThoseThatAreLeft)
{
    library.store.nestCode(library.code(u"Unused"_s).id, library.code(u"Trust"_s).id);
    open(library.store.showQuerySheet());
    const QStringList hints{u"Pick at least 1 code."_s, u"Pick at least 2 codes to intersect."_s, u"1 selected"_s,
        u"Pick at least 2 codes to intersect."_s, u"2 selected"_s, u"2 selected"_s};
    for (int number = 0; number < 6; ++number) {
        choose(u"queryMode"_s, number % 2); // which keeps what is chosen
        EXPECT_EQ(textOf(u"choiceHint"_s), hints[number]);
        EXPECT_EQ(find(u"runQuery"_s).isEnabled(), hints[number].endsWith(u"selected"));
        if (number % 2 != 0)
            clickCode(2 - number / 2); // from below
    }
    EXPECT_EQ(textOf(u"choiceHint"_s), u"3 selected"_s);
    library.store.deleteCode(library.code(u"Doubt"_s));
    EXPECT_EQ(textOf(u"choiceHint"_s), u"2 selected"_s);
    QTest::keyClicks(&find(u"textFilter"_s), u"  some Words "_s);
    click(u"runQuery"_s);
    const QuerySpec query = library.store.activeQuery()->value();
    EXPECT_EQ(
        query.codeIDs, (QList<QUuid>{library.code(u"Trust"_s).id, library.code(u"Unused"_s).id})); // as in the tree
    EXPECT_EQ(query.mode, QuerySpec::Mode::all);
    EXPECT_EQ(query.textFilter, u"  some Words "_s);

    for (const QString &name : {u"Trust"_s, u"Unused"_s})
        library.store.deleteCode(library.code(name));
    open(library.store.showQuerySheet());
    EXPECT_TRUE(find(u"noCodes"_s).isVisible());
    library.makeCodes({u"One"_s});
    EXPECT_FALSE(find(u"noCodes"_s).isVisible());
}

TEST_F(Sheets, WordsAreCountedAsTheSheetSays)
{
    QString words = u"the ab phone the ab phone "_s;
    for (int number = 0; number < 150; ++number)
        words += u"word%1 "_s.arg(number);
    const Document many = library.paste(u"Many"_s, words);
    for (const auto &[segment, length] : {std::pair{0, 25}, {1, 50}, {2, 100}}) {
        open(library.store.showWordFreqSheet());
        EXPECT_EQ(find<ElidedLabel>(u"minLengthLabel"_s).text(), u"Min length: 3"_s);
        EXPECT_EQ(chosen(u"limit"_s), 1);
        choose(u"scopeKind"_s, 1);
        EXPECT_FALSE(find(u"count"_s).isEnabled());
        chooseEntry(u"scopeDocument"_s, 1); // newest first
        click(u"ignoreStopwords"_s);
        choose(u"limit"_s, segment);
        for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down}) {
            for (int step = 0; step < 9; ++step)
                QTest::keyClick(&find(u"minLength"_s), key);
            const QString end = key == Qt::Key_Up ? u"Min length: 8"_s : u"Min length: 2"_s;
            EXPECT_EQ(find<ElidedLabel>(u"minLengthLabel"_s).text(), end);
        }
        click(u"count"_s);
        EXPECT_EQ(library.store.wordFreqScope().get(), WordFrequency::Scope(WordFrequency::InDocument{many.id}));
        EXPECT_EQ(terms().size(), length);
        for (const QString &term : {u"the"_s, u"ab"_s, u"phone"_s})
            EXPECT_TRUE(terms().first(3).contains(term)) << "common words, and words of two letters";
    }
    open(library.store.showWordFreqSheet());
    press(Qt::Key_Return);
    EXPECT_EQ(library.store.wordFreqScope().get(), WordFrequency::Scope(WordFrequency::AllDocuments{}));
    EXPECT_FALSE(terms().contains(u"the"_s));
}

TEST_F(Sheets, ADocumentOrCodeStaysChosenUntilItIsGoneAndLongNamesWidenNothing)
{
    open(library.store.showWordFreqSheet());
    choose(u"scopeKind"_s, 1);
    auto &documents = find<PopUpList>(u"scopeDocument"_s);
    const QSize size = documents.size();
    library.paste(u"two\nlines\tand "_s + QString(300, u'W'), u"text"_s);
    QApplication::processEvents();
    EXPECT_EQ(documents.size(), size);
    EXPECT_TRUE(documents.itemText(1).startsWith(u"two lines and W"_s));
    documents.showPopup();
    EXPECT_LE(documents.view()->width(), sheet()->width());
    documents.hidePopup();
    chooseEntry(u"scopeDocument"_s, 3);
    library.paste(u"Newer"_s, u"text"_s);
    EXPECT_EQ(documents.currentText(), u"Other"_s);
    EXPECT_TRUE(find(u"count"_s).isEnabled());
    library.store.deleteDocument(other);
    EXPECT_FALSE(find(u"count"_s).isEnabled());
    choose(u"scopeKind"_s, 2);
    chooseEntry(u"scopeCode"_s, 2);
    click(u"count"_s);
    EXPECT_EQ(
        library.store.wordFreqScope().get(), WordFrequency::Scope(WordFrequency::InCode{library.code(u"Doubt"_s).id}));
    EXPECT_EQ(terms(), QStringList{u"table"_s});
}
