#include "kit/lists/SnippetList.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <limits>

SnippetList::SnippetList(const QString &accessibleName, int estimatedHeight, QWidget *parent)
    : RowList(accessibleName, parent),
      m_estimatedHeight(estimatedHeight)
{
    setSelectionMode(NoSelection);
}

QModelIndex SnippetList::indexOf(int row) const
{
    return model() != nullptr ? model()->index(row, 0, rootIndex()) : QModelIndex();
}

QRect SnippetList::visualRect(const QModelIndex &index) const
{
    if (!index.isValid() || index.row() >= m_heights.count())
        return {};
    const qint64 top = m_heights.top(index.row()) - verticalScrollBar()->value();
    constexpr qint64 farAway = std::numeric_limits<int>::max() / 2;
    return {0, int(std::clamp(top, -farAway, farAway)), viewport()->width(), m_heights.height(index.row())};
}

QModelIndex SnippetList::indexAt(const QPoint &point) const
{
    const qint64 y = qint64(verticalScrollBar()->value()) + point.y();
    if (y < 0 || y >= m_heights.total() || !viewport()->rect().contains(point))
        return {};
    return indexOf(m_heights.blockAt(y));
}

// Measuring

void SnippetList::reset()
{
    RowList::reset();
    forgetHeights();
}

void SnippetList::doItemsLayout()
{
    // QListView would ask for the height of every row.
    forgetHeights();
    QAbstractItemView::doItemsLayout(); // NOLINT(bugprone-parent-virtual-call)
}

void SnippetList::forgetHeights()
{
    const int count = model() != nullptr ? model()->rowCount(rootIndex()) : 0;
    const qint64 value = verticalScrollBar()->value();
    int firstInView = 0;
    qint64 hidden = 0; // of that row, above the view
    if (m_heights.count() > 0) {
        firstInView = std::clamp(m_heights.blockAt(value), 0, std::max(0, count - 1));
        hidden = value - m_heights.top(firstInView);
    }
    m_heights = BlockHeights(std::vector<int>(size_t(count), m_estimatedHeight));
    m_isMeasured.assign(size_t(count), false);
    if (count > 0) {
        measure(firstInView);
        showFrom(m_heights.top(firstInView) + std::min<qint64>(hidden, m_heights.height(firstInView) - 1));
    }
    measureInView();
    viewport()->update();
}

int SnippetList::measure(int row)
{
    if (m_isMeasured[size_t(row)])
        return 0;
    const QModelIndex index = indexOf(row);
    const int height = std::max(1, itemDelegate()->sizeHint(optionFor(index), index).height());
    const int growth = height - m_heights.height(row);
    m_heights.setHeight(row, height);
    m_isMeasured[size_t(row)] = true;
    return growth;
}

void SnippetList::measureInView()
{
    if (m_isMeasuring)
        return;
    const QScopedValueRollback guard(m_isMeasuring, true);
    qint64 top = verticalScrollBar()->value();
    if (m_heights.count() > 0) {
        const bool isAtEnd = top > 0 && top == verticalScrollBar()->maximum();
        if (isAtEnd) {
            measureUpFrom(m_heights.count() - 1);
            top = m_heights.total() - viewport()->height();
        }
        const int first = m_heights.blockAt(top);
        const bool isCutOff = top > m_heights.top(first);
        const int growth = measure(first);
        if (isCutOff) // what follows it is in view and must stay where it is
            top = std::max(top + growth, m_heights.top(first));
        measureDownFrom(first, top + viewport()->height());
    }
    showFrom(top);
}

void SnippetList::measureDownFrom(int row, qint64 bottom)
{
    for (; row < m_heights.count() && m_heights.top(row) < bottom; ++row)
        measure(row);
}

/// As many rows as the view can hold, `row` being the lowest.
void SnippetList::measureUpFrom(int row)
{
    for (int room = viewport()->height(); row >= 0 && room > 0; --row) {
        measure(row);
        room -= m_heights.height(row);
    }
}

void SnippetList::showFrom(qint64 top)
{
    const QScopedValueRollback guard(m_isMeasuring, true);
    const qint64 maxValue = std::max<qint64>(0, m_heights.total() - viewport()->height());
    verticalScrollBar()->setRange(0, int(std::min<qint64>(maxValue, std::numeric_limits<int>::max())));
    verticalScrollBar()->setValue(int(std::clamp<qint64>(top, 0, verticalScrollBar()->maximum())));
}

// Scrolling

void SnippetList::updateGeometries()
{
    verticalScrollBar()->setSingleStep(std::max(1, m_estimatedHeight / 2));
    verticalScrollBar()->setPageStep(viewport()->height());
    measureInView();
    QAbstractItemView::updateGeometries(); // NOLINT(bugprone-parent-virtual-call)
}

void SnippetList::resizeEvent(QResizeEvent *event)
{
    if (event->size().width() != event->oldSize().width())
        forgetHeights();
    QAbstractItemView::resizeEvent(event); // NOLINT(bugprone-parent-virtual-call)
}

void SnippetList::scrollContentsBy(int dx, int dy)
{
    measureInView();
    viewport()->update();
    RowList::scrollContentsBy(dx, dy);
}

void SnippetList::scrollTo(const QModelIndex &index, ScrollHint hint)
{
    if (!index.isValid() || index.row() >= m_heights.count())
        return;
    measureUpFrom(index.row());
    const qint64 value = verticalScrollBar()->value();
    const qint64 top = m_heights.top(index.row());
    const qint64 slack = viewport()->height() - m_heights.height(index.row());
    if (hint == PositionAtTop || (hint == EnsureVisible && (top < value || slack < 0)))
        showFrom(top);
    else if (hint == PositionAtCenter)
        showFrom(top - slack / 2);
    else if (hint == PositionAtBottom || top > value + slack)
        showFrom(top - slack);
    measureInView();
    viewport()->update();
}

QModelIndex SnippetList::moveCursor(CursorAction action, Qt::KeyboardModifiers)
{
    if (m_heights.count() == 0)
        return {};
    return indexOf(std::clamp(rowAfter(action), 0, m_heights.count() - 1));
}

int SnippetList::rowAfter(CursorAction action) const
{
    const int row = currentIndex().row(); // -1 without one
    switch (action) {
    case MoveUp:
    case MoveLeft:
    case MovePrevious:
        return row - 1;
    case MoveDown:
    case MoveRight:
    case MoveNext:
        return row + 1;
    case MoveHome:
        return 0;
    case MoveEnd:
        return m_heights.count() - 1;
    case MovePageUp:
        return std::min(row - 1, m_heights.blockAt(m_heights.top(std::max(row, 0)) - viewport()->height()));
    case MovePageDown:
        return std::max(row + 1, m_heights.blockAt(m_heights.top(std::max(row, 0)) + viewport()->height()));
    }
    Q_UNREACHABLE();
}

// Showing

QStyleOptionViewItem SnippetList::optionFor(const QModelIndex &index) const
{
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    option.rect = visualRect(index);
    if (index == currentIndex() && hasFocus())
        option.state |= QStyle::State_HasFocus;
    else
        option.state &= ~QStyle::State_HasFocus;
    if (selectionModel() != nullptr && selectionModel()->isSelected(index))
        option.state |= QStyle::State_Selected;
    return option;
}

void SnippetList::paintEvent(QPaintEvent *event)
{
    if (m_heights.count() == 0)
        return;
    QPainter painter(viewport());
    const qint64 value = verticalScrollBar()->value();
    const qint64 bottom = value + event->rect().bottom();
    for (int row = m_heights.blockAt(value + event->rect().top());
         row < m_heights.count() && m_heights.top(row) <= bottom; ++row) {
        const QModelIndex index = indexOf(row);
        itemDelegate()->paint(&painter, optionFor(index), index);
    }
}

void SnippetList::setSelection(const QRect &rect, QItemSelectionModel::SelectionFlags command)
{
    selectionModel()->select(indexAt(rect.center()), command);
}

QRegion SnippetList::visualRegionForSelection(const QItemSelection &selection) const
{
    QRegion region;
    for (const QModelIndex &index : selection.indexes())
        region += visualRect(index);
    return region & viewport()->rect();
}
