#include "workspace/VornApp.h"

#include "kit/theme/Appearance.h"
#include "kit/theme/PortalSettings.h"
#include "kit/theme/Symbols.h"
#include "kit/theme/Theme.h"
#include "library/LibraryStore.h"
#include "library/SelfTests.h"
#include "workspace/ImportProgress.h"
#include "workspace/RootView.h"

#include <QApplication>
#include <QTimer>

using namespace Qt::StringLiterals;

/// A static library's resources are left out of the program unless somebody asks for them by name.
static void loadIcons()
{
    Q_INIT_RESOURCE(vorn);
}

VornApp::VornApp(DatabaseQueue &queue, CommandLine commandLine)
    : m_commandLine(std::move(commandLine)),
      m_settings(std::make_unique<PortalSettings>()),
      m_appearance(std::make_unique<Appearance>(*m_settings, QApplication::palette()))
{
    loadIcons();
    Theme::follow(*m_appearance);
    QApplication::setWindowIcon(QIcon(u":/icons/vorn.png"_s));
    m_store = std::make_unique<LibraryStore>(LibraryServices{
        .queue = queue,
        .fileDialogs = m_fileDialogs,
        .fileViewer = m_fileViewer,
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
