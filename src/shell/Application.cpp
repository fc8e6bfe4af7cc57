#include "shell/Application.h"

#include "app/AppDelegate.h"
#include "platform/foundation/MainQueue.h"
#include "platform/foundation/OneHeap.h"
#include "platform/foundation/RunLoop.h"
#include "platform/foundation/SerialQueue.h"
#include "platform/media/output/SoundOutput.h"
#include "platform/net/UrlConnection.h"
#include "platform/ui/containers/ProgressHud.h"
#include "screens/all/AllScreens.h"
#include "shell/Shell.h"

#include <QGuiApplication>

namespace orvel {

void Application::prepare()
{
    keepOneHeap();
    QCoreApplication::setOrganizationName(QStringLiteral("Tarvane"));
    QCoreApplication::setApplicationName(QStringLiteral("Orvel"));
    QCoreApplication::setApplicationVersion(QStringLiteral("0.1.0"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Orvel Radio"));
    QGuiApplication::setDesktopFileName(QStringLiteral("orvel"));
}

Application::Application(const StationConfiguration &station, StreamerServices services)
{
    MainQueue::open();
    RunLoop::main();
    StationConfiguration::use(station);
    m_delegate = std::make_shared<AppDelegate>(std::make_unique<AllScreens>(), std::move(services));
}

Application::~Application()
{
    if (m_delegate->radio())
        m_delegate->radio()->shutdown();
    joinOutputQueues();
    closeConnections();
    m_shell.reset();
    ProgressHud::shared().dismiss();
    RunLoop::main().cancelAll();
    m_delegate.reset();
    SerialQueue::joinThreads();
    MainQueue::close();
}

bool Application::start()
{
    if (!m_delegate->didFinishLaunchingWithOptions())
        return false;
    m_shell = std::make_unique<Shell>(*m_delegate->window());
    return m_shell->show();
}

} // namespace orvel
