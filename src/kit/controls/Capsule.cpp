#include "kit/controls/Capsule.h"

#include "kit/theme/Metrics.h"
#include "kit/theme/Painting.h"
#include "kit/theme/Theme.h"

#include <QHBoxLayout>
#include <QPainter>

#include <algorithm>

Capsule::Capsule(const Shadow &shadow, const QMargins &padding, QWidget *parent)
    : QWidget(parent),
      m_shadow(shadow),
      m_row(new QHBoxLayout(this))
{
    setContentsMargins(m_shadow.reach());
    m_row->setContentsMargins(padding);
    m_row->setSpacing(Metrics::controlSpacing);
}

QRect Capsule::bodyRect() const
{
    return rect().marginsRemoved(m_shadow.reach());
}

QSize Capsule::bodySizeHint() const
{
    return sizeHint().shrunkBy(m_shadow.reach());
}

QSize Capsule::fittingSize() const
{
    constexpr int sideGap = 12;
    const QSize wanted = bodySizeHint();
    const int widest = parentWidget() != nullptr ? parentWidget()->width() - 2 * sideGap : wanted.width();
    return {std::clamp(wanted.width(), 0, std::max(0, widest)), wanted.height()};
}

void Capsule::moveBody(const QPoint &position)
{
    setGeometry(QRect(position, fittingSize()).marginsAdded(m_shadow.reach()));
}

void Capsule::placeAtBottom(int distance)
{
    const QSize size = fittingSize();
    moveBody({(parentWidget()->width() - size.width()) / 2, parentWidget()->height() - distance - size.height()});
}

void Capsule::placeAtTop(int distance)
{
    moveBody({(parentWidget()->width() - fittingSize().width()) / 2, distance});
}

void Capsule::paintEvent(QPaintEvent *)
{
    const ThemeColors &colors = Theme::colors();
    const QRectF body = bodyRect();
    const double radius = body.height() / 2;
    QPainter painter(this);
    m_shadow.paint(painter, body, radius);
    Painting::box(painter, body, radius, colors.raised, colors.raisedEdge);
}
