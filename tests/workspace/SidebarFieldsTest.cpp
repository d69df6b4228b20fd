#include "ShownSidebar.h"

using namespace Qt::StringLiterals;

namespace {

/// What happens to a field after something was typed over its text.
struct FieldCase {
    const char *name;
    QString typed;
    Qt::Key key;
    QString resulting; ///< the code's name afterwards; empty for no code
};

class NewCodeField : public ShownSidebar, public testing::WithParamInterface<FieldCase> { };
class RenameField : public ShownSidebar, public testing::WithParamInterface<FieldCase> { };
using SidebarFields = ShownSidebar;

} // namespace

TEST_P(NewCodeField, MakesACodeOfWhatIsTyped)
{
    open();
    click(u"New Code…"_s);
    ASSERT_TRUE(newCodeField().hasFocus());
    newCodeField().setText(GetParam().typed);
    QTest::keyClick(&newCodeField(), GetParam().key);
    const bool isMade = !GetParam().resulting.isEmpty();
    EXPECT_EQ(library.store.codes()->size(), isMade ? 1 : 0);
    EXPECT_EQ(rows().contains(GetParam().resulting), isMade);
    EXPECT_FALSE(newCodeField().isVisible());
    EXPECT_TRUE(list().hasFocus()) << "the keyboard goes on from the list";
    click(u"New Code…"_s);
    EXPECT_EQ(newCodeField().text(), QString()) << "no draft comes back";
}

INSTANTIATE_TEST_SUITE_P(Endings, NewCodeField,
    testing::Values(FieldCase{"return_creates", u"Trust"_s, Qt::Key_Return, u"Trust"_s},
        FieldCase{"blanks_around_are_cut", u" \t Trust "_s, Qt::Key_Return, u"Trust"_s},
        FieldCase{"only_blanks_create_nothing", u"   "_s, Qt::Key_Return, {}},
        FieldCase{"escape_creates_nothing", u"Trust"_s, Qt::Key_Escape, {}}),
    rowName);

TEST_P(RenameField, RenamesToWhatIsTyped)
{
    open({u"Trust"_s});
    choose(u"Trust"_s, {u"Rename"_s});
    ASSERT_TRUE(renameField().hasFocus());
    EXPECT_EQ(renameField().selectedText(), u"Trust"_s);
    renameField().setText(GetParam().typed);
    QTest::keyClick(&renameField(), GetParam().key);
    EXPECT_EQ(library.store.codes()->first().name, GetParam().resulting);
    EXPECT_FALSE(renameField().isVisible());
    EXPECT_TRUE(list().hasFocus());
}

INSTANTIATE_TEST_SUITE_P(Endings, RenameField,
    testing::Values(FieldCase{"return_renames", u"Doubt"_s, Qt::Key_Return, u"Doubt"_s},
        FieldCase{"blanks_around_are_cut", u" Doubt\t"_s, Qt::Key_Return, u"Doubt"_s},
        FieldCase{"only_blanks_keep_the_name", u"  "_s, Qt::Key_Return, u"Trust"_s},
        FieldCase{"escape_keeps_the_name", u"Doubt"_s, Qt::Key_Escape, u"Trust"_s}),
    rowName);

TEST_F(SidebarFields, AClickElsewhereKeepsTheRenameOpenWithItsDraft)
{
    open({u"Trust"_s, u"Doubt"_s});
    choose(u"Trust"_s, {u"Rename"_s});
    renameField().setText(u"Draft"_s);
    click(u"Doubt"_s);
    EXPECT_FALSE(renameField().hasFocus());
    EXPECT_TRUE(renameField().isVisible());
    EXPECT_EQ(renameField().text(), u"Draft"_s);
    EXPECT_EQ(selectedRow(), u"Doubt"_s);
    EXPECT_EQ(library.store.codes()->first().name, u"Trust"_s);
    QTest::keyClick(&list(), Qt::Key_Escape);
    EXPECT_TRUE(renameField().isVisible()) << "only the field itself takes the key";
    QTest::mouseClick(&renameField(), Qt::LeftButton);
    QTest::keyClick(&renameField(), Qt::Key_Return);
    EXPECT_EQ(library.store.codes()->first().name, u"Draft"_s);
}

TEST_F(SidebarFields, KeysInAFieldDoNotReachTheList)
{
    open({u"Trust"_s, u"Doubt"_s});
    moveTo(u"Doubt"_s);
    choose(u"Trust"_s, {u"Rename"_s});
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageDown, Qt::Key_Return})
        QTest::keyClick(&renameField(), key);
    EXPECT_EQ(list().currentIndex().data().toString(), u"Doubt"_s);
    EXPECT_EQ(selectedRow(), u"Untitled Study"_s);
}

TEST_F(SidebarFields, DraftsOutliveChangesAndFollowTheirRows)
{
    open({u"Trust"_s, u"Doubt"_s});
    click(u"New Code…"_s);
    newCodeField().setText(u"First draft"_s);
    moveTo(u"Doubt"_s);
    choose(u"Doubt"_s, {u"Rename"_s});
    renameField().setText(u"Second draft"_s);
    const int renameTop = renameField().y();
    const int newCodeTop = newCodeField().y();
    library.makeCodes({u"Calm"_s});
    library.store.nestCode(library.code(u"Doubt"_s).id, library.code(u"Calm"_s).id);
    EXPECT_EQ(renameField().text(), u"Second draft"_s);
    EXPECT_EQ(newCodeField().text(), u"First draft"_s);
    EXPECT_EQ(renameField().y(), renameTop + 28);
    EXPECT_EQ(newCodeField().y(), newCodeTop + 28);
    EXPECT_TRUE(renameField().hasFocus());
    QTest::keyClick(&renameField(), Qt::Key_Escape);
    EXPECT_TRUE(newCodeField().isVisible()) << "the other field is none of its business";
}

TEST_F(SidebarFields, TheFieldGoesOnToAnotherCodeAndGoesWithADeletedOne)
{
    open({u"Trust"_s, u"Doubt"_s});
    choose(u"Trust"_s, {u"Rename"_s});
    renameField().setText(u"Draft"_s);
    choose(u"Doubt"_s, {u"Rename"_s});
    EXPECT_EQ(renameField().text(), u"Doubt"_s);
    EXPECT_TRUE(rows().contains(u"Trust"_s)) << "what was begun for the first is dropped";
    library.store.deleteCode(library.code(u"Doubt"_s));
    EXPECT_FALSE(renameField().isVisible());
}

TEST_F(SidebarFields, ANewCodeAndItsFieldScrollIntoView)
{
    openMany(100);
    moveTo(u"New Code…"_s);
    list().scrollToTop();
    QTest::keyClick(&list(), Qt::Key_Return);
    EXPECT_TRUE(list().viewport()->rect().contains(newCodeField().geometry().center()));
    const int top = newCodeField().y();
    list().scrollToTop();
    EXPECT_EQ(newCodeField().y(), list().visualRect(row(u"New Code…"_s)).y());
    EXPECT_GT(newCodeField().y(), top);
    EXPECT_FALSE(list().viewport()->rect().contains(newCodeField().geometry().center()));
    newCodeField().setText(u"Last"_s);
    QTest::keyClick(&newCodeField(), Qt::Key_Return);
    EXPECT_TRUE(list().viewport()->rect().contains(middleOf(u"Last"_s)));
}
