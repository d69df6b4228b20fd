#include "workspace/sidebar/CodeRowMenu.h"

#include "records/CodePalette.h"
#include "workspace/lists/RowText.h"
#include "workspace/theme/CodeColor.h"
#include "workspace/theme/Roles.h"
#include "workspace/theme/Symbols.h"

#include <algorithm>

namespace {

QList<Code> withoutCode(QList<Code> codes, const QUuid &id)
{
    codes.removeIf([&](const Code &each) { return each.id == id; });
    return codes;
}

} // namespace

CodeRowMenu::CodeRowMenu(const Code &code, const QList<Code> &codes, QWidget *parent) : QMenu(parent)
{
    const QList<Code> others = withoutCode(codes, code.id);
    addAction(tr("Rename"), this, &CodeRowMenu::renamePicked);
    addColors();
    addSeparator();
    if (code.parentID)
        addAction(tr("Move to Top Level"), this, &CodeRowMenu::topLevelPicked);
    addCodes(tr("Nest Under"), others, &CodeRowMenu::parentPicked);
    addCodes(tr("Merge Into"), others, &CodeRowMenu::mergeTargetPicked);
    addSeparator();
    setDestructive(*addAction(tr("Delete…"), this, &CodeRowMenu::deletePicked));
}

void CodeRowMenu::addColors()
{
    QMenu *menu = addMenu(tr("Color"));
    for (const PaletteColor &color : CodePalette::colors()) {
        const QIcon dot = Symbols::dot(CodeColor::orAccent(color.hex));
        menu->addAction(dot, color.name, this, [this, hex = color.hex] { Q_EMIT colorPicked(hex); });
    }
}

void CodeRowMenu::addCodes(const QString &title, const QList<Code> &others, void (CodeRowMenu::*picked)(const QUuid &))
{
    QMenu *menu = addMenu(title);
    menu->menuAction()->setEnabled(!others.isEmpty());
    // Thousands of entries take a while: they are made when they are asked for.
    connect(menu, &QMenu::aboutToShow, this, [this, menu, others, picked] {
        if (!menu->isEmpty())
            return;
        for (const Code &other : others)
            menu->addAction(RowText::forMenu(other.name, menu->font()), this,
                [this, picked, id = other.id] { (this->*picked)(id); });
    });
}
