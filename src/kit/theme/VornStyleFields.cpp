#include "kit/theme/FocusRing.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/Painting.h"
#include "kit/theme/Roles.h"
#include "kit/theme/Theme.h"
#include "kit/theme/VornStyle.h"

#include <QAbstractScrollArea>
#include <QFocusFrame>
#include <QFrame>
#include <QLineEdit>
#include <QPainter>
#include <QStyleOption>

namespace {

void paintEditor(QPainter &painter, const QRectF &body, double radius, QStyle::State state)
{
    const ThemeColors &colors = Theme::colors();
    if (!state.testFlag(QStyle::State_Enabled)) {
        Painting::fill(painter, body, radius, colors.track);
        return;
    }
    const bool hasFocus = state.testFlag(QStyle::State_HasFocus);
    Painting::box(painter, body, radius, colors.page, hasFocus ? colors.accentForeground : colors.controlEdge);
}

} // namespace

void VornStyle::drawField(const QStyleOption &option, QPainter &painter, const QWidget *field)
{
    const auto *edit = qobject_cast<const QLineEdit *>(field);
    if (edit != nullptr && !edit->hasFrame())
        return;
    const bool isResting = !option.state.testFlag(State_HasFocus);
    if (field != nullptr && hasSearchRole(*field) && isResting) {
        const ThemeColors &colors = Theme::colors();
        Painting::fill(painter, option.rect, Metrics::controlRadius, colors.track);
        if (colors.look.hasHighContrast)
            Painting::edge(painter, option.rect, Metrics::controlRadius, colors.controlEdge);
        return;
    }
    paintEditor(painter, option.rect, Metrics::controlRadius, option.state);
}

void VornStyle::drawFrame(const QStyleOption &option, QPainter &painter, const QWidget *widget)
{
    // Only the edge: the viewport covers everything inside it, and in the corners it must leave room.
    QStyleOption own = option;
    const auto *area = qobject_cast<const QAbstractScrollArea *>(widget);
    if (area != nullptr && area->hasFocus())
        own.state |= State_HasFocus;
    const auto *outlined = dynamic_cast<const HasFocusOutline *>(widget);
    const double radius = outlined != nullptr ? outlined->focusOutline().radius : Metrics::memoRadius;
    paintEditor(painter, option.rect, radius, own.state);
}

void VornStyle::drawFocusFrame(const QStyleOption &option, QPainter &painter, const QWidget *frame)
{
    const auto *focusFrame = qobject_cast<const QFocusFrame *>(frame);
    if (focusFrame == nullptr || focusFrame->widget() == nullptr)
        return;
    auto outline = FocusRing::outlineOf(*focusFrame->widget());
    if (!outline)
        return;
    outline->rect.translate(option.rect.topLeft() + QPoint(Metrics::ringReach, Metrics::ringReach));
    FocusRing::paint(painter, *outline);
}
