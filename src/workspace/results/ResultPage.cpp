#include "workspace/results/ResultPage.h"

#include "kit/controls/ElidedLabel.h"
#include "kit/controls/EmptyState.h"
#include "kit/lists/RowList.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Roles.h"

#include <QStackedWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

ResultPage::ResultPage(QWidget *title, int spacing, RowList *list, EmptyState *empty)
    : m_column(new QVBoxLayout(this)),
      m_count(new ElidedLabel({}, Fonts::caption(), Symbols::Tint::secondary)),
      m_pages(new QStackedWidget),
      m_list(list),
      m_empty(empty)
{
    constexpr int headerBottom = 10;
    m_count->setObjectName(u"resultCount"_s);
    m_pages->addWidget(m_list);
    m_pages->addWidget(m_empty);
    auto *header = new QVBoxLayout;
    header->setContentsMargins(ListMetrics::contentInset, 0, ListMetrics::contentInset, headerBottom);
    header->setSpacing(spacing);
    header->addWidget(title);
    header->addWidget(m_count);
    m_column->setContentsMargins({});
    m_column->setSpacing(0);
    m_column->addLayout(header);
    m_column->addWidget(makeHairline());
    m_column->addWidget(m_pages, 1);
}

void ResultPage::addTopRow(QHBoxLayout *row, int gapBelow)
{
    m_column->insertLayout(0, row);
    m_column->insertSpacing(1, gapBelow);
}

void ResultPage::setTopPadding(int padding)
{
    m_column->setContentsMargins(0, padding, 0, 0);
}

void ResultPage::renderCount(const QString &count)
{
    m_count->setText(count);
    m_pages->setCurrentWidget(m_list->model()->rowCount() == 0 ? static_cast<QWidget *>(m_empty) : m_list);
}
