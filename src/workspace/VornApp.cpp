#include "workspace/VornApp.h"

#include "kit/theme/Appearance.h"
#include "kit/theme/PortalSettings.h"
#include "kit/theme/Symbols.h"
#include "kit/theme/Theme.h"
#include "library/CommandLine.h"
#include "library/LibraryStore.h"
#include "workspace/ImportProgress.h"
#include "workspace/RootView.h"

#include <QApplication>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

/// A static library's resources are left out of the program unless somebody asks for them by name.
static void loadIcons()
{
    Q_INIT_RESOURCE(vorn);
}

namespace {

void printLine(const QString &line)
{
    const QByteArray bytes = (line + u'\n').toUtf8();
    static_cast<void>(std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout)); // a line may hold NUL
    static_cast<void>(std::fflush(stdout)); // nobody else could be told
}

} // namespace

VornApp::VornApp(DatabaseQueue &queue, const QStringList &arguments)
    : m_quits(CommandLine(arguments).quits()),
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
        .terminator = *this,
        .arguments = arguments,
        .print = printLine,
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
    if (m_store->project().get() || !m_quits)
        return;
    // Who asked for some lines of text waits for the end of the program, and an alert may have no screen to be seen on.
    (void)std::fprintf(stderr, "%s\n", m_store->lastError()->value_or(QString()).toUtf8().constData());
    QApplication::exit(EXIT_FAILURE);
}

void VornApp::terminate()
{
    QApplication::quit();
}
