#include "workspace/sheets/CodeChoiceList.h"

#include "workspace/sheets/CodeChoiceDelegate.h"
#include "workspace/sheets/CodeChoiceModel.h"

#include <QAccessible>
#include <QKeyEvent>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 maxHeight = 260;

} // namespace

CodeChoiceList::CodeChoiceList(CodeChoiceModel &model, QWidget *parent)
    : RowList(u"Codes"_s, parent),
      m_model(model),
      m_delegate(new CodeChoiceDelegate(this))
{
    setSelectionMode(NoSelection);
    setItemDelegate(m_delegate);
    setModel(&m_model);
    viewport()->setAutoFillBackground(false); // the sheet is seen through it
    connect(this, &RowList::acted, this, &CodeChoiceList::toggle);
    connect(&m_model, &QAbstractItemModel::modelReset, this, &CodeChoiceList::fit);
    fit();
}

void CodeChoiceList::fit()
{
    setFixedHeight(int(std::min(m_delegate->heightOf(m_model.rowCount()), maxHeight)));
}

void CodeChoiceList::toggle(const QModelIndex &index)
{
    m_model.toggle(index);
    QAccessible::State changed;
    changed.checked = true;
    QAccessibleStateChangeEvent event(this, changed);
    event.setChild(index.row());
    QAccessible::updateAccessibility(&event);
}

void CodeChoiceList::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        event->ignore();
    else
        RowList::keyPressEvent(event);
}

/// Two clicks are two clicks, however fast.
void CodeChoiceList::mouseDoubleClickEvent(QMouseEvent *event)
{
    mousePressEvent(event);
}
