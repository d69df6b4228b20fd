#include "workspace/sheets/PasteSheet.h"

#include "ShownSheets.h"
#include "workspace/sheets/PasteEditor.h"

#include <QClipboard>
#include <QLineEdit>
#include <QMimeData>

using namespace Qt::StringLiterals;

namespace {

class PasteSheetTest : public ShownSheets {
protected:
    void open() { ShownSheets::open(library.store.showPasteSheet()); }
    [[nodiscard]] QLineEdit &title() const { return find<QLineEdit>(u"pasteTitle"_s); }
    [[nodiscard]] PasteEditor &text() const { return find<PasteEditor>(u"pasteText"_s); }
    [[nodiscard]] bool canAdd() const { return button(u"add"_s).isEnabled(); }
    void paste(const QString &content) const
    {
        QApplication::clipboard()->setText(content);
        text().paste();
    }
};

struct TextCase {
    const char *name;
    QString pasted;
    bool canBeAdded;
    QString stored = {}; ///< the pasted text if null
};
class PastedText : public PasteSheetTest, public testing::WithParamInterface<TextCase> { };

} // namespace

TEST_P(PastedText, IsAddedAsItStandsUnlessItIsBlank)
{
    open();
    paste(GetParam().pasted);
    EXPECT_EQ(canAdd(), GetParam().canBeAdded);
    if (!GetParam().canBeAdded)
        return;
    click(u"add"_s);
    ASSERT_EQ(library.store.documents()->size(), 1);
    const QString expected = GetParam().stored.isNull() ? GetParam().pasted : GetParam().stored;
    EXPECT_EQ(library.store.documents()->first().text, expected);
}

INSTANTIATE_TEST_SUITE_P(Texts, PastedText,
    testing::Values(TextCase{"nothing", u""_s, false}, TextCase{"line_ends", u"\n\r\n\n"_s, false},
        TextCase{"rare_blanks", u"\u00A0\u2003\u3000\u2028\u0085"_s, false},
        TextCase{"blanks_around_are_kept", u"\n  a \n\n"_s, true},
        TextCase{"no_break_space_stays_one", u"10\u00A0km"_s, true},
        TextCase{"line_separator_stays_one", u"a\u2028b"_s, true},
        TextCase{"pairs_stay_whole", u"😀 e\u0301 你好"_s, true},
        TextCase{"foreign_line_ends_are_line_feeds", u"a\r\nb\rc"_s, true, u"a\nb\nc"_s}),
    rowName);

TEST_F(PasteSheetTest, PassesTheTitleUntrimmedAndSelectsTheDocument)
{
    open();
    EXPECT_TRUE(text().hasFocus());
    QTest::keyClicks(&text(), u"words"_s);
    QTest::keyClick(&text(), Qt::Key_Return);
    EXPECT_NE(sheet(), nullptr); // a line more
    const QString rest = u"and what came of them "_s.repeated(2'000);
    QTest::keyClicks(&title(), u" Notes "_s);
    title().insert(rest); // as a paste does
    QTest::keyClick(&title(), Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(sheet(), nullptr);
    ASSERT_EQ(library.store.documents()->size(), 1);
    const Document added = library.store.documents()->first();
    EXPECT_EQ(added.title, u" Notes "_s + rest);
    EXPECT_EQ(added.text, u"words\n"_s);
    EXPECT_EQ(library.store.selectedDocumentID().get(), added.id);
    EXPECT_TRUE(before.hasFocus());
}

TEST_F(PasteSheetTest, StaysWithTheTextThatCouldNotBeStored)
{
    open();
    paste(u"words"_s);
    library.queue->writeWithoutTransaction([](Database &database) { database.execute("DROP TABLE document"); });
    click(u"add"_s);
    EXPECT_EQ(text().text(), u"words"_s);
    EXPECT_TRUE(library.store.lastError()->value_or(QString()).startsWith(u"The document couldn't be added: "_s));
}

TEST_F(PasteSheetTest, EscapeLosesWhatWasTyped)
{
    open();
    QTest::keyClicks(&title(), u"Notes"_s);
    QTest::keyClick(&title(), Qt::Key_Return);
    EXPECT_NE(sheet(), nullptr) << "there is no text yet";
    paste(u"words"_s);
    press(Qt::Key_Escape);
    EXPECT_TRUE(library.store.documents()->isEmpty());
    open();
    EXPECT_EQ(title().text() + text().text(), QString());
}

TEST_F(PasteSheetTest, StylesAreLeftBehindAndTabLeavesTheText)
{
    auto *styled = new QMimeData;
    styled->setHtml(u"<h1>Big</h1><p><b>bold</b>"_s);
    styled->setText(u"Big\nbold"_s);
    QApplication::clipboard()->setMimeData(styled);
    open();
    text().paste();
    EXPECT_EQ(text().text(), u"Big\nbold"_s);
    EXPECT_EQ(tabbedThrough(4), (QStringList{u"cancel"_s, u"add"_s, u"pasteTitle"_s, u"pasteText"_s}));
}
