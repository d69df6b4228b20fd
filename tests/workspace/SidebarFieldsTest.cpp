#include "ShownSidebar.h"

using namespace Qt::StringLiterals;

namespace {

/// What comes of a name that is typed for a new code, and over "Calm".
struct FieldCase {
    const char *name;
    QString typed;
    Qt::Key key;
    QStringList made; ///< the codes afterwards
    QString renamed;
};

class SidebarField : public ShownSidebar, public testing::WithParamInterface<FieldCase> { };
using SidebarFields = ShownSidebar;

} // namespace

TEST_P(SidebarField, MakesOrRenamesACode)
{
    open({u"Calm"_s});
    const auto names = [this] { return rows().mid(4, library.store.codes()->size()); };
    click(u"New Code…"_s);
    ASSERT_TRUE(newCodeField().hasFocus());
    newCodeField().setText(GetParam().typed);
    QTest::keyClick(&newCodeField(), GetParam().key);
    EXPECT_EQ(names(), GetParam().made);
    EXPECT_FALSE(newCodeField().isVisible());
    EXPECT_TRUE(list().hasFocus()) << "the keyboard goes on from the list";
    click(u"New Code…"_s);
    EXPECT_EQ(newCodeField().text(), QString()) << "no draft comes back";

    choose(u"Calm"_s, {u"Rename"_s});
    ASSERT_TRUE(renameField().hasFocus());
    EXPECT_EQ(renameField().selectedText(), u"Calm"_s);
    renameField().setText(GetParam().typed);
    QTest::keyClick(&renameField(), GetParam().key);
    EXPECT_EQ(library.store.codes()->first().name, GetParam().renamed);
    EXPECT_FALSE(renameField().isVisible());
    EXPECT_TRUE(list().hasFocus());
}

INSTANTIATE_TEST_SUITE_P(Endings, SidebarField,
    testing::Values(FieldCase{"return_takes_it", u"Trust"_s, Qt::Key_Return, {u"Calm"_s, u"Trust"_s}, u"Trust"_s},
        FieldCase{"blanks_around_are_cut", u" Trust\t"_s, Qt::Key_Return, {u"Calm"_s, u"Trust"_s}, u"Trust"_s},
        FieldCase{"only_blanks_do_nothing", u"   "_s, Qt::Key_Return, {u"Calm"_s}, u"Calm"_s},
        FieldCase{"escape_does_nothing", u"Trust"_s, Qt::Key_Escape, {u"Calm"_s}, u"Calm"_s}),
    rowName);

TEST_F(SidebarFields, AClickElsewhereKeepsTheRenameOpenWithItsDraft)
{
    open({u"Trust"_s, u"Doubt"_s});
    moveTo(u"Doubt"_s);
    choose(u"Trust"_s, {u"Rename"_s});
    for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageDown})
        QTest::keyClick(&renameField(), key);
    EXPECT_EQ(list().currentIndex().data().toString(), u"Doubt"_s) << "keys in the field aren't the list's";
    renameField().setText(u"Draft"_s);
    click(u"Doubt"_s);
    EXPECT_FALSE(renameField().hasFocus());
    EXPECT_EQ(selectedRow(), u"Doubt"_s);
    EXPECT_EQ(library.store.codes()->first().name, u"Trust"_s);
    QTest::keyClick(&list(), Qt::Key_Escape);
    EXPECT_TRUE(renameField().isVisible()) << "only the field itself takes the key";
    QTest::mouseClick(&renameField(), Qt::LeftButton);
    QTest::keyClick(&renameField(), Qt::Key_Return);
    EXPECT_EQ(library.store.codes()->first().name, u"Draft"_s);
    EXPECT_EQ(selectedRow(), u"Doubt"_s);
}

TEST_F(SidebarFields, DraftsOutliveChangesAndFollowTheirRowsUntilTheseAreGone)
{
    open({u"Trust"_s, u"Doubt"_s});
    click(u"New Code…"_s);
    newCodeField().setText(u"First draft"_s);
    choose(u"Trust"_s, {u"Rename"_s});
    renameField().setText(u"Dropped draft"_s);
    choose(u"Doubt"_s, {u"Rename"_s});
    EXPECT_EQ(renameField().text(), u"Doubt"_s) << "the field goes on to another code";
    renameField().setText(u"Second draft"_s);
    const int renameTop = renameField().y();
    const int newCodeTop = newCodeField().y();
    library.makeCodes({u"Calm"_s});
    library.store.nestCode(library.code(u"Doubt"_s).id, library.code(u"Calm"_s).id);
    EXPECT_EQ(renameField().text(), u"Second draft"_s);
    EXPECT_EQ(newCodeField().text(), u"First draft"_s);
    EXPECT_EQ(renameField().y() - renameTop, list().visualRect(row(u"Calm"_s)).height());
    EXPECT_EQ(newCodeField().y() - newCodeTop, renameField().y() - renameTop);
    EXPECT_TRUE(renameField().hasFocus());
    library.store.deleteCode(library.code(u"Doubt"_s));
    EXPECT_FALSE(renameField().isVisible());
    EXPECT_TRUE(newCodeField().isVisible()) << "the other field is none of its business";
    EXPECT_TRUE(rows().contains(u"Trust"_s));
}

TEST_F(SidebarFields, ANewCodeAndItsFieldScrollIntoView)
{
    openMany(100);
    const auto isInView = [this](const QPoint &place) { return list().viewport()->rect().contains(place); };
    moveTo(u"New Code…"_s);
    list().scrollToTop();
    QTest::keyClick(&list(), Qt::Key_Return);
    EXPECT_TRUE(isInView(newCodeField().geometry().center()));
    list().scrollToTop();
    EXPECT_EQ(newCodeField().y(), list().visualRect(row(u"New Code…"_s)).y());
    EXPECT_FALSE(isInView(newCodeField().geometry().center()));
    newCodeField().setText(u"Last"_s);
    QTest::keyClick(&newCodeField(), Qt::Key_Return);
    EXPECT_TRUE(isInView(middleOf(u"Last"_s)));
}
