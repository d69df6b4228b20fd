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
    choose(u"Doubt"_s, {u"Nest Under"_s, u"Trust"_s});
    EXPECT_EQ(library.code(u"Doubt"_s).parentID, library.code(u"Trust"_s).id);
    entries.insert(3, u"Move to Top Level"_s);
    moveTo(u"Doubt"_s);
    QMenu &menu = menuAt(list(), {}, QContextMenuEvent::Keyboard);
    EXPECT_EQ(titles(menu), entries);
    entry(menu, {u"Move to Top Level"_s}).trigger();
    EXPECT_FALSE(library.code(u"Doubt"_s).parentID.has_value());
    entry(menu, {u"Color"_s, u"Gray"_s}).trigger();
    EXPECT_EQ(library.code(u"Doubt"_s).colorHex, u"#8E8E93"_s);
    EXPECT_NE(library.code(u"Trust"_s).colorHex, u"#8E8E93"_s);
    menu.close();
    QMenu &reopened = menuAt(list(), {}, QContextMenuEvent::Keyboard);
    EXPECT_TRUE(entry(reopened, {u"Color"_s, u"Gray"_s}).isChecked()) << "the present color";
    EXPECT_FALSE(entry(reopened, {u"Color"_s, u"Blue"_s}).isChecked());
    reopened.close();
}

TEST_F(SidebarMenus, OfferTheOtherCodesOldestFirstUnderTheirWholeNames)
{
    open({u"Zeal"_s, u"Trust"_s, u"Tools\t& friction"_s});
    QMenu &menu = openMenu(u"Trust"_s);
    for (const QString &submenu : {u"Nest Under"_s, u"Merge Into"_s, u"Merge Into"_s}) {
        QMenu &codes = *entry(menu, {submenu}).menu();
        Q_EMIT codes.aboutToShow();
        EXPECT_EQ(titles(codes), (QStringList{u"Zeal"_s, u"Tools && friction"_s})) << "no shortcut, neither by tab";
    }
    menu.close();
}

TEST_F(SidebarDialog, AsksBeforeItMergesOrDeletesAndCountsTheSourceOnly)
{
    open({u"100% %2"_s, u"Doubt"_s});
    const Document document = library.paste(u"Notes"_s, u"one two three"_s);
    library.store.assignCode(library.code(u"100% %2"_s), document, {0, 3});
    library.store.assignCode(library.code(u"100% %2"_s), document, {4, 3});
    library.store.assignCode(library.code(u"Doubt"_s), document, {8, 5});
    const QStringList merging{u"Merge Into"_s, u"Doubt"_s};
    choose(u"100% %2"_s, merging);
    EXPECT_EQ(alert().accessibleDescription(),
        u"“100% %2” will be merged into “Doubt”: 2 coded excerpts move over, then “100% %2” is removed."_s);
    answer(u"Cancel"_s);
    EXPECT_FALSE(hasAlert());
    EXPECT_EQ(library.store.codes()->size(), 2);
    choose(u"100% %2"_s, merging);
    answer(u"Merge"_s);
    EXPECT_EQ(library.store.codes()->size(), 1);
    EXPECT_EQ(library.store.codeCounts()->value(library.code(u"Doubt"_s).id), 3);
    for (const auto &[label, remain] : {std::pair(u"Cancel"_s, 1), {u"Delete"_s, 0}}) {
        choose(u"Doubt"_s, {u"Delete…"_s});
        EXPECT_EQ(alert().windowTitle(), u"Delete “Doubt”?"_s);
        answer(label);
        EXPECT_EQ(library.store.codes()->size(), remain);
    }
}

TEST_F(SidebarDialog, KeepsItsButtonsOnTheScreenWhateverTheCodesAreCalled)
{
    const QString endless = u"W"_s.repeated(199) + u"\U0001F600"_s.repeated(4000);
    open({endless, u"Doubt"_s});
    for (const QStringList &path : {QStringList{u"Delete…"_s}, {u"Merge Into"_s, u"Doubt"_s}}) {
        choose(endless, path);
        EXPECT_LE(alert().height(), 700);
        EXPECT_TRUE(
            (alert().windowTitle() + alert().accessibleDescription()).contains(u"“"_s + endless.left(199) + u"…”"_s));
        answer(u"Cancel"_s);
    }
}

TEST_F(SidebarDialog, RenamesAProjectAndMakesAnother)
{
    open({u"Trust"_s});
    const auto name = [this](const QString &before, const QString &text, const QString &button) {
        auto *field = alert().findChild<QLineEdit *>();
        EXPECT_EQ(field->text(), before);
        field->setText(text);
        answer(button);
        EXPECT_EQ(library.store.project()->value().name, text);
        EXPECT_EQ(selectedRow(), text);
    };
    choose(u"Untitled Study"_s, {u"Rename Project…"_s});
    name(u"Untitled Study"_s, u"Offices"_s, u"Rename"_s);
    click(u"New Project…"_s);
    name({}, u"Second"_s, u"Create"_s);
    EXPECT_FALSE(rows().contains(u"Trust"_s)) << "a project has codes of its own";
}
