#include "workspace/sheets/ExportSheet.h"

#include "ShownSheets.h"
#include "kit/controls/Alert.h"
#include "kit/controls/Paragraph.h"
#include "kit/controls/SegmentedControl.h"
#include "workspace/ErrorAlert.h"

#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace {

/// The real sheet over the real store, with three passages in two of three codes.
class ExportSheetTest : public ShownSheets {
protected:
    ExportSheetTest()
    {
        library.makeCodes({u"Trust"_s, u"Doubt"_s, u"Unused"_s});
        notes = library.paste(u"Notes"_s, u"one two three four"_s);
        assign(u"Trust"_s, 0, 3);
        assign(u"Trust"_s, 4, 3);
        assign(u"Doubt"_s, 8, 5);
    }
    void assign(const QString &code, qint64 start, qint64 length)
    {
        library.store.assignCode(library.code(code), notes, {start, length});
    }
    void select(const QString &code) { library.store.sidebarSelection().set(CodeSelection{library.code(code).id}); }
    void open() { ShownSheets::open(library.store.showExportSheet()); }
    [[nodiscard]] SegmentedControl &scope() const { return find<SegmentedControl>(u"exportScope"_s); }
    [[nodiscard]] SegmentedControl &format() const { return find<SegmentedControl>(u"exportFormat"_s); }
    [[nodiscard]] QString summary() const { return find<Paragraph>(u"exportSummary"_s).text(); }
    [[nodiscard]] QString pathOf(const QString &name) const { return folder.filePath(name); }
    [[nodiscard]] QString contentOf(const QString &name) const
    {
        QFile file(pathOf(name));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : u"(no file)"_s;
    }

    QTemporaryDir folder;
    Document notes;
};

} // namespace

TEST_F(ExportSheetTest, WithoutASelectedCodeAllAreExportedInEachFormat)
{
    const QList<std::pair<QString, QString>> beginnings{
        {u"md"_s, u"# "_s}, {u"csv"_s, u"Code,"_s}, {u"html"_s, u"<!doctype html>"_s}};
    for (int index = 0; index < 3; ++index) {
        const auto &[extension, beginning] = beginnings[index];
        open();
        EXPECT_EQ(scope().labels(), QStringList{u"All codes"_s});
        EXPECT_EQ(summary(), u"2 codes · 3 excerpts"_s) << "the code without passages doesn't count";
        choose(format(), index);
        library.fileDialogs.pathToSave = pathOf(extension);
        click(u"export"_s);
        ASSERT_TRUE(library.fileDialogs.saveRequest.has_value());
        EXPECT_EQ(library.fileDialogs.saveRequest->proposedName, u"Vorn-Excerpts."_s + extension);
        EXPECT_EQ(library.fileDialogs.saveRequest->extension, extension);
        EXPECT_TRUE(contentOf(extension).startsWith(beginning)) << index;
        EXPECT_EQ(library.fileViewer.revealed.last(), pathOf(extension));
        EXPECT_EQ(sheet(), nullptr);
        EXPECT_TRUE(before.hasFocus());
    }
}

TEST_F(ExportSheetTest, OpensOnTheSelectedCodeAndExportsItAlone)
{
    select(u"Doubt"_s);
    open();
    EXPECT_EQ(scope().labels(), (QStringList{u"All codes"_s, u"Selected code"_s}));
    for (const auto &[index, text] : {std::pair(1, u"1 codes · 1 excerpts"_s), {0, u"2 codes · 3 excerpts"_s}}) {
        EXPECT_EQ(scope().currentIndex(), index);
        EXPECT_EQ(summary(), text);
        choose(scope(), 1 - index);
    }
    library.fileDialogs.pathToSave = pathOf(u"a.md"_s);
    press(Qt::Key_Return);
    EXPECT_TRUE(contentOf(u"a.md"_s).contains(u"three"_s));
    EXPECT_FALSE(contentOf(u"a.md"_s).contains(u"Trust"_s));
}

TEST_F(ExportSheetTest, FollowsWhatHappensBehindIt)
{
    select(u"Trust"_s);
    open();
    assign(u"Trust"_s, 14, 4);
    EXPECT_EQ(summary(), u"1 codes · 3 excerpts"_s);
    library.store.goToDocuments(); // the selection goes away
    EXPECT_EQ(scope().labels(), QStringList{u"All codes"_s});
    EXPECT_EQ(summary(), u"2 codes · 4 excerpts"_s);
    library.store.deleteDocument(notes);
    EXPECT_EQ(summary(), u"0 codes · 0 excerpts"_s);
    library.fileDialogs.pathToSave = pathOf(u"a.md"_s);
    click(u"export"_s);
    EXPECT_TRUE(contentOf(u"a.md"_s).startsWith(u"# "_s)); // a report of nothing is one, too
}

TEST_F(ExportSheetTest, CancellingThePanelKeepsTheSheetAndItsChoices)
{
    select(u"Trust"_s);
    open();
    choose(scope(), 0);
    choose(format(), 2);
    click(u"export"_s);
    ASSERT_NE(sheet(), nullptr);
    EXPECT_EQ(scope().currentIndex(), 0);
    EXPECT_EQ(format().currentIndex(), 2);
    EXPECT_TRUE(library.fileViewer.revealed.isEmpty());
}

TEST_F(ExportSheetTest, AFailureIsShownOverTheSheetWhichStays)
{
    const ErrorAlert errors(library.store, m_window);
    open();
    const QPointer<Sheet> opened = sheet();
    library.fileDialogs.pathToSave = pathOf(u"missing/a.md"_s);
    click(u"export"_s);
    EXPECT_TRUE(library.store.lastError()->value_or(QString()).startsWith(u"Export failed: "_s));
    auto *alert = m_window.findChild<Alert *>();
    ASSERT_NE(alert, nullptr);
    EXPECT_EQ(alert->parentWidget(), opened);
    QTest::keyClick(alert, Qt::Key_Return);
    QApplication::processEvents();
    ASSERT_TRUE(opened != nullptr && opened->isVisible());
    EXPECT_TRUE(library.store.showExportSheet().get());

    library.fileDialogs.pathToSave = pathOf(u"a.md"_s);
    QTest::mouseClick(opened->findChild<QPushButton *>(u"export"_s), Qt::LeftButton);
    QApplication::processEvents();
    EXPECT_EQ(library.fileViewer.revealed, QStringList{pathOf(u"a.md"_s)});
    EXPECT_FALSE(library.store.showExportSheet().get());
}
