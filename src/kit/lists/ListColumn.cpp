#include "kit/lists/ListColumn.h"

#include "kit/controls/ElidedLabel.h"
#include "kit/controls/PlainButton.h"
#include "kit/lists/RowList.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Symbols.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int headSpacing = 11;
constexpr int defaultHeight = 600;
/// Aligns the button's chevron, not its frame, with the texts below.
constexpr int backButtonLeft = 7;
/// Above and below the head's content. A back row below replaces the lower padding.
constexpr int headPadding = 2;

} // namespace

ListColumn::ListColumn(QWidget *parent) : QWidget(parent), m_head(new QHBoxLayout), m_body(new QVBoxLayout)
{
    setBackgroundRole(QPalette::AlternateBase);
    setAutoFillBackground(true);
    setMinimumWidth(ListMetrics::minColumnWidth);
    setMaximumWidth(ListMetrics::maxColumnWidth);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(0);
    m_head->setContentsMargins(ListMetrics::contentInset, headPadding, ListMetrics::rowInset, headPadding);
    m_head->setSpacing(headSpacing);
    m_head->addStrut(Metrics::columnHeadHeight - 2 * headPadding);
    column->addLayout(m_head);
    m_body->setSpacing(0);
    column->addLayout(m_body, 1);
}

QSize ListColumn::sizeHint() const
{
    return {ListMetrics::defaultColumnWidth, defaultHeight};
}

ElidedLabel *ListColumn::addTitle(const QString &title)
{
    auto *label = new ElidedLabel(title, Fonts::columnTitle(), Symbols::Tint::text, this);
    m_head->addWidget(label);
    return label;
}

PlainButton *ListColumn::makeBackButton(Action goBack)
{
    auto *button = new PlainButton(u"chevron.left"_s, u"All Documents"_s, this);
    button->setObjectName(u"allDocuments"_s);
    connect(button, &QPushButton::clicked, this, std::move(goBack));
    return button;
}

void ListColumn::addBackButton(Action goBack)
{
    QMargins margins = m_head->contentsMargins();
    margins.setLeft(backButtonLeft);
    m_head->setContentsMargins(margins);
    m_head->addWidget(makeBackButton(std::move(goBack)));
    m_head->addStretch();
}

void ListColumn::shortenHead(int by)
{
    QMargins margins = m_head->contentsMargins();
    margins.setTop(by);
    margins.setBottom(0);
    m_head->setContentsMargins(margins);
    m_head->itemAt(0)->spacerItem()->changeSize(0, Metrics::columnHeadHeight - 2 * by); // its strut
}

QHBoxLayout *ListColumn::makeBackRow(PlainButton &button)
{
    auto *row = new QHBoxLayout;
    row->setContentsMargins(backButtonLeft, 0, ListMetrics::rowInset, 0);
    row->addWidget(&button);
    row->addStretch();
    return row;
}

void ListColumn::addBackRow(Action goBack, QVBoxLayout &column)
{
    QMargins headMargins = m_head->contentsMargins();
    headMargins.setBottom(0);
    m_head->setContentsMargins(headMargins);
    column.addLayout(makeBackRow(*makeBackButton(std::move(goBack))));
}

void ListColumn::invalidate()
{
    m_isStale = !isVisible();
    if (!m_isStale)
        render();
}

void ListColumn::takeFocus(Qt::FocusReason reason)
{
    for (auto *list : findChildren<RowList *>()) {
        if (!list->isVisible())
            continue;
        if (!list->currentIndex().isValid())
            list->setCurrentInPlace(list->model()->index(0, 0), QItemSelectionModel::NoUpdate);
        list->scrollTo(list->currentIndex());
        list->clearFocus(); // QStackedWidget may have given it the focus for another reason
        return list->setFocus(reason);
    }
    for (auto *button : findChildren<QPushButton *>()) {
        if (button->isVisible())
            return button->setFocus(reason);
    }
}

void ListColumn::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (m_isStale)
        invalidate();
}
