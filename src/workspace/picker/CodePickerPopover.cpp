#include "workspace/picker/CodePickerPopover.h"

#include "kit/controls/Capsule.h"
#include "kit/controls/Hairline.h"
#include "kit/controls/Paragraph.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"
#include "library/LibraryStore.h"
#include "records/NameLength.h"
#include "workspace/picker/PickerDelegate.h"
#include "workspace/picker/PickerModel.h"

#include <QLineEdit>
#include <QListView>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int listPadding = 6;
constexpr int rowSpacing = 1;
constexpr int highestList = 250;
constexpr int messageLineHeight = 17;

} // namespace

CodePickerPopover::CodePickerPopover(LibraryStore &store, Document document, TextRange selection, QWidget &window)
    : Popover(window),
      m_store(store),
      m_document(std::move(document)),
      m_selection(selection),
      m_model(new PickerModel(this)),
      m_field(new QLineEdit),
      m_list(new QListView),
      m_message(new Paragraph({}, Fonts::callout(), Symbols::Tint::secondary, messageLineHeight))
{
    setObjectName(u"codePicker"_s);
    setAccessibleName(u"Add Code"_s);
    buildLayout();
    connect(m_field, &QLineEdit::textChanged, this, &CodePickerPopover::render);
    connect(m_field, &QLineEdit::returnPressed, this, &CodePickerPopover::submit);
    connect(m_list, &QListView::clicked, this, &CodePickerPopover::choose);
    connect(m_list, &QListView::activated, this, &CodePickerPopover::choose);
    connect(&m_store.codes(), &Notifier::changed, this, &CodePickerPopover::render);
    connect(&m_store.codeCounts(), &Notifier::changed, this, &CodePickerPopover::render);
    render();
}

void CodePickerPopover::buildLayout()
{
    m_field->setObjectName(u"pickerField"_s);
    m_field->setMaxLength(maxNameLength); // by itself it cuts earlier, silently
    m_field->setPlaceholderText(u"Search or create…"_s);
    m_field->setAccessibleName(u"Search or create a code"_s);
    m_list->setObjectName(u"pickerList"_s);
    m_list->setAccessibleName(u"Codes"_s);
    m_list->setModel(m_model);
    m_list->setItemDelegate(new PickerDelegate(m_list));
    m_list->setFrameShape(QFrame::NoFrame);
    m_list->setSpacing(0);
    m_list->setUniformItemSizes(true);
    m_list->setMouseTracking(true);
    m_list->viewport()->setAutoFillBackground(false);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setSelectionMode(QAbstractItemView::NoSelection);

    auto *fieldRow = new QVBoxLayout;
    fieldRow->setContentsMargins(10, 8, 10, 8);
    fieldRow->addWidget(m_field);
    auto *listRow = new QVBoxLayout;
    listRow->setContentsMargins(listPadding, listPadding, listPadding, listPadding);
    listRow->addWidget(m_list);
    listRow->addWidget(m_message);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(fieldRow);
    column->addWidget(new Hairline(Hairline::Place::raised));
    column->addLayout(listRow);
}

void CodePickerPopover::openAt(const Capsule &bar, const QWidget &button)
{
    openAbove(bar, button, m_field);
}

void CodePickerPopover::render()
{
    m_model->show(m_field->text(), m_store.codes().get(), m_store.codeCounts().get());
    const bool isEmpty = m_model->rowCount() == 0;
    m_message->setText(m_store.codes()->isEmpty() ? u"No codes yet — type a name above to create the first one."_s
                                                  : u"No matching code."_s);
    m_message->setVisible(isEmpty);
    m_list->setVisible(!isEmpty);
    fitList();
}

void CodePickerPopover::fitList()
{
    const int rowHeight = m_list->itemDelegate()->sizeHint({}, {}).height() + rowSpacing;
    const int wanted = int(std::min<qint64>(qint64(rowHeight) * m_model->rowCount(), highestList));
    m_list->setFixedHeight(std::max(wanted, rowHeight));
    if (isVisible())
        place();
}

void CodePickerPopover::choose(const QModelIndex &index)
{
    if (const std::optional<Code> code = m_model->codeAt(index.row()))
        assign(*code);
    else
        static_cast<void>(createAndAssign());
}

/// A name that no code bears is created, even if longer names that hold it are listed.
void CodePickerPopover::submit()
{
    if (createAndAssign() || m_model->filteredCodes().isEmpty())
        return;
    assign(m_model->filteredCodes().first());
}

bool CodePickerPopover::createAndAssign()
{
    const std::optional<QString> name = m_model->creatableName();
    const std::optional<Code> code = name ? m_store.createCode(*name) : std::nullopt;
    if (!code)
        return false;
    assign(*code);
    return true;
}

void CodePickerPopover::assign(const Code &code)
{
    // The model's list changes while the store assigns it.
    const Code assignedCode = code; // NOLINT(performance-unnecessary-copy-initialization)
    m_store.assignCode(assignedCode, m_document, m_selection);
    Q_EMIT assigned();
    close();
}
