#include "workspace/DesktopFileViewer.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 1500; // milliseconds

bool askFileManager(const QUrl &file)
{
    const QDBusConnection session = QDBusConnection::sessionBus();
    if (!session.isConnected())
        return false;
    QDBusMessage message = QDBusMessage::createMethodCall(u"org.freedesktop.FileManager1"_s,
        u"/org/freedesktop/FileManager1"_s, u"org.freedesktop.FileManager1"_s, u"ShowItems"_s);
    message << QStringList{file.toString(QUrl::FullyEncoded)} << QString();
    return session.call(message, QDBus::Block, patience).type() == QDBusMessage::ReplyMessage;
}

} // namespace

void DesktopFileViewer::reveal(const QString &path)
{
    const QFileInfo info(path);
    if (!askFileManager(QUrl::fromLocalFile(info.absoluteFilePath())))
        QDesktopServices::openUrl(QUrl::fromLocalFile(info.absolutePath()));
}
