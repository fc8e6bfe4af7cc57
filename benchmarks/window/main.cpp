// The client's window before a station, watched: orvel-bench-window STATION SECONDS

#include "benchmarks/window/Watch.h"
#include "shell/Application.h"
#include "shell/Shell.h"

#include <QGuiApplication>
#include <cstdio>
#include <memory>

using namespace orvel;

int main(int argc, char *argv[])
{
    Application::prepare();
    QGuiApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        std::fprintf(stderr, "usage: orvel-bench-window STATION SECONDS\n");
        return 2;
    }
    StationConfiguration configuration = StationConfiguration::compiledIn();
    configuration.siteUrl = arguments[1];
    Application application(configuration, {.reachability = reachabilityForLocalStation});
    if (!application.start())
        return 1;
    const benchmark::Watch watch(application.shell().quickWindow(), arguments[2].toDouble());
    return QGuiApplication::exec();
}
