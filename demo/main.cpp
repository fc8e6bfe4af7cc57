#include "demo/DemoStation.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <csignal>
#include <cstdio>

// The demo station alone, until it is interrupted.
int main(int argc, char **argv)
{
    // Blocked before any thread starts, so that the one wait below gets them.
    sigset_t ends;
    sigemptyset(&ends);
    sigaddset(&ends, SIGINT);
    sigaddset(&ends, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &ends, nullptr);

    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("A small real station on 127.0.0.1: signed API, pictures, playlists, live streams."));
    parser.addHelpOption();
    parser.addOptions({
        {QStringLiteral("port"),
         QStringLiteral("Port of the site; the next two are used too. 0: any free ones."),
         QStringLiteral("N"), QStringLiteral("0")},
        {QStringLiteral("burst"), QStringLiteral("What a listener gets at once."), QStringLiteral("BYTES"),
         QStringLiteral("196608")},
    });
    parser.process(application);

    orvel::DemoStation::Options options;
    bool portValid = false;
    bool burstValid = false;
    const uint port = parser.value(QStringLiteral("port")).toUInt(&portValid);
    options.burstBytes = parser.value(QStringLiteral("burst")).toUInt(&burstValid);
    if (!portValid || !burstValid || port > 65533) {
        std::fputs("--port takes 0 to 65533, --burst a number of bytes\n", stderr);
        return 2;
    }
    options.port = quint16(port);
    const auto station = orvel::DemoStation::start(options);
    if (!station)
        return 1;
    std::printf("Site: %s\nNetwork: %s\n", qPrintable(station->siteUrl()),
                qPrintable(station->networkWebradioUrl()));
    for (const QString &id : station->radioIds())
        std::printf("%s  %-44s %s\n", qPrintable(id), qPrintable(station->listenUrl(id)),
                    station->radioName(id).toUtf8().constData());
    std::fflush(stdout);

    int signal = 0;
    sigwait(&ends, &signal);
    return 0;
}
