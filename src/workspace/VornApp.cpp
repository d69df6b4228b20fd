#include "workspace/VornApp.h"

#include "kit/theme/Appearance.h"
#include "kit/theme/PortalSettings.h"
#include "kit/theme/Symbols.h"
#include "kit/theme/Theme.h"
#include "library/LibraryStore.h"
#include "library/SelfTests.h"
#include "platform/FileDialogs.h"
#include "workspace/DesktopFileDialogs.h"
#include "workspace/ImportProgress.h"
#include "workspace/RootView.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDesktopServices>
#include <QFileInfo>
#include <QTimer>
#include <QUrl>

using namespace Qt::StringLiterals;

/// The linker leaves out a static library's resources unless they are initialised by name.
static void loadIcons()
{
    Q_INIT_RESOURCE(vorn);
}

namespace {

/// Asks the desktop's file manager over D-Bus; where none answers, the folder is opened.
class DesktopFileViewer final : public FileViewer {
public:
    void reveal(const QString &path) override
    {
        const QFileInfo info(path);
        if (!askFileManager(QUrl::fromLocalFile(info.absoluteFilePath())))
            QDesktopServices::openUrl(QUrl::fromLocalFile(info.absolutePath()));
    }

private:
    static bool askFileManager(const QUrl &file)
    {
        constexpr int timeout = 1500; // milliseconds
        const QDBusConnection session = QDBusConnection::sessionBus();
        if (!session.isConnected())
            return false;
        QDBusMessage message = QDBusMessage::createMethodCall(u"org.freedesktop.FileManager1"_s,
            u"/org/freedesktop/FileManager1"_s, u"org.freedesktop.FileManager1"_s, u"ShowItems"_s);
        message << QStringList{file.toString(QUrl::FullyEncoded)} << QString();
        return session.call(message, QDBus::Block, timeout).type() == QDBusMessage::ReplyMessage;
    }
};

} // namespace

VornApp::VornApp(DatabaseQueue &queue, CommandLine commandLine)
    : m_commandLine(std::move(commandLine)),
      m_fileDialogs(std::make_unique<DesktopFileDialogs>()),
      m_fileViewer(std::make_unique<DesktopFileViewer>()),
      m_settings(std::make_unique<PortalSettings>()),
      m_appearance(std::make_unique<Appearance>(*m_settings, QApplication::palette()))
{
    loadIcons();
    Theme::follow(*m_appearance);
    QApplication::setWindowIcon(QIcon(u":/icons/vorn.png"_s));
    m_store = std::make_unique<LibraryStore>(LibraryServices{
        .queue = queue,
        .fileDialogs = *m_fileDialogs,
        .fileViewer = *m_fileViewer,
        .mayImport = [this](const ImportStep &step) { return m_progress->mayImport(step); },
        .importIsOver = [this] { m_progress->finish(); },
    });
    m_window = std::make_unique<RootView>(*m_store);
    m_progress = std::make_unique<ImportProgress>(*m_window);
}

VornApp::~VornApp() = default;

int VornApp::run()
{
    m_window->show();
    QTimer::singleShot(0, m_store.get(), [this] { start(); });
    return QApplication::exec();
}

void VornApp::start()
{
    m_store->bootstrap();
    SelfTests::prepareScreens(*m_store, m_commandLine);
}
