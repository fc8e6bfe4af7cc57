// A station with so many radios, its pictures those of the demo station in turn:
//   orvel-bench-station RADIOS [SOUND DELAY]
// Prints its address. With an MP3 file every radio has a stream of its own that names a title and answers
// DELAY ms after it was asked; the streams' address, which a number follows, comes after the station's. Then
// it prints a line "round SECONDS" for every round of titles over all but
// the last radio, and at its end, as JSON, how many listeners there were at a time and the requests for each
// stream. Ends with its input.

#include "api/StationConfiguration.h"
#include "benchmarks/window/TitleStreams.h"
#include "demo/PictureBook.h"
#include "demo/StationApi.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cstdio>
#include <memory>
#include <utility>

using namespace orvel;
using namespace orvel::demo;

namespace {

// `streams`: the streams' address without their number; empty for those of the demo station.
QByteArray radios(const QByteArray &few, int count, const QString &streams)
{
    QJsonObject answer = QJsonDocument::fromJson(few).object();
    const QJsonArray content = answer["content"].toArray();
    QJsonArray many;
    for (int i = 0; i < count; ++i) {
        QJsonObject radio = content[i % content.size()].toObject();
        radio["id"] = QString::number(1000 + i);
        radio["title"] = QStringLiteral("%1 %2").arg(radio["title"].toString()).arg(i + 1);
        if (!streams.isEmpty())
            radio["flux_aac"] = streams + QString::number(i);
        many.append(radio);
    }
    answer["content"] = many;
    return QJsonDocument(answer).toJson();
}

std::unique_ptr<benchmark::TitleStreams> streamsOf(const QStringList &arguments, int count)
{
    QFile sound(arguments.value(2));
    if (arguments.size() != 4 || !sound.open(QIODevice::ReadOnly))
        return nullptr;
    return std::make_unique<benchmark::TitleStreams>(
        count, sound.readAll(), std::chrono::milliseconds(arguments[3].toInt()), [](double seconds) {
            std::printf("round %.6f\n", seconds);
            std::fflush(stdout);
        });
}

void print(const benchmark::TitleStreams &streams)
{
    std::printf("{\"listeners\": %d, \"requests\": [", streams.mostListeners());
    const char *separator = "";
    for (const int requests : streams.requests())
        std::printf("%s%d", std::exchange(separator, ", "), requests);
    std::printf("]}\n");
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int count = arguments.value(1).toInt();
    const auto server = WebServer::listen(0);
    const auto streams = streamsOf(arguments, count);
    if (count <= 0 || !server || (arguments.size() > 2 && (!streams || streams->port() == 0))) {
        std::fprintf(stderr, "usage: orvel-bench-station RADIOS [SOUND DELAY]\n");
        return 2;
    }
    const QString address = QStringLiteral("http://127.0.0.1:%1").arg(server->port());
    const StationContent content(address, address);
    PictureBook pictures(content.programmes());
    const StationConfiguration keys = StationConfiguration::compiledIn();
    const QString prefix = streams ? QStringLiteral("http://127.0.0.1:%1/").arg(streams->port()) : QString();
    const StationApi api(
        {keys.stationSigningKey.toUtf8(), keys.stationPublicKey.toUtf8()},
        {{"webradio", radios(content.webradio(), count, prefix)}, {"frequences", content.frequences()}},
        nullptr);
    server->start([&](const WebRequest &request) {
        if (const auto answer = api.answer(request))
            return *answer;
        return pictures.answer(request).value_or(WebAnswer{404, "text/plain", "Nothing here\n"});
    });
    std::printf("%s %s\n", qUtf8Printable(address), qUtf8Printable(prefix));
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
    if (streams)
        print(*streams);
}
