#include "kit/theme/PopupShape.h"

#include "kit/theme/Fonts.h"
#include "kit/theme/Painting.h"
#include "kit/theme/Shadow.h"
#include "kit/theme/Theme.h"

#include <QApplication>
#include <QGuiApplication>
#include <QImage>
#include <QMenu>
#include <QPainter>
#include <QPointer>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace {

/// A popup's shadow and smooth corners, painted into the window below while the popup is visible: for popups whose own
/// window can't be translucent.
class PopupShadow final : public QWidget {
public:
    static void follow(QWidget &popup)
    {
        PopupShadow *shadow = of(popup);
        if (!popup.isVisible()) {
            delete shadow;
            return;
        }
        QWidget *window = windowBelow(popup);
        if (shadow == nullptr && window != nullptr)
            shadow = new PopupShadow(popup, *window);
        if (shadow != nullptr)
            shadow->place();
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        const ThemeColors &colors = Theme::colors();
        const QMargins reach = Shadow::menu().reach();
        QPainter painter(this);
        Shadow::menu().paint(painter, rect().marginsRemoved(reach), PopupShape::radius);
        Painting::box(painter, rect().marginsRemoved(reach), PopupShape::radius, colors.raised, colors.raisedEdge);
    }

private:
    PopupShadow(QWidget &popup, QWidget &window) : QWidget(&window), m_popup(&popup)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        connect(&popup, &QObject::destroyed, this, &QObject::deleteLater);
    }

    static PopupShadow *of(const QWidget &popup)
    {
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (const QWidget *window : windows) {
            const auto children = window->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
            for (QWidget *child : children) {
                auto *shadow = dynamic_cast<PopupShadow *>(child);
                if (shadow != nullptr && shadow->m_popup == &popup)
                    return shadow;
            }
        }
        return nullptr;
    }

    static QWidget *windowBelow(const QWidget &popup)
    {
        QWidget *window = popup.parentWidget() != nullptr ? popup.parentWidget()->window() : nullptr;
        while (window != nullptr && PopupShape::concerns(*window)) // a submenu's own menu
            window = window->parentWidget() != nullptr ? window->parentWidget()->window() : nullptr;
        return window != nullptr ? window : QApplication::activeWindow();
    }

    void place()
    {
        const QRect body(parentWidget()->mapFromGlobal(m_popup->pos()), m_popup->size());
        setGeometry(body.marginsAdded(Shadow::menu().reach()));
        raise();
        show();
    }

    QPointer<QWidget> m_popup;
};

} // namespace

bool PopupShape::concerns(const QWidget &widget)
{
    return qobject_cast<const QMenu *>(&widget) != nullptr || widget.inherits("QComboBoxPrivateContainer")
        || widget.inherits("QTipLabel");
}

void PopupShape::update(QWidget &popup)
{
    if (windowsCanBeTranslucent() || !popup.isWindow())
        return;
    popup.setMask(core(popup.size(), radius));
    PopupShadow::follow(popup);
}

QRegion PopupShape::core(const QSize &size, double cornerRadius)
{
    QImage image(size, QImage::Format_Alpha8);
    image.fill(0);
    QPainter painter(&image);
    Painting::fill(painter, QRect(QPoint(), size), cornerRadius, Qt::black);
    painter.end();
    const int corner = std::min(int(std::ceil(cornerRadius)), size.height() / 2);
    QRegion region(0, corner, size.width(), size.height() - 2 * corner);
    for (int y = 0; y < corner; ++y) {
        const uchar *line = image.constScanLine(y);
        const int first = int(std::find(line, line + size.width(), uchar(255)) - line);
        for (const int row : {y, size.height() - 1 - y})
            region += QRect(first, row, std::max(0, size.width() - 2 * first), 1);
    }
    return region;
}

QFont PopupShape::shortcutFont()
{
    return Fonts::callout();
}

#if QT_CONFIG(xcb)
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <string_view>

namespace {

template <typename T>
using Reply = std::unique_ptr<T, decltype([](T *reply) { std::free(reply); })>; // NOLINT(cppcoreguidelines-no-malloc)

/// A compositor announces itself by owning the selection of its screen; Qt uses the first screen.
bool hasCompositor(xcb_connection_t *connection)
{
    constexpr std::string_view name = "_NET_WM_CM_S0";
    const Reply<xcb_intern_atom_reply_t> atom(
        xcb_intern_atom_reply(connection, xcb_intern_atom(connection, 1, uint16_t(name.size()), name.data()), nullptr));
    if (atom == nullptr || atom->atom == XCB_NONE)
        return false;
    const Reply<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, atom->atom), nullptr));
    return owner != nullptr && owner->owner != XCB_NONE;
}

} // namespace
#endif

bool windowsCanFade()
{
    const QString platform = QGuiApplication::platformName();
    return platform == u"cocoa" || platform == u"windows" || (platform == u"xcb" && windowsCanBeTranslucent());
}

bool windowsCanBeTranslucent()
{
#if QT_CONFIG(xcb)
    // The offscreen platform has the interface too, and no connection behind it.
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 != nullptr && x11->connection() != nullptr)
        return hasCompositor(x11->connection());
#endif
    return true;
}
