#pragma once

#include <QObject>
#include <QPointer>
#include <QRectF>

#include <optional>

class QFocusFrame;
class QPainter;
class QWidget;

/// The outline that a focus mark goes around, in the coordinates of the focused widget.
struct FocusOutline {
    enum class Mark {
        ring, ///< around controls, shown to the keyboard only
        halo, ///< around fields, shown always
    };
    QRectF rect;
    double radius = 0;
    Mark mark = Mark::ring;
};

/// For controls whose outline the style can't know.
class HasFocusOutline {
public:
    virtual ~HasFocusOutline() = default;
    [[nodiscard]] virtual FocusOutline focusOutline() const = 0;
};

/// Shows which control has the focus: follows it with one frame that lies outside the control and takes no clicks.
class FocusRing final : public QObject {
    Q_OBJECT

public:
    /// Watches the whole application while it lives.
    explicit FocusRing(QObject *parent);

    /// Whether `widget` has the focus and the keyboard brought it there.
    [[nodiscard]] static bool isDueTo(const QWidget &widget);
    /// To be called by a widget with rows when the keyboard moves within it: a click may have brought the focus there.
    static void noteKeyboard();
    static void paint(QPainter &painter, const FocusOutline &outline);
    /// Nothing for widgets that show their focus otherwise, such as lists.
    [[nodiscard]] static std::optional<FocusOutline> outlineOf(const QWidget &widget);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void follow(QWidget *widget);

    QPointer<QFocusFrame> m_frame;
};
