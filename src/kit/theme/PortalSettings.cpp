#include "kit/theme/PortalSettings.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

/// Milliseconds. The window waits for the answer, so that it opens in the right colours.
constexpr int replyTimeout = 300;

QString service()
{
    return u"org.freedesktop.portal.Desktop"_s;
}

QString path()
{
    return u"/org/freedesktop/portal/desktop"_s;
}

QString interface()
{
    return u"org.freedesktop.portal.Settings"_s;
}

/// Portals wrap a value once or twice, depending on the version of the call.
QVariant unwrapped(QVariant value)
{
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

} // namespace

PortalSettings::PortalSettings()
{
    QDBusConnection session = QDBusConnection::sessionBus();
    if (!session.isConnected())
        return;
    // Only after the first call are D-Bus's own types known for certain; before, connecting to a slot that takes one
    // fails now and then. It connects by the text of a slot, since it has no way of naming a member.
    readAll();
    session.connect(
        service(), path(), interface(), u"SettingChanged"_s, this, SLOT(noteChange(QString, QString, QDBusVariant)));
}

QVariant PortalSettings::value(const QString &group, const QString &key) const
{
    return m_groups.value(group).value(key);
}

void PortalSettings::readAll()
{
    QDBusMessage request = QDBusMessage::createMethodCall(service(), path(), interface(), u"ReadAll"_s);
    request << QStringList{u"org.freedesktop.appearance"_s, u"org.gnome.desktop.interface"_s};
    const QDBusMessage reply = QDBusConnection::sessionBus().call(request, QDBus::Block, replyTimeout);
    if (reply.type() == QDBusMessage::ReplyMessage)
        take(reply);
    else if (reply.errorName() == u"org.freedesktop.DBus.Error.NoReply")
        readLater(request);
}

void PortalSettings::readLater(const QDBusMessage &request)
{
    auto *watcher = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(request), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        if (watcher->reply().type() != QDBusMessage::ReplyMessage)
            return;
        take(watcher->reply());
        Q_EMIT changed();
    });
}

void PortalSettings::take(const QDBusMessage &reply)
{
    if (reply.signature() != u"a{sa{sv}}")
        return;
    m_groups = qdbus_cast<Groups>(reply.arguments().constFirst().value<QDBusArgument>());
    for (QVariantMap &group : m_groups) {
        for (QVariant &value : group)
            value = unwrapped(value);
    }
}

void PortalSettings::noteChange(const QString &group, const QString &key, const QDBusVariant &value)
{
    m_groups[group][key] = unwrapped(value.variant());
    Q_EMIT changed();
}
