#pragma once

#include <QProxyStyle>

class QStyleOptionButton;
class QStyleOptionComboBox;
class QStyleOptionMenuItem;
class QStyleOptionProgressBar;
class QStyleOptionSlider;
class QStyleOptionSpinBox;
class QStyleOptionTab;

/// Paints Qt's own widgets in the window's language. What it doesn't know falls to Fusion, in our palette.
class VornStyle final : public QProxyStyle {
    Q_OBJECT

public:
    VornStyle();

    /// Turns animations off or on.
    void setReducesMotion(bool reduces) { m_reducesMotion = reduces; }

    using QProxyStyle::polish;
    void polish(QWidget *widget) override;

    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const override;
    [[nodiscard]] int styleHint(
        StyleHint hint, const QStyleOption *option, const QWidget *widget, QStyleHintReturn *returnData) const override;
    [[nodiscard]] QRect subElementRect(
        SubElement element, const QStyleOption *option, const QWidget *widget) const override;
    [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl subControl,
        const QWidget *widget) const override;
    [[nodiscard]] QSize sizeFromContents(
        ContentsType type, const QStyleOption *option, const QSize &contents, const QWidget *widget) const override;

    void drawPrimitive(
        PrimitiveElement element, const QStyleOption *option, QPainter *painter, const QWidget *widget) const override;
    void drawControl(
        ControlElement element, const QStyleOption *option, QPainter *painter, const QWidget *widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option, QPainter *painter,
        const QWidget *widget) const override;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // Buttons
    void drawButton(const QStyleOptionButton &option, QPainter &painter, const QWidget &button) const;
    void drawButtonLabel(const QStyleOptionButton &option, QPainter &painter, const QWidget &button) const;
    [[nodiscard]] QSize buttonSize(const QStyleOptionButton &option, const QWidget *button) const;
    void drawComboBox(const QStyleOptionComboBox &option, QPainter &painter) const;
    void drawComboBoxLabel(const QStyleOptionComboBox &option, QPainter &painter) const;

    // Switches (check boxes), segments (tab bars), steppers (spin boxes), progress bars
    static void drawSwitch(const QStyleOption &option, QPainter &painter);
    static void drawSegmentTrack(const QRect &track, QPainter &painter);
    static void drawSegment(const QStyleOptionTab &option, QPainter &painter);
    static void drawStepper(const QStyleOptionSpinBox &option, QPainter &painter);
    static void drawProgressBar(const QStyleOptionProgressBar &option, QPainter &painter);
    [[nodiscard]] static QRect stepperRect(const QStyleOptionComplex &option, SubControl subControl);

    // Fields and frames
    static void drawField(const QStyleOption &option, QPainter &painter, const QWidget *field);
    static void drawFrame(const QStyleOption &option, QPainter &painter, const QWidget *widget);
    static void drawFocusFrame(const QStyleOption &option, QPainter &painter, const QWidget *frame);

    // Menus
    static void drawMenuPanel(const QStyleOption &option, QPainter &painter);
    void drawMenuItem(const QStyleOptionMenuItem &option, QPainter &painter, const QWidget *menu) const;
    void drawMenuBarItem(const QStyleOptionMenuItem &option, QPainter &painter) const;
    [[nodiscard]] static QSize menuItemSize(const QStyleOptionMenuItem &option, const QSize &contents);

    // Scroll bars
    static void drawScrollBar(const QStyleOptionSlider &option, QPainter &painter, const QWidget *bar);
    [[nodiscard]] static QRect scrollBarRect(const QStyleOptionSlider &option, SubControl subControl);

    bool m_reducesMotion = false;
};
