#include "kit/theme/FocusRing.h"

#include "kit/theme/Metrics.h"
#include "kit/theme/Painting.h"
#include "kit/theme/Roles.h"
#include "kit/theme/StyleGeometry.h"
#include "kit/theme/Theme.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFocusEvent>
#include <QFocusFrame>
#include <QFrame>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>
#include <QStyleOption>
#include <QTabBar>
#include <QTextEdit>

namespace {

using Mark = FocusOutline::Mark;

/// Global, as the focus is: only one widget has it.
bool cameByKeyboard = false;

void noteReason(Qt::FocusReason reason)
{
    switch (reason) {
    case Qt::TabFocusReason:
    case Qt::BacktabFocusReason:
    case Qt::ShortcutFocusReason:
        cameByKeyboard = true;
        break;
    case Qt::MouseFocusReason:
    case Qt::OtherFocusReason:
        cameByKeyboard = false;
        break;
    default: // the focus comes back from a menu or another window: as it was
        break;
    }
}

QRectF bodyOf(const QWidget &widget, QStyle::SubElement element)
{
    QStyleOption option;
    option.initFrom(&widget);
    return widget.style()->subElementRect(element, &option, &widget);
}

std::optional<FocusOutline> fieldOutline(const QWidget &widget)
{
    if (const auto *field = qobject_cast<const QLineEdit *>(&widget); field != nullptr && field->hasFrame())
        return FocusOutline{widget.rect(), Metrics::controlRadius, Mark::halo};
    const bool isEditor =
        qobject_cast<const QTextEdit *>(&widget) != nullptr || qobject_cast<const QPlainTextEdit *>(&widget) != nullptr;
    const auto *frame = qobject_cast<const QFrame *>(&widget);
    if (isEditor && frame != nullptr && frame->frameShape() == QFrame::StyledPanel)
        return FocusOutline{widget.rect(), Metrics::memoRadius, Mark::halo};
    return {};
}

} // namespace

FocusRing::FocusRing(QObject *parent) : QObject(parent)
{
    qApp->installEventFilter(this);
}

bool FocusRing::isDueTo(const QWidget &widget)
{
    return cameByKeyboard && widget.hasFocus();
}

void FocusRing::noteKeyboard()
{
    cameByKeyboard = true;
}

std::optional<FocusOutline> FocusRing::outlineOf(const QWidget &widget)
{
    if (const auto *control = dynamic_cast<const HasFocusOutline *>(&widget))
        return control->focusOutline();
    if (qobject_cast<const QPushButton *>(&widget) != nullptr) {
        const QRectF body = bodyOf(widget, QStyle::SE_PushButtonLayoutItem);
        return FocusOutline{body, cornerRadiusOf(widget, body.height())};
    }
    if (qobject_cast<const QComboBox *>(&widget) != nullptr)
        return FocusOutline{bodyOf(widget, QStyle::SE_ComboBoxLayoutItem), Metrics::controlRadius};
    if (qobject_cast<const QCheckBox *>(&widget) != nullptr)
        return FocusOutline{widget.rect(), StyleGeometry::switchSize.height() / 2.};
    if (qobject_cast<const QTabBar *>(&widget) != nullptr)
        return FocusOutline{widget.rect(), Metrics::controlRadius};
    if (qobject_cast<const QAbstractSpinBox *>(&widget) != nullptr)
        return FocusOutline{StyleGeometry::stepperBody(widget.rect()), Metrics::smallButtonRadius};
    return fieldOutline(widget);
}

void FocusRing::paint(QPainter &painter, const FocusOutline &outline)
{
    const ThemeColors &colors = Theme::colors();
    if (outline.mark == Mark::ring) {
        constexpr double reach = Metrics::ringReach;
        const QRectF ring = outline.rect.adjusted(-reach, -reach, reach, reach);
        Painting::edge(painter, ring, outline.radius + reach, colors.accentForeground, Metrics::ringWidth);
        return;
    }
    constexpr double reach = Metrics::haloWidth;
    QColor haze = colors.accentForeground;
    haze.setAlphaF(.25F);
    const QRectF halo = outline.rect.adjusted(-reach, -reach, reach, reach);
    Painting::edge(painter, halo, outline.radius + reach, haze, reach);
}

bool FocusRing::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::FocusIn && event->type() != QEvent::FocusOut)
        return false;
    auto *widget = qobject_cast<QWidget *>(watched);
    if (widget == nullptr)
        return false;
    if (event->type() == QEvent::FocusIn) {
        if (!widget->hasFocus())
            return false; // a dialog that opens tells its first widget so before the focus is there
        noteReason(static_cast<QFocusEvent *>(event)->reason());
        follow(widget);
    } else if (m_frame != nullptr && m_frame->widget() == widget) {
        m_frame->setWidget(nullptr);
    }
    return false;
}

void FocusRing::follow(QWidget *widget)
{
    const auto outline = outlineOf(*widget);
    const bool shows = outline && (outline->mark == Mark::halo || cameByKeyboard);
    if (!shows) {
        if (m_frame != nullptr)
            m_frame->setWidget(nullptr);
        return;
    }
    if (m_frame == nullptr) // the window that held the last one has gone
        m_frame = new QFocusFrame(widget->window());
    m_frame->setWidget(widget);
}
