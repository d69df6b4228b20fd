#include "workspace/sheets/CodeChoiceList.h"

#include "kit/lists/RowDelegate.h"
#include "kit/lists/RowLine.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Theme.h"

#include <QAccessible>
#include <QFontMetrics>
#include <QKeyEvent>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int maxHeight = 260;

enum Role {
    depthRole = Qt::UserRole + 1, ///< qint64: see `FlatCode`
    countRole, ///< qint64
    colorRole, ///< QString, as stored
};

class CheckableCodes final : public ListModel<QList<CodeChoice>> {
public:
    using ListModel::ListModel;

    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override
    {
        return ListModel::flags(index) | Qt::ItemIsUserCheckable;
    }
};

int rowHeight()
{
    constexpr int minHeight = 26;
    constexpr int textPadding = 5;
    return std::max(minHeight, QFontMetrics(Fonts::body()).height() + 2 * textPadding);
}

/// Paints a mark that says whether the code is chosen, its dot, its name, and the count of its passages.
class CodeChoiceRows final : public RowDelegate {
public:
    explicit CodeChoiceRows(QObject *parent)
        : RowDelegate({.height = rowHeight(),
                          .inset = 8,
                          .radius = Metrics::rowRadius,
                          .gapAbove = 1,
                          .gapBelow = 1,
                          .airAbove = 5,
                          .airBelow = 5},
            parent)
    {
    }

    /// Of so many rows together, in logical pixels.
    [[nodiscard]] qint64 heightOf(qint64 rowCount) const
    {
        return rowCount * (shape().height + shape().gapAbove + shape().gapBelow) + shape().airAbove + shape().airBelow;
    }

protected:
    bool fill(RowLine &line, const QModelIndex &index) const override
    {
        constexpr int padding = 16;
        constexpr int gap = 8;
        constexpr int markSide = 13;
        constexpr int dotSide = 8;
        const ThemeColors &colors = Theme::colors();
        const bool isChosen = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
        line.skip(padding + indentOf(index, line.rest().width()));
        line.skipAtEnd(padding);
        line.symbol(isChosen ? u"checkmark.circle.fill"_s : u"circle"_s,
            isChosen ? colors.accentForeground : colors.secondary, markSide, gap);
        line.dot(Theme::codeColor(index.data(colorRole).toString()), dotSide, gap);
        line.count(index.data(countRole).toLongLong(), m_countFont, gap);
        return line.text(index.data().toString(), m_nameFont, colors.text);
    }

private:
    /// However deep in the tree a code is, half of its row is left for it.
    [[nodiscard]] static int indentOf(const QModelIndex &index, int width)
    {
        constexpr int levelIndent = 14;
        return int(std::min<qint64>(index.data(depthRole).toLongLong(), width / 2 / levelIndent)) * levelIndent;
    }

    QFont m_nameFont = Fonts::body();
    QFont m_countFont = Fonts::caption();
};

} // namespace

CodeChoiceList::CodeChoiceList(QWidget *parent)
    : RowList(u"Codes"_s, parent),
      m_codes(new CheckableCodes([this](const CodeChoice &choice, int role) { return describe(choice, role); }, this))
{
    setSelectionMode(NoSelection);
    setItemDelegate(new CodeChoiceRows(this));
    setModel(m_codes);
    viewport()->setAutoFillBackground(false); // the sheet is seen through it
    connect(this, &RowList::acted, this, &CodeChoiceList::toggle);
    fitHeight();
}

QVariant CodeChoiceList::describe(const CodeChoice &choice, int role) const
{
    const Code &code = choice.line.code;
    switch (role) {
    case Qt::DisplayRole:
        return code.name;
    case Qt::CheckStateRole:
        return int(m_chosen.contains(code.id) ? Qt::Checked : Qt::Unchecked);
    case Qt::AccessibleTextRole:
        return u"%1, %2"_s.arg(code.name, RowText::counted(choice.count, u"coded passage"_s));
    case depthRole:
        return choice.line.depth;
    case countRole:
        return choice.count;
    case colorRole:
        return code.colorHex;
    default:
        return {};
    }
}

QList<QUuid> CodeChoiceList::chosenIDs() const
{
    QList<QUuid> ids;
    for (const CodeChoice &choice : m_codes->items()) {
        if (m_chosen.contains(choice.line.id()))
            ids.append(choice.line.id());
    }
    return ids;
}

void CodeChoiceList::setCodes(const QList<FlatCode> &codes, const QHash<QUuid, qint64> &counts)
{
    QList<CodeChoice> choices;
    for (const FlatCode &line : codes)
        choices.append({line, counts.value(line.id())});
    m_codes->setItems(choices);
    const QList<QUuid> stillThere = chosenIDs();
    m_chosen = QSet(stillThere.begin(), stillThere.end());
    fitHeight();
    Q_EMIT chosenCountChanged();
}

void CodeChoiceList::fitHeight()
{
    const auto &rows = static_cast<const CodeChoiceRows &>(*itemDelegate());
    setFixedHeight(int(std::min<qint64>(rows.heightOf(m_codes->rowCount()), maxHeight)));
}

void CodeChoiceList::toggle(const QModelIndex &index)
{
    const QUuid id = m_codes->item(index).line.id();
    if (!m_chosen.remove(id))
        m_chosen.insert(id);
    Q_EMIT m_codes->dataChanged(index, index, {Qt::CheckStateRole});
    QAccessible::State changed;
    changed.checked = true;
    QAccessibleStateChangeEvent event(this, changed);
    event.setChild(index.row());
    QAccessible::updateAccessibility(&event);
    Q_EMIT chosenCountChanged();
}

void CodeChoiceList::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        event->ignore();
    else
        RowList::keyPressEvent(event);
}

/// A double click counts as two clicks.
void CodeChoiceList::mouseDoubleClickEvent(QMouseEvent *event)
{
    mousePressEvent(event);
}
