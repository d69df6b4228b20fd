#include "kit/controls/EmptyState.h"

#include "kit/controls/Paragraph.h"
#include "kit/theme/Fonts.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Symbols.h"
#include "kit/theme/Theme.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

namespace {

constexpr int iconGap = 13;
constexpr int titleHeight = 24;
constexpr int descriptionGap = 4;
constexpr int descriptionLine = 17;
constexpr int buttonsGap = 17;
constexpr int sidePadding = 28;
constexpr double belowTitle = .5275; // of the window's height, so that neighbouring columns agree

class Icon final : public QWidget {
public:
    Icon(QString symbol, int size, QWidget *parent) : QWidget(parent), m_symbol(std::move(symbol))
    {
        setFixedSize(size, size);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        Symbols::paint(painter, rect(), m_symbol, Theme::colors().tertiary);
    }

private:
    QString m_symbol;
};

} // namespace

EmptyState::EmptyState(
    const QString &symbol, int iconSize, const QString &title, const QString &description, QWidget *parent)
    : QWidget(parent),
      m_aboveTitle(iconSize + iconGap),
      m_column(new QVBoxLayout(this)),
      m_buttons(new QVBoxLayout),
      m_title(new Paragraph(title, Fonts::thirdTitle(), Symbols::Tint::text, titleHeight, this)),
      m_description(new Paragraph({}, Fonts::callout(), Symbols::Tint::secondary, descriptionLine, this))
{
    m_title->setAlignment(Qt::AlignHCenter);
    m_description->setAlignment(Qt::AlignHCenter);
    m_buttons->setSpacing(Metrics::controlSpacing);
    auto *buttonRow = new QHBoxLayout;
    buttonRow->addStretch();
    buttonRow->addLayout(m_buttons);
    buttonRow->addStretch();

    m_column->setContentsMargins(sidePadding, 0, sidePadding, 0);
    m_column->setSpacing(0);
    m_column->addStretch();
    m_column->addWidget(new Icon(symbol, iconSize, this), 0, Qt::AlignHCenter);
    m_column->addSpacing(iconGap);
    m_column->addWidget(m_title);
    m_column->addWidget(m_description);
    m_column->addLayout(buttonRow);
    m_column->addStretch();
    setDescription(description);
}

void EmptyState::setTitle(const QString &title)
{
    m_title->setText(title);
}

void EmptyState::setDescription(const QString &description)
{
    m_description->setText(description);
    m_description->setContentsMargins(0, descriptionGap, 0, 0);
    m_description->setVisible(!description.isEmpty());
}

void EmptyState::addButton(QPushButton *button)
{
    if (m_buttons->isEmpty())
        m_buttons->setContentsMargins(0, buttonsGap, 0, 0);
    m_buttons->addWidget(button);
}

bool EmptyState::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::LayoutRequest:
        placeTitle();
        break;
    default:
        break;
    }
    return QWidget::event(event);
}

/// Splits the free height between the stretches at the top and the bottom of the column.
void EmptyState::placeTitle()
{
    const int content =
        m_column->hasHeightForWidth() ? m_column->heightForWidth(width()) : m_column->sizeHint().height();
    const int free = std::max(0, height() - content);
    const double middle = height() - window()->height() * belowTitle; // columns end where the window does
    const int above = std::clamp(int(std::lround(middle)) - m_aboveTitle - titleHeight / 2, 0, free);
    m_column->setStretch(0, above);
    m_column->setStretch(m_column->count() - 1, free - above);
}
