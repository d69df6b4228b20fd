#include "kit/controls/Hairline.h"

#include "kit/theme/Theme.h"
#include "kit/theme/ThemeColors.h"

#include <QPainter>

Hairline::Hairline(Place place, Qt::Orientation orientation, QWidget *parent) : QWidget(parent), m_place(place)
{
    if (orientation == Qt::Horizontal)
        setFixedHeight(1);
    else
        setFixedWidth(1);
}

void Hairline::paintEvent(QPaintEvent *)
{
    const ThemeColors &colors = Theme::colors();
    QPainter(this).fillRect(rect(), m_place == Place::surface ? colors.hairline : colors.raisedHairline);
}
