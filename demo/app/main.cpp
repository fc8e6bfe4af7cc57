#include "demo/DemoStation.h"
#include "demo/app/Tour.h"
#include "shell/Application.h"
#include "shell/Shell.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTextStream>

using namespace orvel;

namespace {

// Favourites keep their radios' addresses: they are to play after the next start, too.
constexpr quint16 usualPort = 8790;

} // namespace

int main(int argc, char *argv[])
{
    Application::prepare();
    QGuiApplication app(argc, argv);

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("The Orvel radio client with its own demo station."));
    parser.addHelpOption();
    const QCommandLineOption tour(
        QStringLiteral("tour"),
        QStringLiteral("Go through every screen unattended and leave screenshots in <folder>."),
        QStringLiteral("folder"));
    const QCommandLineOption seconds(QStringLiteral("seconds"), QStringLiteral("How long the tour may take."),
                                     QStringLiteral("number"), QStringLiteral("180"));
    const QCommandLineOption delay(QStringLiteral("delay"),
                                   QStringLiteral("How long the station takes to answer, in milliseconds."),
                                   QStringLiteral("number"));
    parser.addOptions({tour, seconds, delay});
    parser.process(app);

    // A tour starts as a new listener's client does, and leaves the user's favourites and account alone.
    const QTemporaryDir settings;
    if (parser.isSet(tour))
        qputenv("XDG_CONFIG_HOME", settings.path().toUtf8());

    DemoStation::Options options;
    if (parser.isSet(tour))
        options.delay = std::chrono::milliseconds(900); // long enough to see the overlay
    else
        options.port = usualPort;
    if (parser.isSet(delay))
        options.delay = std::chrono::milliseconds(parser.value(delay).toInt());
    std::unique_ptr<DemoStation> station = DemoStation::start(options);
    if (!station) {
        options.port = 0;
        station = DemoStation::start(options);
    }
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
