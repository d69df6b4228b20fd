#include "workspace/results/ResultPage.h"

#include "kit/controls/ElidedLabel.h"
#include "kit/controls/EmptyState.h"
#include "kit/controls/Hairline.h"
#include "kit/lists/ListMetrics.h"
#include "kit/lists/RowList.h"
#include "kit/theme/Fonts.h"

#include <QPushButton>
#include <QStackedWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int headerSpacing = 5;
constexpr int headerBottom = 10;

} // namespace

ResultPage::ResultPage(RowList *list, EmptyState *empty, QWidget *parent)
    : QWidget(parent),
      m_column(new QVBoxLayout(this)),
      m_title(new ElidedLabel({}, Fonts::callout(), Symbols::Tint::text, this)),
      m_count(new ElidedLabel({}, Fonts::caption(), Symbols::Tint::secondary, this)),
      m_pages(new QStackedWidget(this)),
      m_list(list),
      m_empty(empty)
{
    m_title->setObjectName(u"resultTitle"_s);
    m_count->setObjectName(u"resultCount"_s);
    m_pages->addWidget(m_list);
    m_pages->addWidget(m_empty);
    auto *header = new QVBoxLayout;
    header->setContentsMargins(ListMetrics::contentInset, 0, ListMetrics::contentInset, headerBottom);
    header->setSpacing(headerSpacing);
    header->addWidget(m_title);
    header->addWidget(m_count);
    m_column->setContentsMargins({});
    m_column->setSpacing(0);
    m_column->addLayout(header);
    m_column->addWidget(new Hairline(Hairline::Place::surface, Qt::Horizontal, this));
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

void ResultPage::render(const QString &title, const QString &count)
{
    m_title->setText(title);
    m_count->setText(count);
    m_pages->setCurrentWidget(m_list->model()->rowCount() == 0 ? static_cast<QWidget *>(m_empty) : m_list);
}

void ResultPage::takeFocus(Qt::FocusReason reason)
{
    auto *button = findChild<QPushButton *>();
    QWidget *target = m_list->isVisible() || button == nullptr ? static_cast<QWidget *>(m_list) : button;
    target->setFocus(reason);
}
