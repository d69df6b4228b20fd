#include "workspace/VornApp.h"

#include "library/LibraryStore.h"

#include <QApplication>
#include <QMainWindow>
#include <QTimer>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize defaultSize{1180, 780};

void printLine(const QString &line)
{
    std::fputs((line + u'\n').toUtf8().constData(), stdout);
    std::fflush(stdout);
}

} // namespace

VornApp::VornApp(DatabaseQueue &queue, const QStringList &arguments)
    : m_store(std::make_unique<LibraryStore>(LibraryServices{
        .queue = queue,
        .panels = m_panels,
        .fileViewer = m_fileViewer,
        .terminator = *this,
        .arguments = arguments,
        .print = printLine,
    })),
      m_window(std::make_unique<QMainWindow>())
{
    m_window->setWindowTitle(u"Vorn"_s);
    m_window->resize(defaultSize);
}

VornApp::~VornApp() = default;

int VornApp::run()
{
    m_window->show();
    QTimer::singleShot(0, m_store.get(), [this] { m_store->bootstrap(); });
    return QApplication::exec();
}

void VornApp::terminate()
{
    QApplication::quit();
}
