#include "ShownWindow.h"
#include "kit/controls/Alert.h"
#include "kit/controls/Paragraph.h"
#include "kit/controls/SegmentedControl.h"
#include "platform/AtomicFile.h"
#include "workspace/sheets/PopUpList.h"

#include <QAccessible>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

/// The library has two documents and three codes, one of them without passages.
class Sheets : public ShownWindow {
protected:
    Sheets()
    {
        const QList<Code> codes = library.makeCodes({u"Trust"_s, u"Doubt"_s, u"Unused"_s});
        other = library.paste(u"Other"_s, u"some other words"_s);
        notes = library.paste(u"Notes"_s, u"the phone and the table, a phone so ab"_s);
        for (const auto &[code, range] : {std::pair{0, TextRange{0, 3}}, {0, {4, 5}}, {1, {18, 5}}})
            library.store.assignCode(codes[code], notes, range);
        open();
    }
    void show(Observable<bool> &flag) const
    {
        flag.set(true);
        settle();
    }
    void chooseSegment(const QString &control, int index) const
    {
        const auto &segments = find<SegmentedControl>(control);
        click(segments, segments.tabRect(index).center());
    }
    void expectText(const QString &name, const QString &text) const { EXPECT_EQ(find<Paragraph>(name).text(), text); }
    void expectAlertOver(const QWidget &sheet) const
    {
        EXPECT_EQ(find<Alert>().parentWidget(), &sheet);
        press(Qt::Key_Return);
        EXPECT_EQ(&top(), &sheet);
    }

    const QTemporaryDir folder;
    Document notes;
    Document other;
};

struct SheetCase {
    const char *name;
    Observable<bool> &(LibraryStore::*flag)();
    QStringList ring; ///< of Tab, from the first focus on
    QString takesReturn = {}; ///< the stop that has a use of its own for Return
    QString results = u"sidebarList"_s; ///< where the keyboard goes on when the sheet has done what it is for
};

struct EachSheet : Sheets, testing::WithParamInterface<SheetCase> { };

} // namespace

INSTANTIATE_TEST_SUITE_P(, EachSheet,
    testing::Values(SheetCase{"paste", &LibraryStore::showPasteSheet,
                        {u"pasteText"_s, u"cancel"_s, u"add"_s, u"pasteTitle"_s}, u"pasteText"_s},
        SheetCase{
            "export", &LibraryStore::showExportSheet, {u"exportScope"_s, u"exportFormat"_s, u"cancel"_s, u"export"_s}},
        SheetCase{"query", &LibraryStore::showQuerySheet,
            {u"queryMode"_s, u"textFilter"_s, u"codeChoices"_s, u"cancel"_s, u"runQuery"_s}, {}, u"resultList"_s},
        SheetCase{"word_frequency", &LibraryStore::showWordFreqSheet,
            {u"scopeKind"_s, u"minLength"_s, u"ignoreStopwords"_s, u"limit"_s, u"cancel"_s, u"count"_s}, {},
            u"termList"_s}),
    rowName);

TEST_P(EachSheet, IsAModalDialogWithARoundOfStopsWhereReturnActsAndEscapeAndCancelDont)
{
    const auto &[name, flagOf, ring, takesReturn, results] = GetParam();
    Observable<bool> &flag = (library.store.*flagOf)();
    library.fileDialogs.pathToSave = folder.filePath(u"report"_s);
    const auto outcome = [this] { // changes with everything that a sheet does
        return std::tuple(library.store.documents()->size(), library.fileViewer.revealed.size(),
            library.store.sidebarSelection()->value_or(ProjectSelection()).index());
    };
    for (const QString &ending : QStringList{u"Escape"_s, u"click"_s} + ring) {
        SCOPED_TRACE(ending.toStdString());
        library.store.goToDocuments();
        find(u"sidebarList"_s).setFocus();
        const auto untouched = outcome();
        show(flag);
        EXPECT_EQ(QAccessible::queryAccessibleInterface(&top())->role(), QAccessible::Dialog);
        EXPECT_TRUE(find(ring.first()).hasFocus());
        if (ring.contains(u"pasteText"_s)) // what the sheet can't do without
            find<QPlainTextEdit>(u"pasteText"_s).setPlainText(u"words"_s);
        else if (ring.contains(u"codeChoices"_s))
            clickRow(u"codeChoices"_s, u"Trust"_s);
        find(ring.first()).setFocus(Qt::TabFocusReason);
        EXPECT_EQ(stops(), ring);
        if (ring.contains(ending))
            find(ending).setFocus(Qt::TabFocusReason);
        if (ending == u"click")
            click(u"cancel"_s);
        else
            press(ending == u"Escape" ? Qt::Key_Escape : Qt::Key_Return);
        const bool closes = ending != takesReturn;
        EXPECT_EQ(&top() == &root(), closes);
        EXPECT_EQ(flag.get(), !closes);
        const bool acts = closes && ring.contains(ending);
        EXPECT_EQ(outcome() != untouched, acts);
        EXPECT_EQ(find(acts ? results : u"sidebarList"_s).hasFocus(), closes);
        flag.set(false);
        settle();
    }
}

TEST_F(Sheets, ExportWritesTheCodesAndTheFormatThatWereChosen)
{
    const std::tuple<QString, QString, QString> formats[]{{u"md"_s, u"# "_s, u"2 codes · 3 excerpts"_s},
        {u"csv"_s, u"Code,"_s, u"1 codes · 1 excerpts"_s},
        {u"html"_s, u"<!doctype html>"_s, u"2 codes · 3 excerpts"_s}};
    library.store.sidebarSelection().set(CodeSelection{library.code(u"Doubt"_s).id});
    for (int format = 0; format < 3; ++format) {
        const auto &[extension, beginning, summary] = formats[format];
        show(library.store.showExportSheet());
        chooseSegment(u"exportScope"_s, format % 2);
        chooseSegment(u"exportFormat"_s, format);
        expectText(u"exportSummary"_s, summary); // a code without passages doesn't count
        library.fileDialogs.pathToSave = folder.filePath(extension);
        click(u"export"_s);
        EXPECT_EQ(library.fileDialogs.saveRequest->proposedName, u"Vorn-Excerpts."_s + extension);
        const QString written = QString::fromUtf8(AtomicFile::readFile(folder.filePath(extension)));
        EXPECT_TRUE(written.startsWith(beginning));
        EXPECT_EQ(written.contains(u"phone"), format != 1);
        EXPECT_EQ(library.fileViewer.revealed.last(), folder.filePath(extension));
    }
    show(library.store.showExportSheet());
    library.fileDialogs.pathToSave = folder.filePath(u"missing/a.md"_s);
    const QWidget &sheet = top();
    click(u"export"_s);
    expectAlertOver(sheet);
    library.store.goToDocuments(); // and it follows what happens behind it
    EXPECT_EQ(find<SegmentedControl>(u"exportScope"_s).labels(), QStringList{u"All codes"_s});
    library.store.deleteCode(library.code(u"Doubt"_s));
    expectText(u"exportSummary"_s, u"1 codes · 2 excerpts"_s);
    library.store.deleteDocument(notes);
    expectText(u"exportSummary"_s, u"0 codes · 0 excerpts"_s);
}

TEST_F(Sheets, ATextIsPastedAsItStandsUnlessItIsBlank)
{
    const Case<QString> texts[]{{"nothing", u""_s, {}}, {"blanks", u"\n\u00A0\u2003\u3000\u2028\u0085"_s, {}},
        {"around", u"\n  a \n\n"_s, u"\n  a \n\n"_s}, {"separators", u"10\u00A0km\u2028b"_s, u"10\u00A0km\u2028b"_s},
        {"foreign line ends", u"a\r\nb\rc"_s, u"a\nb\nc"_s}};
    const QString title = u" A title "_s + u"and what came of it "_s.repeated(2'000);
    for (const auto &[name, pasted, stored] : texts) {
        show(library.store.showPasteSheet());
        find<QLineEdit>(u"pasteTitle"_s).insert(title);
        find<QPlainTextEdit>(u"pasteText"_s).insertPlainText(pasted);
        ASSERT_EQ(find(u"add"_s).isEnabled(), !stored.isNull()) << name;
        click(stored.isNull() ? u"cancel"_s : u"add"_s);
        EXPECT_EQ(library.store.documents()->first().text, stored.isNull() ? notes.text : stored) << name;
    }
    EXPECT_EQ(library.store.documents()->first().title, title);
}

TEST_F(Sheets, AQuerySaysHowManyCodesAreMissingAndRunsWithThoseThatAreLeft)
{
    library.store.nestCode(library.code(u"Unused"_s).id, library.code(u"Trust"_s).id);
    show(library.store.showQuerySheet());
    const QStringList hints{u"Pick at least 1 code."_s, u"Pick at least 2 codes to intersect."_s, u"1 selected"_s,
        u"Pick at least 2 codes to intersect."_s, u"2 selected"_s, u"2 selected"_s};
    const QStringList codes{u"Doubt"_s, u"Unused"_s, u"Trust"_s};
    for (int number = 0; number < 6; ++number) {
        chooseSegment(u"queryMode"_s, number % 2); // which keeps what is chosen
        expectText(u"choiceHint"_s, hints[number]);
        EXPECT_EQ(find(u"runQuery"_s).isEnabled(), hints[number].endsWith(u"selected"));
        if (number % 2 != 0)
            clickRow(u"codeChoices"_s, codes[number / 2]);
    }
    library.store.deleteCode(library.code(u"Doubt"_s));
    expectText(u"choiceHint"_s, u"2 selected"_s);
    click(u"runQuery"_s);
    const QList<QUuid> inTheOrderOfTheTree{library.code(u"Trust"_s).id, library.code(u"Unused"_s).id};
    EXPECT_EQ(library.store.activeQuery()->value().codeIDs, inTheOrderOfTheTree);
    EXPECT_EQ(library.store.activeQuery()->value().mode, QuerySpec::Mode::all);
}

TEST_F(Sheets, WordsAreCountedAsTheSheetSays)
{
    QString words = u"the ab phone the ab phone "_s;
    for (int number = 0; number < 150; ++number)
        words += u"word%1 "_s.arg(number);
    const Document many = library.paste(u"two\nlines\tand "_s + QString(300, u'W'), words);
    const auto &items = library.store.wordFreqItems();
    for (const auto &[segment, length] : {std::pair{0, 25}, {1, 50}, {2, 100}}) {
        show(library.store.showWordFreqSheet());
        chooseSegment(u"scopeKind"_s, 1);
        EXPECT_FALSE(find(u"count"_s).isEnabled());
        find<PopUpList>(u"scopeDocument"_s).setCurrentIndex(1); // newest first
        click(u"ignoreStopwords"_s);
        chooseSegment(u"limit"_s, segment);
        find(u"minLength"_s).setFocus();
        for (int step = 0; step < 9; ++step)
            press(Qt::Key_Down); // to 2
        click(u"count"_s);
        EXPECT_EQ(library.store.wordFreqScope().get(), WordFrequency::Scope(WordFrequency::InDocument{many.id}));
        EXPECT_EQ(items->size(), length);
        for (const WordFrequency::Item &item : items->first(3))
            EXPECT_TRUE((QStringList{u"the"_s, u"ab"_s, u"phone"_s}.contains(item.term))) << item.term.toStdString();
    }
    show(library.store.showWordFreqSheet());
    chooseSegment(u"scopeKind"_s, 1);
    auto &documents = find<PopUpList>(u"scopeDocument"_s);
    EXPECT_TRUE(documents.itemText(1).startsWith(u"two lines and W"_s));
    documents.setCurrentIndex(3);
    library.paste(u"Newer"_s, u"text"_s);
    EXPECT_EQ(documents.currentText(), u"Other"_s);
    library.store.deleteDocument(other);
    EXPECT_FALSE(find(u"count"_s).isEnabled());
    chooseSegment(u"scopeKind"_s, 2);
    find<PopUpList>(u"scopeCode"_s).setCurrentIndex(2);
    click(u"count"_s);
    EXPECT_EQ(items->value(0).term, u"table"_s) << "in Doubt";
}
