#include "workspace/sidebar/CodeRowMenu.h"

#include "kit/lists/RowText.h"
#include "kit/theme/CodeColor.h"
#include "kit/theme/Roles.h"
#include "kit/theme/Symbols.h"
#include "records/CodePalette.h"

#include <algorithm>

using namespace Qt::StringLiterals;

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
    addAction(u"Rename"_s, this, &CodeRowMenu::renamePicked);
    addColors();
    addSeparator();
    if (code.parentID)
        addAction(u"Move to Top Level"_s, this, &CodeRowMenu::topLevelPicked);
    addCodes(u"Nest Under"_s, others, &CodeRowMenu::parentPicked);
    addCodes(u"Merge Into"_s, others, &CodeRowMenu::mergeTargetPicked);
    addSeparator();
    setDestructive(*addAction(u"Delete…"_s, this, &CodeRowMenu::deletePicked));
}

void CodeRowMenu::addColors()
{
    QMenu *menu = addMenu(u"Color"_s);
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
