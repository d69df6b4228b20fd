#include "kit/controls/Scrim.h"

#include "kit/theme/Metrics.h"
#include "kit/theme/Painting.h"
#include "kit/theme/Shadow.h"
#include "kit/theme/Theme.h"
#include "kit/theme/ThemeColors.h"

#include <QDialog>
#include <QEvent>
#include <QPainter>

Scrim::Scrim(QWidget &window, double strength) : QWidget(&window), m_strength(strength)
{
    setGeometry(window.rect());
    window.installEventFilter(this);
    raise();
    show();
}

void Scrim::setPresence(double presence)
{
    m_presence = presence;
    update();
}

void Scrim::setCaster(const QRect &globalBody)
{
    m_caster = globalBody;
    update();
}

bool Scrim::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        setGeometry(parentWidget()->rect());
    return false;
}

void Scrim::paintEvent(QPaintEvent *)
{
    const ThemeColors &colors = Theme::colors();
    QPainter painter(this);
    QColor shade = colors.scrim;
    shade.setAlphaF(shade.alphaF() * float(m_strength * m_presence));
    // A sheet over a sheet: only the body of the lower one is dimmed, not the margin that holds its shadow.
    const bool isOverSheet = qobject_cast<const QDialog *>(parentWidget()) != nullptr;
    const QRect sheetBody = parentWidget()->contentsRect();
    if (isOverSheet)
        Painting::fill(painter, sheetBody, Metrics::sheetRadius, shade);
    else
        painter.fillRect(rect(), shade);
    if (m_caster.isEmpty())
        return;
    const QRect body(mapFromGlobal(m_caster.topLeft()), m_caster.size());
    painter.setOpacity(m_presence);
    if (isOverSheet)
        painter.setClipRect(sheetBody);
    Shadow::sheet().paint(painter, body, Metrics::sheetRadius);
    painter.setOpacity(1);
    Painting::box(painter, body, Metrics::sheetRadius, colors.sheet, colors.raisedEdge);
}
