#include "ShownSidebar.h"

using namespace Qt::StringLiterals;

namespace {

QStringList titles(const QMenu &menu)
{
    QStringList result;
    for (const QAction *action : menu.actions())
        result.append(action->isSeparator() ? u"-"_s : action->text());
    return result;
}

using SidebarMenus = ShownSidebar;
using SidebarDialog = ShownSidebar;

} // namespace

TEST_F(SidebarMenus, OfferWhatCanBeDoneWithoutSelecting)
{
    open({u"Trust"_s, u"Doubt"_s});
    QStringList entries{u"Rename"_s, u"Color"_s, u"-"_s, u"Nest Under"_s, u"Merge Into"_s, u"-"_s, u"Delete…"_s};
    EXPECT_EQ(titles(openMenu(u"Doubt"_s)), entries);
    EXPECT_EQ(selectedRow(), u"Untitled Study"_s);
    QApplication::activePopupWidget()->close();
    library.store.nestCode(library.code(u"Doubt"_s).id, library.code(u"Trust"_s).id);
    entries.insert(3, u"Move to Top Level"_s);
    moveTo(u"Doubt"_s);
    QMenu &menu = requestMenu(QContextMenuEvent::Keyboard, {});
    EXPECT_EQ(titles(menu), entries);
    for (const QAction *action : entry(menu, {u"Color"_s}).menu()->actions())
        EXPECT_FALSE(action->icon().isNull()) << action->text().toStdString();
}

TEST_F(SidebarMenus, OfferTheOtherCodesOldestFirstUnderTheirWholeNames)
{
    open({u"Zeal"_s, u"Trust"_s, u"Tools\t& friction"_s});
    QMenu &menu = openMenu(u"Trust"_s);
    for (const QString &submenu : {u"Nest Under"_s, u"Merge Into"_s}) {
        QMenu &codes = *entry(menu, {submenu}).menu();
        for (int times = 0; times < 2; ++times)
            Q_EMIT codes.aboutToShow();
        EXPECT_EQ(titles(codes), (QStringList{u"Zeal"_s, u"Tools && friction"_s}))
            << "no letter is underlined, no shortcut";
    }
    library.store.deleteCode(library.code(u"Zeal"_s));
    library.store.deleteCode(library.code(u"Tools\t& friction"_s));
    menu.close();
    QAction &merging = entry(openMenu(u"Trust"_s), {u"Merge Into"_s});
    Q_EMIT merging.menu()->aboutToShow();
    EXPECT_FALSE(merging.isEnabled()) << "there is no other code";
}

TEST_F(SidebarMenus, ChangeTheColourAndThePlaceOfACode)
{
    open({u"Trust"_s, u"Doubt"_s});
    choose(u"Trust"_s, {u"Color"_s, u"Gray"_s});
    EXPECT_EQ(library.code(u"Trust"_s).colorHex, u"#8E8E93"_s);
    choose(u"Doubt"_s, {u"Nest Under"_s, u"Trust"_s});
    EXPECT_EQ(library.code(u"Doubt"_s).parentID, library.code(u"Trust"_s).id);
    choose(u"Doubt"_s, {u"Move to Top Level"_s});
    EXPECT_FALSE(library.code(u"Doubt"_s).parentID.has_value());
}

TEST_F(SidebarDialog, AsksBeforeItDeletes)
{
    open({u"Trust"_s});
    const QStringList path{u"Delete…"_s};
    choose(u"Trust"_s, path);
    EXPECT_EQ(alert().windowTitle(), u"Delete “Trust”?"_s);
    EXPECT_EQ(alert().accessibleDescription(),
        u"“Trust” and all its coded excerpts will be removed. This can't be undone."_s);
    EXPECT_EQ(alertButtons(), (QStringList{u"Cancel"_s, u"Delete"_s}));
    answer(u"Cancel"_s);
    EXPECT_FALSE(hasAlert());
    EXPECT_TRUE(rows().contains(u"Trust"_s));
    choose(u"Trust"_s, path);
    answer(u"Delete"_s);
    EXPECT_FALSE(rows().contains(u"Trust"_s));
}

TEST_F(SidebarDialog, TellsWhatMergingMovesAndCountsTheSourceOnly)
{
    open({u"100% %2"_s, u"Doubt"_s});
    const Document document = library.paste(u"Notes"_s, u"one two three"_s);
    library.store.assignCode(library.code(u"100% %2"_s), document, {0, 3});
    library.store.assignCode(library.code(u"100% %2"_s), document, {4, 3});
    library.store.assignCode(library.code(u"Doubt"_s), document, {8, 5});
    const QStringList path{u"Merge Into"_s, u"Doubt"_s};
    choose(u"100% %2"_s, path);
    EXPECT_EQ(alert().windowTitle(), u"Merge Codes?"_s);
    EXPECT_EQ(alert().accessibleDescription(),
        u"“100% %2” will be merged into “Doubt”: 2 coded excerpts move over, then “100% %2” is removed."_s);
    EXPECT_EQ(alertButtons(), (QStringList{u"Cancel"_s, u"Merge"_s}));
    answer(u"Cancel"_s);
    EXPECT_EQ(library.store.codes()->size(), 2);
    choose(u"100% %2"_s, path);
    answer(u"Merge"_s);
    EXPECT_EQ(library.store.codes()->size(), 1);
    EXPECT_EQ(library.store.codeCounts()->value(library.code(u"Doubt"_s).id), 3);
}

TEST_F(SidebarDialog, KeepsItsButtonsOnTheScreenWhateverTheCodesAreCalled)
{
    const QString endless = u"W"_s.repeated(199) + u"\U0001F600"_s.repeated(4000);
    open({endless, u"Doubt"_s});
    choose(endless, {u"Delete…"_s});
    EXPECT_LE(alert().height(), 700);
    EXPECT_EQ(alert().windowTitle(), u"Delete “"_s + u"W"_s.repeated(199) + u"…”?"_s);
    answer(u"Cancel"_s);
    choose(endless, {u"Merge Into"_s, u"Doubt"_s});
    EXPECT_LE(alert().height(), 700);
    answer(u"Merge"_s);
    EXPECT_EQ(library.store.codes()->size(), 1);
}

TEST_F(SidebarDialog, RenamesAProjectAndMakesAnother)
{
    open({u"Trust"_s});
    choose(u"Untitled Study"_s, {u"Rename Project…"_s});
    auto *field = alert().findChild<QLineEdit *>();
    EXPECT_EQ(field->text(), u"Untitled Study"_s);
    field->setText(u"Offices"_s);
    answer(u"Rename"_s);
    EXPECT_EQ(library.store.project()->value().name, u"Offices"_s);
    EXPECT_EQ(selectedRow(), u"Offices"_s);

    click(u"New Project…"_s);
    field = alert().findChild<QLineEdit *>();
    EXPECT_EQ(field->text(), QString());
    field->setText(u"Second"_s);
    answer(u"Create"_s);
    EXPECT_EQ(selectedRow(), u"Second"_s);
    EXPECT_FALSE(rows().contains(u"Trust"_s)) << "a project has codes of its own";
}
