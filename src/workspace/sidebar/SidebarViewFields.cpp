#include "workspace/sidebar/SidebarView.h"

#include "library/LibraryStore.h"
#include "records/TextTrimming.h"
#include "workspace/lists/StoreLookup.h"
#include "workspace/sidebar/InlineField.h"
#include "workspace/sidebar/SidebarList.h"
#include "workspace/sidebar/SidebarMetrics.h"
#include "workspace/sidebar/SidebarModel.h"

#include <QStyle>

using Kind = SidebarRow::Kind;

namespace {

/// The place of that row's name in the list's viewport; empty for an invalid index.
QRect nameRect(const SidebarList &list, const QModelIndex &index)
{
    if (!index.isValid())
        return {};
    const QRect row = list.visualRect(index);
    const QRect name = SidebarMetrics::name(row, SidebarModel::rowAt(index).depth);
    return QStyle::visualRect(list.layoutDirection(), row, name);
}

} // namespace

void SidebarView::openNewCodeField()
{
    if (!m_newCodeField->isOpen())
        m_newCodeField->open({});
    render();
    startEditing(*m_newCodeField, m_model->find(Kind::newCode));
}

void SidebarView::closeNewCodeField()
{
    m_newCodeField->close();
    render();
}

void SidebarView::commitNewCode()
{
    const QString name = TextTrimming::trimmed(m_newCodeField->text()).toString();
    closeNewCodeField();
    if (!name.isEmpty())
        m_store.createCode(name);
}

void SidebarView::openRenameField(const Code &code)
{
    m_renamingCodeID = code.id;
    m_renameField->open(code.name);
    render();
    startEditing(*m_renameField, m_model->find(Kind::code, code.id));
}

void SidebarView::closeRenameField()
{
    m_renamingCodeID.reset();
    m_renameField->close();
    render();
}

void SidebarView::commitRename()
{
    const QString name = TextTrimming::trimmed(m_renameField->text()).toString();
    const auto code = StoreLookup::code(m_store, m_renamingCodeID.value_or(QUuid()));
    closeRenameField();
    if (code && !name.isEmpty())
        m_store.renameCode(*code, name);
}

void SidebarView::startEditing(InlineField &field, const QModelIndex &index)
{
    m_list->scrollTo(index);
    placeFields();
    field.setFocus(Qt::OtherFocusReason);
}

void SidebarView::placeFields()
{
    m_newCodeField->place(nameRect(*m_list, m_newCodeField->isOpen() ? m_model->find(Kind::newCode) : QModelIndex()));
    m_renameField->place(
        nameRect(*m_list, m_renamingCodeID ? m_model->find(Kind::code, *m_renamingCodeID) : QModelIndex()));
}
