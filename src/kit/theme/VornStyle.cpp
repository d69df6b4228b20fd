#include "kit/theme/VornStyle.h"

#include "kit/theme/FocusRing.h"
#include "kit/theme/Metrics.h"
#include "kit/theme/PopupShape.h"
#include "kit/theme/Roles.h"
#include "kit/theme/RowPainter.h"
#include "kit/theme/ScrollActivity.h"
#include "kit/theme/StyleGeometry.h"
#include "kit/theme/Theme.h"

#include <QAbstractScrollArea>
#include <QEvent>
#include <QFocusFrame>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOption>

using namespace Qt::StringLiterals;

namespace {

/// The option as the kind that Qt documents for what is being drawn.
template <typename Option>
const Option &as(const QStyleOption *option)
{
    Q_ASSERT(qstyleoption_cast<const Option *>(option) != nullptr);
    return *static_cast<const Option *>(option);
}

} // namespace

VornStyle::VornStyle() : QProxyStyle(u"Fusion"_s)
{
    new FocusRing(this);
}

void VornStyle::polish(QWidget *widget)
{
    QProxyStyle::polish(widget);
    if (PopupShape::concerns(*widget)) {
        widget->setWindowFlag(Qt::FramelessWindowHint);
        widget->setWindowFlag(Qt::NoDropShadowWindowHint);
        widget->setAttribute(Qt::WA_TranslucentBackground, windowsCanBeTranslucent());
        widget->installEventFilter(this);
    }
    if (auto *menu = qobject_cast<QMenu *>(widget); menu != nullptr && menu->minimumWidth() == 0)
        menu->setMinimumWidth(StyleGeometry::menuLeastWidth);
    if (auto *bar = qobject_cast<QScrollBar *>(widget))
        ScrollActivity::watch(*bar);
}

bool VornStyle::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::Move:
    case QEvent::Resize:
        PopupShape::update(*static_cast<QWidget *>(watched));
        break;
    default:
        break;
    }
    return QProxyStyle::eventFilter(watched, event);
}

int VornStyle::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    switch (metric) {
    case PM_ButtonDefaultIndicator:
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
    case PM_MenuBarPanelWidth:
    case PM_MenuBarItemSpacing:
    case PM_TabBarTabVSpace:
    case PM_TabBarTabOverlap:
    case PM_TabBarBaseOverlap:
    case PM_TabBarTabShiftHorizontal:
    case PM_TabBarTabShiftVertical:
        return 0;
    case PM_ToolTipLabelFrameWidth:
        return StyleGeometry::toolTipPadding;
    case PM_SubMenuOverlap: // counted from the entry, which ends before the menu's padding
        return StyleGeometry::menuPadding + 2;
    case PM_TabBarTabHSpace:
        return 2 * StyleGeometry::segmentPadding;
    case PM_IndicatorWidth:
        return StyleGeometry::switchSize.width();
    case PM_IndicatorHeight:
        return StyleGeometry::switchSize.height();
    case PM_LineEditIconSize:
        return StyleGeometry::fieldIcon;
    case PM_LineEditIconMargin:
        return StyleGeometry::fieldIconMargin;
    case PM_ButtonIconSize:
        return StyleGeometry::buttonIcon;
    case PM_DefaultFrameWidth:
        if (widget != nullptr && PopupShape::concerns(*widget))
            return StyleGeometry::menuPadding + 1;
        return qobject_cast<const QAbstractScrollArea *>(widget) != nullptr ? StyleGeometry::editorFrame : 1;
    case PM_MenuPanelWidth:
    case PM_SplitterWidth:
        return 1;
    case PM_MenuHMargin:
    case PM_MenuVMargin:
        return StyleGeometry::menuPadding;
    case PM_MenuBarHMargin:
        return StyleGeometry::menuBarInset;
    case PM_MenuBarVMargin:
        return StyleGeometry::menuBarPadding;
    case PM_ScrollBarExtent:
        return StyleGeometry::scrollBarWidth;
    case PM_ScrollBarSliderMin:
        return StyleGeometry::scrollThumbMinimum;
    case PM_FocusFrameHMargin:
    case PM_FocusFrameVMargin: // item views ask for the same metric and mean the air beside their texts
        if (option != nullptr && qobject_cast<QFocusFrame *>(option->styleObject) != nullptr)
            return Metrics::ringReach;
        return QProxyStyle::pixelMetric(metric, option, widget);
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int VornStyle::styleHint(
    StyleHint hint, const QStyleOption *option, const QWidget *widget, QStyleHintReturn *returnData) const
{
    constexpr int ordinaryDuration = 200; // milliseconds
    switch (hint) {
    case SH_Widget_Animation_Duration:
        return m_reducesMotion ? 0 : ordinaryDuration;
    case SH_Widget_Animate:
        return m_reducesMotion ? 0 : 1;
    case SH_ScrollBar_Transient:
    case SH_ComboBox_Popup:
    case SH_FocusFrame_AboveWidget:
    case SH_Menu_MouseTracking:
    case SH_MenuBar_MouseTracking:
    case SH_Menu_Scrollable:
        return 1;
    case SH_FocusFrame_Mask:
    case SH_Menu_Mask: // PopupShape cuts better corners
    case SH_ToolTip_Mask:
    case SH_UnderlineShortcut:
    case SH_EtchDisabledText:
    case SH_DitherDisabledText:
    case SH_DialogButtonBox_ButtonsHaveIcons:
        return 0;
    case SH_SpinBox_ClickAutoRepeatThreshold:
        return 400; // milliseconds
    case SH_SpinBox_ClickAutoRepeatRate:
        return 90; // milliseconds
    case SH_ComboBox_PopupFrameStyle:
        return int(QFrame::StyledPanel) | int(QFrame::Plain);
    default:
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
}

QRect VornStyle::subElementRect(SubElement element, const QStyleOption *option, const QWidget *widget) const
{
    switch (element) {
    case SE_PushButtonLayoutItem:
    case SE_ComboBoxLayoutItem:
    case SE_PushButtonContents:
    case SE_PushButtonFocusRect:
        return option->rect.marginsRemoved(StyleGeometry::controlShadow);
    case SE_LineEditContents: {
        const bool isSearch = widget != nullptr && hasSearchRole(*widget);
        const int before = isSearch ? StyleGeometry::searchPadding : StyleGeometry::fieldPadding;
        const QRect contents = option->rect.adjusted(before, 0, -StyleGeometry::fieldPadding, 0);
        return visualRect(option->direction, option->rect, contents);
    }
    case SE_CheckBoxClickRect:
        return option->rect;
    case SE_TabBarTabText:
        return option->rect.adjusted(3, 0, -3, 0);
    default:
        return QProxyStyle::subElementRect(element, option, widget);
    }
}

QRect VornStyle::subControlRect(
    ComplexControl control, const QStyleOptionComplex *option, SubControl subControl, const QWidget *widget) const
{
    if (control == CC_ScrollBar)
        return scrollBarRect(as<QStyleOptionSlider>(option), subControl);
    if (control == CC_ComboBox) {
        const QRect body = option->rect.marginsRemoved(StyleGeometry::controlShadow);
        if (subControl == SC_ComboBoxEditField)
            return visualRect(option->direction, option->rect, StyleGeometry::comboText(body));
        if (subControl == SC_ComboBoxFrame)
            return body;
        if (subControl == SC_ComboBoxListBoxPopup)
            return visualRect(option->direction, option->rect, StyleGeometry::comboList(body));
    }
    if (control == CC_SpinBox)
        return stepperRect(*option, subControl);
    return QProxyStyle::subControlRect(control, option, subControl, widget);
}

QSize VornStyle::sizeFromContents(
    ContentsType type, const QStyleOption *option, const QSize &contents, const QWidget *widget) const
{
    const auto controlHeight = [&] {
        return Metrics::rowHeightFor(Metrics::controlHeight, option->fontMetrics.height());
    };
    switch (type) {
    case CT_PushButton:
        return buttonSize(as<QStyleOptionButton>(option), widget);
    case CT_MenuItem:
        return menuItemSize(as<QStyleOptionMenuItem>(option), contents);
    case CT_MenuBarItem:
        return {contents.width() + 2 * StyleGeometry::menuBarItemPadding,
            Metrics::rowHeightFor(Metrics::smallControlHeight, option->fontMetrics.height() - 4)};
    case CT_CheckBox: // ours have no text
        return StyleGeometry::switchSize;
    case CT_SpinBox:
        return StyleGeometry::stepperSize;
    case CT_TabBarTab:
        return {contents.width(), controlHeight()};
    case CT_LineEdit:
        return {contents.width() + 2 * StyleGeometry::fieldPadding, controlHeight()};
    case CT_ComboBox: {
        const int width = contents.width() + StyleGeometry::comboPadding + StyleGeometry::comboArrowRoom + 2;
        return QSize(width, controlHeight()).grownBy(StyleGeometry::controlShadow);
    }
    default:
        return QProxyStyle::sizeFromContents(type, option, contents, widget);
    }
}

void VornStyle::drawPrimitive(
    PrimitiveElement element, const QStyleOption *option, QPainter *painter, const QWidget *widget) const
{
    switch (element) {
    case PE_PanelLineEdit:
    case PE_FrameLineEdit:
        drawField(*option, *painter, widget);
        return;
    case PE_Frame:
        if (widget != nullptr && PopupShape::concerns(*widget))
            drawMenuPanel(*option, *painter);
        else
            drawFrame(*option, *painter, widget);
        return;
    case PE_PanelMenu:
    case PE_PanelTipLabel:
        drawMenuPanel(*option, *painter);
        return;
    case PE_FrameMenu:
    case PE_FrameFocusRect: // FocusRing shows the focus
    case PE_PanelMenuBar:
        return;
    case PE_PanelItemViewItem:
        RowPainter(0, Metrics::rowRadius).paint(*painter, option->rect, RowState::of(as<QStyleOptionViewItem>(option)));
        return;
    case PE_PanelItemViewRow:
        return;
    case PE_IndicatorCheckBox:
        drawSwitch(*option, *painter);
        return;
    case PE_FrameTabBarBase:
        drawSegmentTrack(widget != nullptr ? widget->rect() : option->rect, *painter);
        return;
    default:
        break;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void VornStyle::drawControl(
    ControlElement element, const QStyleOption *option, QPainter *painter, const QWidget *widget) const
{
    const ThemeColors &colors = Theme::colors();
    switch (element) {
    case CE_PushButton:
        drawButton(as<QStyleOptionButton>(option), *painter, *widget);
        drawButtonLabel(as<QStyleOptionButton>(option), *painter, *widget);
        return;
    case CE_PushButtonBevel:
        return drawButton(as<QStyleOptionButton>(option), *painter, *widget);
    case CE_TabBarTab:
        return drawSegment(as<QStyleOptionTab>(option), *painter);
    case CE_ProgressBar:
        return drawProgressBar(as<QStyleOptionProgressBar>(option), *painter);
    case CE_ComboBoxLabel:
        return drawComboBoxLabel(as<QStyleOptionComboBox>(option), *painter);
    case CE_MenuItem:
        return drawMenuItem(as<QStyleOptionMenuItem>(option), *painter, widget);
    case CE_MenuBarItem:
        return drawMenuBarItem(as<QStyleOptionMenuItem>(option), *painter);
    case CE_MenuBarEmptyArea: {
        const QRect line(option->rect.left(), option->rect.bottom(), option->rect.width(), 1);
        painter->fillRect(option->rect, colors.window);
        painter->fillRect(line, colors.hairline);
        return;
    }
    case CE_MenuEmptyArea:
        if (qobject_cast<const QMenu *>(widget) == nullptr) // a menu's panel has been painted, with its round corners
            painter->fillRect(option->rect, colors.raised);
        return;
    case CE_MenuHMargin:
    case CE_MenuVMargin:
        return;
    case CE_ShapedFrame:
        if (const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option);
            frame && frame->frameShape == QFrame::HLine) {
            const bool isRaised = option->state.testFlag(State_Raised);
            painter->fillRect(option->rect, isRaised ? colors.raisedHairline : colors.hairline);
            return;
        }
        break;
    case CE_FocusFrame:
        drawFocusFrame(*option, *painter, widget);
        return;
    case CE_Splitter:
        painter->fillRect(StyleGeometry::middleLine(option->rect), colors.hairline);
        return;
    default:
        break;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void VornStyle::drawComplexControl(
    ComplexControl control, const QStyleOptionComplex *option, QPainter *painter, const QWidget *widget) const
{
    switch (control) {
    case CC_ScrollBar:
        return drawScrollBar(as<QStyleOptionSlider>(option), *painter, widget);
    case CC_ComboBox:
        return drawComboBox(as<QStyleOptionComboBox>(option), *painter);
    case CC_SpinBox:
        return drawStepper(as<QStyleOptionSpinBox>(option), *painter);
    default:
        QProxyStyle::drawComplexControl(control, option, painter, widget);
    }
}
