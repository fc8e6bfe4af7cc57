#include "demo/DemoStation.h"
#include "demo/app/Tour.h"
#include "shell/Application.h"
#include "shell/Shell.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QTextStream>

using namespace orvel;

int main(int argc, char *argv[])
{
    Application::prepare();
    QGuiApplication app(argc, argv);

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("The Orvel radio client with its own demo station."));
    parser.addHelpOption();
    const QCommandLineOption tour(
        QStringLiteral("tour"),
        QStringLiteral("Play the first radio unattended and leave screenshots in <folder>."),
        QStringLiteral("folder"));
    const QCommandLineOption seconds(QStringLiteral("seconds"), QStringLiteral("How long the tour takes."),
                                     QStringLiteral("number"), QStringLiteral("30"));
    parser.addOptions({tour, seconds});
    parser.process(app);

    const std::unique_ptr<DemoStation> station = DemoStation::start({});
    if (!station) {
        QTextStream(stderr) << "The demo station can't be started.\n";
        return 1;
    }
    StationConfiguration configuration = StationConfiguration::compiledIn();
    configuration.siteUrl = station->siteUrl();
    configuration.networkWebradioUrl = station->networkWebradioUrl();

    Application application(configuration, {.reachability = reachabilityForLocalStation});
    if (!application.start())
        return 1;
    std::unique_ptr<Tour> unattended;
    if (parser.isSet(tour))
        unattended = std::make_unique<Tour>(application.delegate(), application.shell().quickWindow(),
                                            parser.value(tour), parser.value(seconds).toDouble());
    return QGuiApplication::exec();
}
