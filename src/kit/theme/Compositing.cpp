#include "kit/theme/Compositing.h"

#include <QGuiApplication>

#if QT_CONFIG(xcb)
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <string_view>

namespace {

template <typename T>
using Reply = std::unique_ptr<T, decltype([](T *reply) { std::free(reply); })>; // NOLINT(cppcoreguidelines-no-malloc)

/// The composing program of a screen makes itself known by owning this selection; Qt shows us its first screen.
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
