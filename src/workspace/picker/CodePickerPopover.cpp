#include "workspace/picker/CodePickerPopover.h"

#include "kit/controls/Capsule.h"
#include "kit/controls/Paragraph.h"
#include "kit/lists/RowDelegate.h"
#include "kit/lists/RowLine.h"
#include "kit/lists/RowList.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Roles.h"
#include "kit/theme/Theme.h"
#include "library/LibraryStore.h"
#include "records/CharacterTable.h"
#include "records/TextTrimming.h"

#include <QFontMetrics>
#include <QLineEdit>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int listPadding = 6;
constexpr int rowSpacing = 1;
constexpr int maxListHeight = 250;
constexpr int messageLineHeight = 17;

enum Role {
    countRole = Qt::UserRole + 1, ///< qint64; absent for the row that creates a code
    colorRole, ///< QString, as stored
};

QVariant describe(const PickerRow &row, int role)
{
    const std::optional<Code> &code = row.code;
    switch (role) {
    case Qt::DisplayRole:
        return code ? code->name : u"Create “%1”"_s.arg(row.name);
    case Qt::AccessibleTextRole:
        return code ? u"%1, %2"_s.arg(code->name, RowText::counted(row.count, u"coded passage"_s))
                    : describe(row, Qt::DisplayRole);
    case countRole:
        return code ? QVariant(row.count) : QVariant();
    case colorRole:
        return code ? QVariant(code->colorHex) : QVariant();
    default:
        return {};
    }
}

/// Paints a dot or a plus, the name, and the count.
class PickerRows final : public RowDelegate {
public:
    explicit PickerRows(QObject *parent)
        : RowDelegate({.height = Metrics::rowHeightFor(Metrics::pickerRowHeight, QFontMetrics(Fonts::body()).height()),
                          .radius = Metrics::rowRadius},
            parent)
    {
    }

protected:
    bool fill(RowLine &line, const QModelIndex &index) const override
    {
        constexpr int padding = 8;
        constexpr int gap = 8;
        constexpr int plusSide = 11; // centred over the dots
        line.skipAtEnd(padding);
        const QVariant count = index.data(countRole);
        if (count.isValid()) {
            line.skip(padding);
            line.dot(Theme::codeColor(index.data(colorRole).toString()), Metrics::dotDiameter, gap);
            line.count(count.toLongLong(), m_countFont, gap);
        } else {
            line.skip(padding - 1);
            line.symbol(u"plus"_s, Theme::colors().text, plusSide, gap - 1, Symbols::semiboldStroke);
        }
        const QString name = RowText::oneLine(index.data().toString()).simplified();
        return line.text(name, m_nameFont, Theme::colors().text);
    }
    /// The row that Return takes looks like one under the mouse.
    [[nodiscard]] RowState stateOf(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        RowState state = RowDelegate::stateOf(option, index);
        state.isHovered = state.isHovered || index.row() == 0;
        return state;
    }

private:
    QFont m_nameFont = Fonts::body();
    QFont m_countFont = Fonts::caption();
};

} // namespace

CodePickerPopover::CodePickerPopover(LibraryStore &store, Document document, TextRange selection, QWidget &window)
    : Popover(window),
      m_store(store),
      m_document(std::move(document)),
      m_selection(selection),
      m_model(new ListModel<QList<PickerRow>>(describe, this)),
      m_field(new QLineEdit),
      m_list(new RowList(u"Codes"_s)),
      m_message(new Paragraph({}, Fonts::callout(), Symbols::Tint::secondary, messageLineHeight))
{
    setObjectName(u"codePicker"_s);
    setAccessibleName(u"Add Code"_s);
    buildLayout();
    connect(m_field, &QLineEdit::textChanged, this, &CodePickerPopover::render);
    connect(m_field, &QLineEdit::returnPressed, this, &CodePickerPopover::submit);
    connect(m_list, &RowList::acted, this, &CodePickerPopover::choose);
    connect(&m_store.codes(), &Notifier::changed, this, &CodePickerPopover::render);
    connect(&m_store.codeCounts(), &Notifier::changed, this, &CodePickerPopover::render);
    render();
}

void CodePickerPopover::buildLayout()
{
    m_field->setObjectName(u"pickerField"_s);
    m_field->setMaxLength(maxNameLength); // the default limit cuts what is pasted, silently
    m_field->setPlaceholderText(u"Search or create…"_s);
    m_field->setAccessibleName(u"Search or create a code"_s);
    m_list->setObjectName(u"pickerList"_s);
    m_list->setModel(m_model);
    m_list->setItemDelegate(new PickerRows(m_list));
    m_list->setUniformItemSizes(true);
    m_list->setSelectionMode(QAbstractItemView::NoSelection);
    m_list->viewport()->setAutoFillBackground(false); // the popover is seen through it

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
    column->addWidget(makeHairline(QFrame::Raised));
    column->addLayout(listRow);
}

void CodePickerPopover::openAt(const Capsule &bar, const QWidget &button)
{
    openAbove(bar, button, m_field);
}

/// The text in the field, trimmed, if no code has that name in any case.
std::optional<QString> CodePickerPopover::creatableName() const
{
    const QString name = TextTrimming::trimmed(m_field->text()).toString();
    const QString lowered = CharacterTable::lowered(name);
    const bool isTaken = std::ranges::any_of(
        m_store.codes().get(), [&](const Code &code) { return CharacterTable::lowered(code.name) == lowered; });
    return name.isEmpty() || isTaken ? std::nullopt : std::optional(name);
}

/// Perhaps a row that creates a code, and the codes whose names hold the text.
QList<PickerRow> CodePickerPopover::rows() const
{
    QList<PickerRow> rows;
    if (const std::optional<QString> name = creatableName())
        rows.append({.name = *name});
    const QString lowered = CharacterTable::lowered(TextTrimming::trimmed(m_field->text()).toString());
    for (const Code &code : m_store.codes().get()) {
        if (CharacterTable::lowered(code.name).contains(lowered))
            rows.append({.code = code, .count = m_store.codeCounts()->value(code.id)});
    }
    return rows;
}

void CodePickerPopover::render()
{
    m_model->setItems(rows());
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
    const int wanted = int(std::min<qint64>(qint64(rowHeight) * m_model->rowCount(), maxListHeight));
    m_list->setFixedHeight(std::max(wanted, rowHeight));
    if (isVisible())
        place();
}

/// Return takes the first row, which creates a new name even if longer names contain it.
void CodePickerPopover::submit()
{
    if (m_model->rowCount() > 0)
        choose(m_model->index(0));
}

void CodePickerPopover::choose(const QModelIndex &index)
{
    const PickerRow row = m_model->item(index);
    if (const std::optional<Code> code = row.code ? row.code : m_store.createCode(row.name))
        assign(*code);
}

void CodePickerPopover::assign(const Code &code)
{
    m_store.assignCode(code, m_document, m_selection);
    Q_EMIT assigned();
    close();
}
