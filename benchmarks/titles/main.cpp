// The client's window before a station whose radios name their titles, which tells of their rounds on the
// standard input:
//   orvel-bench-titles STATION flick SECONDS PHASES
//   orvel-bench-titles STATION leave [never-asked]

#include "app/AppDelegate.h"
#include "benchmarks/titles/FlickedRounds.h"
#include "benchmarks/titles/LeftScreen.h"
#include "platform/ui/containers/NavigationController.h"
#include "platform/ui/containers/RevealSideViewController.h"
#include "shell/Application.h"
#include "shell/Shell.h"

#include <QGuiApplication>
#include <cstdio>

using namespace orvel;

namespace {

std::shared_ptr<RadioViewController> radiosOf(Application &application)
{
    ViewController *screen = application.delegate().revealSideViewController()->centerController();
    if (const auto *const navigation = dynamic_cast<NavigationController *>(screen))
        screen = navigation->topViewController();
    return std::dynamic_pointer_cast<RadioViewController>(screen->shared_from_this());
}

} // namespace

int main(int argc, char *argv[])
{
    Application::prepare();
    QGuiApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const bool flicks = arguments.value(2) == QStringLiteral("flick") && arguments.size() == 5;
    if (!flicks && arguments.value(2) != QStringLiteral("leave")) {
        std::fprintf(stderr, "usage: orvel-bench-titles STATION flick SECONDS PHASES\n"
                             "       orvel-bench-titles STATION leave [never-asked]\n");
        return 2;
    }
    StationConfiguration configuration = StationConfiguration::compiledIn();
    configuration.siteUrl = arguments[1];
    Application application(configuration, {.reachability = reachabilityForLocalStation});
    if (!application.start())
        return 1;
    if (!flicks) {
        const benchmark::LeftScreen left(application, radiosOf(application), arguments.size() == 3);
        return QGuiApplication::exec();
    }
    const benchmark::FlickedRounds rounds(application.shell().quickWindow(), radiosOf(application),
                                          arguments[3].toDouble(), arguments[4].toInt());
    return QGuiApplication::exec();
}
